#pragma once

#include "document/Project.h"

namespace corvane {

/// A row that is a clip, or a subclip with the clip that it belongs to.
struct MixedSidebarRow {
    VideoItem video; ///< the clip itself, or the subclip's parent
    std::optional<Subclip> subclip;

    bool isSubclip() const { return subclip.has_value(); }
    /// "clip-" and the clip's id, or "sub-" and the subclip's id.
    QString identity() const;

    bool operator==(const MixedSidebarRow &) const = default;
};

size_t qHash(const MixedSidebarRow &row, size_t seed = 0);

/// Which row one is, for the selection of ranges: it stays the same while what the row shows
/// changes.
struct SidebarRowId {
    QString videoId; ///< the clip, or the subclip's parent
    std::optional<QString> subclipId;

    static SidebarRowId of(const MixedSidebarRow &row);
    bool isSubclip() const { return subclipId.has_value(); }

    bool operator==(const SidebarRowId &) const = default;
};

size_t qHash(const SidebarRowId &id, size_t seed = 0);

} // namespace corvane

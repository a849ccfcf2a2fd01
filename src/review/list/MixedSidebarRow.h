#pragma once

#include "document/Project.h"

namespace corvane {

/// A clip, or a subclip with its clip.
struct MixedSidebarRow {
    VideoItem video; ///< the clip, or the subclip's clip
    std::optional<Subclip> subclip;

    bool operator==(const MixedSidebarRow &) const = default;
};

/// The identity of a row, independent of its data.
struct SidebarRowId {
    QString videoId; ///< the clip, or the subclip's clip
    std::optional<QString> subclipId;

    bool isSubclip() const { return subclipId.has_value(); }
    /// "clip-" and the clip's id, or "sub-" and the subclip's id.
    QString identity() const {
        return isSubclip() ? QStringLiteral("sub-") + *subclipId
                           : QStringLiteral("clip-") + videoId;
    }

    bool operator==(const SidebarRowId &) const = default;
};

} // namespace corvane

#pragma once

#include "review/list/MixedSidebarRow.h"

#include <QSet>

namespace corvane {

/// The marked rows, and the anchors from which a range is extended. A plain value.
struct MultiSelection {
    QSet<QString> multiSelectedClipIds;
    QSet<QString> multiSelectedSubclipIds;
    std::optional<QString> clipMultiSelectAnchor;
    std::optional<QString> subclipMultiSelectAnchor;

    bool exists() const {
        return !multiSelectedClipIds.isEmpty() || !multiSelectedSubclipIds.isEmpty();
    }
    /// Marks or unmarks the row, which becomes the anchor.
    void toggle(const SidebarRowId &row);
    /// Also marks the rows of `order` from `anchor` to `row`; only `row` if the anchor isn't
    /// listed. A no-op if `row` isn't listed.
    void extend(const SidebarRowId &row, const std::optional<SidebarRowId> &anchor,
                const QList<SidebarRowId> &order);

    bool operator==(const MultiSelection &) const = default;

  private:
    QSet<QString> &idsOf(const SidebarRowId &row);
    void setAnchor(const SidebarRowId &row);
};

} // namespace corvane

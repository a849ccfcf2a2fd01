#pragma once

#include "review/list/MixedSidebarRow.h"

#include <QSet>

namespace corvane {

/// The rows that are marked beside the clip in the player, and where a range of them begins. A
/// plain value.
struct MultiSelection {
    QSet<QString> multiSelectedClipIds;
    QSet<QString> multiSelectedSubclipIds;
    std::optional<QString> clipMultiSelectAnchor;
    std::optional<QString> subclipMultiSelectAnchor;

    bool exists() const {
        return !multiSelectedClipIds.isEmpty() || !multiSelectedSubclipIds.isEmpty();
    }
    bool contains(const SidebarRowId &row) const;
    /// Takes all marks back, with the anchors.
    void clear();
    /// Marks the row, or takes its mark back. The next range begins there either way.
    void toggle(const SidebarRowId &row);
    /// Marks every row from `anchor` to `row` in the order given, and what was marked stays. Where
    /// the anchor isn't listed, the row alone; where the row isn't, nothing.
    void extend(const SidebarRowId &row, const std::optional<SidebarRowId> &anchor,
                const QList<SidebarRowId> &order);

    bool operator==(const MultiSelection &) const = default;

  private:
    QSet<QString> &idsOf(const SidebarRowId &row);
    void setAnchor(const SidebarRowId &row);
};

} // namespace corvane

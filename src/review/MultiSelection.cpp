#include "review/MultiSelection.h"

namespace corvane {

namespace {

const QString &ownId(const SidebarRowId &row) {
    return row.subclipId ? *row.subclipId : row.videoId;
}

} // namespace

QSet<QString> &MultiSelection::idsOf(const SidebarRowId &row) {
    return row.isSubclip() ? multiSelectedSubclipIds : multiSelectedClipIds;
}

void MultiSelection::setAnchor(const SidebarRowId &row) {
    (row.isSubclip() ? subclipMultiSelectAnchor : clipMultiSelectAnchor) = ownId(row);
}

void MultiSelection::toggle(const SidebarRowId &row) {
    if (!idsOf(row).remove(ownId(row))) {
        idsOf(row).insert(ownId(row));
    }
    setAnchor(row);
}

void MultiSelection::extend(const SidebarRowId &row, const std::optional<SidebarRowId> &anchor,
                            const QList<SidebarRowId> &order) {
    const qsizetype clicked = order.indexOf(row);
    if (clicked < 0) {
        return;
    }
    const qsizetype found = anchor ? order.indexOf(*anchor) : -1;
    const qsizetype start = found < 0 ? clicked : found;
    for (qsizetype index = std::min(start, clicked); index <= std::max(start, clicked); ++index) {
        idsOf(order.at(index)).insert(ownId(order.at(index)));
    }
    setAnchor(row);
}

} // namespace corvane

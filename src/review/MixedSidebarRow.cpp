#include "review/MixedSidebarRow.h"

namespace corvane {

QString MixedSidebarRow::identity() const {
    return subclip ? QStringLiteral("sub-") + subclip->id : QStringLiteral("clip-") + video->id;
}

size_t qHash(const MixedSidebarRow &row, size_t seed) {
    const size_t parent = qHash(row.video, ::qHash(row.isSubclip() ? 1 : 0, seed));
    return row.subclip ? qHash(*row.subclip, parent) : parent;
}

SidebarRowId SidebarRowId::of(const MixedSidebarRow &row) {
    return {row.video->id, row.subclip ? std::optional(row.subclip->id) : std::nullopt};
}

size_t qHash(const SidebarRowId &id, size_t seed) {
    return qHashMulti(seed, id.isSubclip() ? 1 : 0, id.videoId, id.subclipId.value_or(QString()));
}

} // namespace corvane

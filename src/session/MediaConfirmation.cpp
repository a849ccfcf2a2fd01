#include "session/MediaConfirmation.h"

#include <algorithm>

namespace corvane {

namespace {

QStringList sortedList(const QSet<QString> &paths) {
    QStringList list(paths.cbegin(), paths.cend());
    std::ranges::sort(list);
    return list;
}

QSet<QString> setOf(const QStringList &paths) {
    return QSet<QString>(paths.cbegin(), paths.cend());
}

} // namespace

void MediaConfirmation::setPending(const PendingMedia &media) {
    const auto &[unresolved, pending, mismatched] = media;
    legacyProjectIdMediaPendingPaths = sortedList(pending - unresolved - mismatched);
    unresolvedMediaPendingPaths = sortedList((unresolved & pending) - mismatched);
    contentMismatchPendingPaths = sortedList(mismatched & pending);
    updateFlags();
}

void MediaConfirmation::addContentMismatches(const QSet<QString> &paths) {
    contentMismatchPendingPaths = sortedList(setOf(contentMismatchPendingPaths) | paths);
    updateFlags();
}

void MediaConfirmation::remove(QStringList MediaConfirmation::*list, const QStringList &paths) {
    const QSet<QString> removed = setOf(paths);
    (this->*list).removeIf([&](const QString &path) { return removed.contains(path); });
    updateFlags();
}

void MediaConfirmation::updateFlags() {
    legacyProjectIdMediaNeedsConfirmation = !legacyProjectIdMediaPendingPaths.isEmpty();
    unresolvedMediaNeedsConfirmation = !unresolvedMediaPendingPaths.isEmpty();
    contentMismatchNeedsConfirmation = !contentMismatchPendingPaths.isEmpty();
}

} // namespace corvane

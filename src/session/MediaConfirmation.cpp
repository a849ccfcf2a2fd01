#include "session/MediaConfirmation.h"

#include <algorithm>

namespace corvane {

namespace {

QStringList sortedList(const QSet<QString> &paths) {
    QStringList list(paths.cbegin(), paths.cend());
    std::ranges::sort(list);
    return list;
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
    contentMismatchPendingPaths = sortedList(
        QSet<QString>(contentMismatchPendingPaths.cbegin(), contentMismatchPendingPaths.cend()) |
        paths);
    updateFlags();
}

void MediaConfirmation::updateFlags() {
    legacyProjectIdMediaNeedsConfirmation = !legacyProjectIdMediaPendingPaths.isEmpty();
    unresolvedMediaNeedsConfirmation = !unresolvedMediaPendingPaths.isEmpty();
    contentMismatchNeedsConfirmation = !contentMismatchPendingPaths.isEmpty();
}

} // namespace corvane

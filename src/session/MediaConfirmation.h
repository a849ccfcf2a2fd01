#pragma once

#include "trust/MediaSourceAuthorization.h"

#include <QStringList>

namespace corvane {

/// The media of a project that the user must confirm before they can be delivered. The lists are
/// sorted absolute paths, and a path is in at most one of them. The flag of a list is true if the
/// list has entries.
struct MediaConfirmation {
    bool legacyPackageMediaNeedsAuthorization = false; ///< no clip in the media folder is granted
    bool contentMismatchNeedsConfirmation = false;
    QStringList contentMismatchPendingPaths; ///< contents changed since the grant
    bool legacyProjectIdMediaNeedsConfirmation = false;
    QStringList legacyProjectIdMediaPendingPaths; ///< recorded by an older version
    bool unresolvedMediaNeedsConfirmation = false;
    QStringList unresolvedMediaPendingPaths; ///< identity never established

    /// Replaces the lists. A changed file is listed as changed even if it also has no identity.
    void setPending(const PendingMedia &media);
    void addContentMismatches(const QSet<QString> &paths);

    /// Sets each list's flag.
    void updateFlags();

    bool operator==(const MediaConfirmation &) const = default;
};

} // namespace corvane

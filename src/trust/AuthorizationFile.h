#pragma once

#include "trust/MediaSourceAuthorization.h"

namespace corvane {

/// What the registry remembers, by project key.
struct AuthorizationTables {
    using PathSets = QHash<QString, QSet<QString>>;

    QHash<QString, AuthorizedPaths> authorizedPaths;
    QHash<QString, MediaRootRecord> authorizedMediaRoots;
    PathSets pendingLegacyPaths;   ///< waiting for the user's word
    PathSets contentMismatchPaths; ///< those that lost their grant because their contents changed

    bool operator==(const AuthorizationTables &) const = default;
};

template <> struct JSONFields<MediaRootRecord> {
    static constexpr auto table = std::tuple(jsonField("path", &MediaRootRecord::path),
                                             jsonField("device", &MediaRootRecord::device),
                                             jsonField("inode", &MediaRootRecord::inode),
                                             jsonField("volumeUUID", &MediaRootRecord::volumeUUID));
};

/// The registry's file. Neither operation throws.
///
/// One compact JSON object: "paths" holds for each project key an object of path to `RootIdentity`
/// or null; "mediaRoots" for each key a `MediaRootRecord`; "pendingLegacy" and "contentMismatch"
/// for each key an array of paths, in no order. All but "paths" may be missing. Two older forms are
/// read and never written: the same object with "paths" holding arrays of paths, and a bare object
/// of project key to array of paths. Both know no identities, so that what is there now is taken
/// for each.
namespace AuthorizationFile {

/// Empty where there is no file, or one that is too large or of no known form.
AuthorizationTables read(const QString &file);

/// Replaces the file in one step. Where that fails, or the new file would be too large to be read
/// again, the old one stays, and the answer is the reason, a sentence; the next change tries anew.
std::optional<QString> write(const AuthorizationTables &tables, const QString &file);

} // namespace AuthorizationFile

} // namespace corvane

#pragma once

#include "trust/MediaSourceAuthorization.h"

namespace corvane {

/// The contents of the registry. All tables are keyed by project key.
struct AuthorizationTables {
    using PathSets = QHash<QString, QSet<QString>>;

    QHash<QString, AuthorizedPaths> authorizedPaths;
    QHash<QString, MediaRootRecord> authorizedMediaRoots;
    PathSets pendingLegacyPaths;   ///< need the user's confirmation
    PathSets contentMismatchPaths; ///< ever reported as changed since their grant

    bool operator==(const AuthorizationTables &) const = default;
};

CORVANE_JSON_FIELDS(MediaRootRecord, path, device, inode, volumeUUID, volumePath);

/// Reads and writes the registry file. Blocks on file access. Neither function throws.
///
/// The file is one compact JSON object with four members, each an object keyed by project key:
/// "paths" maps a path to a `RootIdentity` or null, "mediaRoots" is a `MediaRootRecord`, and
/// "pendingLegacy" and "contentMismatch" are unordered arrays of paths. All but "paths" may be
/// missing.
///
/// Two older formats are read but never written: the same object with arrays of paths in "paths",
/// and a bare object that maps a project key to an array of paths. They store no identities, so
/// each path gets the current identity of its folder.
namespace AuthorizationFile {

/// Returns empty tables if the file is missing, unreadable, above `kFileLimit` or in no known
/// format.
AuthorizationTables read(const QString &file);

/// Replaces the file atomically. Returns nullopt on success, otherwise the reason as a sentence,
/// and the previous file stays. Fails if the new file would exceed `kFileLimit`.
std::optional<QString> write(const AuthorizationTables &tables, const QString &file);

} // namespace AuthorizationFile

} // namespace corvane

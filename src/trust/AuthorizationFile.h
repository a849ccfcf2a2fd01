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

/// Reads and writes the registry file. Blocks on file access. The functions throw `Failure`.
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

/// Returns empty tables if the file is missing. Throws if it can't be read, is above `kFileLimit`
/// or in no known format.
AuthorizationTables read(const QString &file);

/// Replaces the file atomically and returns its size in bytes. Throws if it can't be written or
/// would exceed `kFileLimit`; the previous file stays.
qint64 write(const AuthorizationTables &tables, const QString &file);

/// Renames a file that can't be read to a free name that contains the date, and returns its new
/// path. A missing file is ignored. Throws if it can't be renamed.
QString setAside(const QString &file, const QDateTime &now);

} // namespace AuthorizationFile

} // namespace corvane

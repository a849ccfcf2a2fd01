#pragma once

#include "platform/FolderIdentity.h"
#include "platform/JSONRecord.h"

#include <QHash>
#include <QString>

#include <optional>

namespace corvane {

/// The identity of a folder, and optionally of the contents of a file in it.
///
/// In a grant the folder is the parent of the granted file, and `contentHash` belongs to the file.
/// In a `ScanRoot` the folder is the scanned one, and `contentHash` is nullopt.
struct RootIdentity : FolderIdentity {
    std::optional<QString> contentHash; ///< an anchor (see `ContentHasher`)

    bool operator==(const RootIdentity &) const = default;

    /// True if the granted folder is `current`. A grant without a path on a file system where
    /// inodes change also accepts any other folder of the volume if its anchor is a full one: the
    /// caller verifies that too, so the file is the granted one.
    bool isSameFolder(const FolderIdentity &current) const;
};

/// The grants of a project: standardized path to identity. A path that maps to nullopt was listed,
/// but could not be identified; unlike a missing path, it can be confirmed by the user.
using AuthorizedPaths = QHash<QString, std::optional<RootIdentity>>;

CORVANE_JSON_FIELDS(RootIdentity, device, inode, volumeUUID, volumePath, contentHash);

} // namespace corvane

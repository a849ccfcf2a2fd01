#pragma once

#include "platform/JSONRecord.h"

#include <QHash>
#include <QString>

#include <optional>

namespace corvane {

/// The identity of a folder, and optionally of the contents of a file in it.
///
/// In a grant the folder is the parent of the granted file, and `contentHash` belongs to the file.
/// In a `ScanRoot` the folder is the scanned one, and `contentHash` is nullopt.
struct RootIdentity {
    int device = 0;    ///< `st_dev`; never compared, since it changes with every mount
    quint64 inode = 0; ///< `st_ino`
    std::optional<QString> volumeUUID;
    std::optional<QString> contentHash; ///< an anchor (see `ContentHasher`)

    bool operator==(const RootIdentity &) const = default;

    /// True if the inodes are equal, and the volume UUIDs too if both are known.
    bool isSameFolder(const RootIdentity &other) const {
        const bool bothKnowVolume = volumeUUID && other.volumeUUID;
        return inode == other.inode && (!bothKnowVolume || *volumeUUID == *other.volumeUUID);
    }
};

/// The grants of a project: standardized path to identity. A path that maps to nullopt was listed,
/// but could not be identified; unlike a missing path, it can be confirmed by the user.
using AuthorizedPaths = QHash<QString, std::optional<RootIdentity>>;

CORVANE_JSON_FIELDS(RootIdentity, device, inode, volumeUUID, contentHash);

} // namespace corvane

#pragma once

#include "platform/FileSystem.h"

namespace corvane {

/// Identifies a folder across mounts, so that another folder at the same path is recognized.
///
/// On file systems with stable inodes, a folder is its inode on its volume. On others it is its
/// path on its volume, if the volume is known: `volumePath` is then set, and `volumeUUID` is the
/// UUID or, for a network mount, the name of the share. Otherwise the inode is compared there too.
struct FolderIdentity {
    int device = 0;    ///< `st_dev`; never compared, since it changes with every mount
    quint64 inode = 0; ///< `st_ino`
    std::optional<QString> volumeUUID;
    std::optional<QString> volumePath; ///< such as "/DCIM/100CANON"; set if inodes change

    bool operator==(const FolderIdentity &) const = default;

    /// Reads the identity of an open folder, which doesn't depend on the path it was opened by.
    /// Returns nullopt if the folder is moved or its mount changes meanwhile. Throws `FileError`.
    static std::optional<FolderIdentity> of(const Descriptor &folder);

    /// True if `current`, read now, is the folder that this identity was recorded of. Paths are
    /// compared without case, since FAT and exFAT report the case of the latest lookup. Volumes
    /// are compared if both are known, and always if this identity has a path.
    bool isSameFolder(const FolderIdentity &current) const;
    /// True if both are on the same volume, but this identity was recorded before paths were, and
    /// the inode that it has instead is not stable.
    bool lacksPathOf(const FolderIdentity &current) const;
};

} // namespace corvane

#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

/// Mounts as listed in /proc/self/mountinfo. Thread-safe.
namespace corvane {

/// A line of the mount table, without its escapes.
struct Mount {
    quint64 id = 0;
    quint64 device = 0; ///< `st_dev`; a number without a device for FUSE, btrfs and network mounts
    QByteArray root;    ///< the folder of the volume that is mounted; "/" except for bind mounts
    QByteArray mountPoint;
    QByteArray type;    ///< such as "ext4" or "fuse.sshfs"
    QByteArray source;  ///< a device, a share, or any word
    QByteArray options; ///< of the file system, separated by commas

    bool operator==(const Mount &) const = default;

    /// FAT or exFAT.
    bool isFAT() const;
    /// False if inodes may change when the volume is mounted again or when the system frees memory:
    /// FAT, exFAT, FUSE, and CIFS without the inodes of its server.
    bool hasStableInodes() const;
    /// The name of a mounted share. nullopt for other file systems, and for shares whose inodes are
    /// stable.
    std::optional<QString> share() const;
    /// The path on the volume of a path below the mount point. The same for every mount point and
    /// bind mount. nullopt if the path is not below the mount point or is not valid UTF-8.
    std::optional<QString> pathOnVolume(const QByteArray &path) const;
};

/// The mount with this id in the text of a mount table, or the one that contains an absolute path
/// without symbolic links. nullopt if no line has it.
std::optional<Mount> mountWithId(const QByteArray &table, quint64 id);
std::optional<Mount> mountContaining(const QByteArray &table, const QByteArray &path);

/// The current path of an open file, without symbolic links; empty if it can't be determined.
QByteArray pathOfDescriptor(int descriptor);

/// The mount that contains an open file, whose path is `path`. nullopt if it can't be determined.
std::optional<Mount> mountOfDescriptor(int descriptor, const QByteArray &path);

} // namespace corvane

#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

/// Facts about mounts from /proc/self/mountinfo and /dev/disk/by-uuid. Thread-safe.
namespace corvane {

/// The mount point of the file system that contains an open file; empty if it can't be determined.
QString mountPointOf(int descriptor);

/// The UUID of the file system that contains the path. nullopt if the path doesn't exist, or if the
/// file system has no device or no UUID.
std::optional<QString> volumeUUIDAt(const QByteArray &path);

} // namespace corvane

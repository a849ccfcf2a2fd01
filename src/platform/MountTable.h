#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

/// What Linux tells about mounts: /proc/self/mountinfo and the links in /dev/disk/by-uuid.
namespace corvane {

/// The folder at which the mount of an open descriptor hangs; empty where the system won't say.
QString mountPointOf(int descriptor);

/// The UUID of the file system mounted at (or above) a path, or nothing: no such path, a file
/// system without a device, or a device without a UUID.
std::optional<QString> volumeUUIDAt(const QByteArray &path);

} // namespace corvane

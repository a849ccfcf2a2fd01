#pragma once

#include "platform/MountTable.h"

namespace corvane {

/// The UUID of the mounted volume: from the links in /dev/disk/by-uuid, or, on a system without
/// them, from the device itself. For a device that this process may not read, libblkid's cache is
/// used, which can be out of date. nullopt if the file system has no device or no UUID.
///
/// Blocks on access to the device; thread-safe.
std::optional<QString> mountedVolumeUUID(const Mount &mount);

} // namespace corvane

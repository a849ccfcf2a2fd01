#include "platform/FolderIdentity.h"

namespace corvane {

std::optional<FolderIdentity> FolderIdentity::of(const Descriptor &folder) {
    const FileStatus status = fileSystem().status(folder);
    const MountedPath location = fileSystem().mountedPath(folder);
    FolderIdentity identity{.device = int(status.device), .inode = status.inode};
    if (location.mount) {
        identity.volumeUUID = fileSystem().volumeUUID(*location.mount);
    }
    if (location.mount && !location.mount->hasStableInodes()) {
        const auto volume = identity.volumeUUID ? identity.volumeUUID : location.mount->share();
        const auto path = location.mount->pathOnVolume(location.path);
        if (volume && path) {
            identity.volumeUUID = volume;
            identity.volumePath = path;
        }
    }
    // The UUID was read from the device, not through the descriptor.
    return fileSystem().mountedPath(folder) == location ? std::optional(identity) : std::nullopt;
}

bool FolderIdentity::isSameFolder(const FolderIdentity &current) const {
    const bool areVolumesKnown = volumeUUID && current.volumeUUID;
    if ((areVolumesKnown && *volumeUUID != *current.volumeUUID) ||
        (volumePath && !areVolumesKnown)) {
        return false;
    }
    return volumePath && current.volumePath
               ? volumePath->compare(*current.volumePath, Qt::CaseInsensitive) == 0
               : inode == current.inode;
}

bool FolderIdentity::lacksPathOf(const FolderIdentity &current) const {
    return !volumePath && current.volumePath && volumeUUID && volumeUUID == current.volumeUUID;
}

} // namespace corvane

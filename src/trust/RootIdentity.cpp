#include "trust/RootIdentity.h"

namespace corvane {

bool RootIdentity::isSameFolder(const RootIdentity &other) const {
    const bool bothKnowVolume = volumeUUID && other.volumeUUID;
    return inode == other.inode && (!bothKnowVolume || *volumeUUID == *other.volumeUUID);
}

} // namespace corvane

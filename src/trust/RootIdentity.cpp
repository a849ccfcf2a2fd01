#include "trust/RootIdentity.h"

#include "trust/ContentHasher.h"

namespace corvane {

bool RootIdentity::isSameFolder(const FolderIdentity &current) const {
    return FolderIdentity::isSameFolder(current) ||
           (lacksPathOf(current) && contentHash && ContentHasher::parseFullAnchor(*contentHash));
}

} // namespace corvane

#pragma once

#include "platform/Paths.h"
#include "trust/PathSafety.h"

namespace corvane {

/// A cache of folder identities for one operation on many files. Reading the UUID of a volume is
/// slow, and thousands of files are in few folders. Discard it afterwards: folders may change.
class FolderIdentities {
  public:
    /// Returns the identity of the file's parent folder; nullopt if it can't be read.
    std::optional<RootIdentity> ofParent(const QString &file) {
        const QString folder = paths::parentFolder(file);
        const auto known = m_identities.constFind(folder);
        return known != m_identities.cend()
                   ? *known
                   : *m_identities.insert(folder, PathSafety::folderIdentity(folder));
    }

  private:
    QHash<QString, std::optional<RootIdentity>> m_identities;
};

} // namespace corvane

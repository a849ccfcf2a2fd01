#pragma once

#include "platform/Paths.h"
#include "trust/PathSafety.h"

namespace corvane {

/// The identities of the folders that files lie in, each folder looked at once: reading a volume's
/// UUID costs far more than the rest, and files come by the thousand in few folders. A snapshot for
/// one piece of work, not to be kept.
class FolderIdentities {
  public:
    /// Of the folder that holds the file; nothing where it can't be read.
    std::optional<RootIdentity> ofParent(const QString &file) {
        const QString folder = paths::parentFolder(file);
        const auto known = m_known.constFind(folder);
        return known != m_known.cend()
                   ? *known
                   : *m_known.insert(folder, PathSafety::folderIdentity(folder));
    }

  private:
    QHash<QString, std::optional<RootIdentity>> m_known;
};

} // namespace corvane

#pragma once

#include "platform/OpenFolder.h"
#include "trust/MediaSourceAuthorization.h"

namespace corvane {

/// Collects the new files of a package and grants them in one update of the registry, before the
/// package's document refers to them. Files of unknown content are hashed while the run goes on.
/// Main thread.
class PackageGrants {
  public:
    /// Once `stop` is requested, files that are not hashed yet are listed without a grant.
    PackageGrants(MediaSourceAuthorization &authorization, std::stop_token stop);

    /// Adds a file. `anchor` is the anchor of its content if it was verified while the file was
    /// written; otherwise the file is hashed as an entry of its open folder.
    void add(const QString &file, const OpenFolder &folder, const std::optional<QString> &anchor);
    /// Waits for the hashes and grants all files to the project.
    QCoro::Task<> grantAll(QString projectFile);

  private:
    MediaSourceAuthorization &m_authorization;
    std::stop_token m_stop;
    QStringList m_files;
    QHash<QString, QString> m_anchors;
    std::vector<std::pair<QString, QCoro::Task<std::optional<QString>>>> m_hashing;
};

} // namespace corvane

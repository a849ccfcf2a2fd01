#pragma once

#include "trust/MediaSourceAuthorization.h"

namespace corvane {

/// The grants of a package's new files, which are all made in one go before the package's document
/// names the files. What has to be hashed for that is hashed while the run goes on with the next
/// outputs. Main thread.
class PackageGrants {
  public:
    explicit PackageGrants(MediaSourceAuthorization &authorization);

    /// A file to grant. `anchor` is that of the bytes that it was just written with, where they
    /// were hashed on their way; a file that somebody changes after that stays refused.
    void add(const QString &file, const std::optional<QString> &anchor);
    /// Returns when all are granted to the project.
    QCoro::Task<> grantAll(QString projectFile);

  private:
    MediaSourceAuthorization &m_authorization;
    QStringList m_files;
    QHash<QString, QString> m_anchors;
    std::vector<std::pair<QString, QCoro::Task<std::optional<QString>>>> m_hashing;
};

} // namespace corvane

#pragma once

#include "document/Project.h"

#include <stop_token>

namespace corvane {

/// Takes a clip's derived pictures from the source project's cache over into a package's. Only
/// regular files that are reached through no link are read. What can't be taken over is left out
/// without a word: it can be made anew, or it is missed by nobody.
///
/// What is written isn't synced: whoever completes the package syncs the volume. On an executor's
/// thread.
class CacheCarrier {
  public:
    CacheCarrier(QString sourceRoot, QString packageRoot, std::stop_token stop);

    /// True if the thumbnail stands in the package.
    bool carryThumbnail(const VideoRecord &video) const;
    /// True if the whole filmstrip stands in the package.
    bool carryFilmstrip(const VideoRecord &video) const;
    void carrySubclipThumbnails(const VideoRecord &video) const;

  private:
    bool carry(const QString &from, const QString &to) const;
    void carryNow(const QString &from, const QString &to) const;

    QString m_sourceRoot;
    QString m_packageRoot;
    std::stop_token m_stop;
};

} // namespace corvane

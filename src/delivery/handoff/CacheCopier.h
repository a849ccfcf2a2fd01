#pragma once

#include "document/Project.h"
#include "platform/OpenFolder.h"

#include <stop_token>

namespace corvane {

/// Copies the cached images of a clip from the source project's cache into the package's, which is
/// an open folder. Reads only regular files that are not reached through a symbolic link. Ignores
/// failures: the images are optional or can be created again.
///
/// Does not sync what it writes; the caller syncs the volume. On an executor's thread.
class CacheCopier {
  public:
    CacheCopier(QString sourceRoot, OpenFolder packageRoot, std::stop_token stop);

    /// True if the package now has the thumbnail.
    bool copyThumbnail(const VideoRecord &video) const;
    /// True if the package now has the complete filmstrip.
    bool copyFilmstrip(const VideoRecord &video) const;
    void copySubclipThumbnails(const VideoRecord &video) const;

  private:
    bool copy(const QString &from, const QString &to) const;

    QString m_sourceRoot;
    OpenFolder m_packageRoot;
    std::stop_token m_stop;
};

} // namespace corvane

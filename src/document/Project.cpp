#include "document/Project.h"

#include "platform/Paths.h"

#include <QUuid>

#include <algorithm>

namespace corvane {

qsizetype Project::indexOfVideo(const QString &videoId) const {
    const auto found =
        std::ranges::find_if(videos, [&](const VideoItem &video) { return video->id == videoId; });
    return found == videos.end() ? -1 : found - videos.begin();
}

qsizetype Project::subclipCount() const {
    qsizetype count = 0;
    for (const VideoItem &video : videos) {
        count += video->subclips.size();
    }
    return count;
}

QString newIdentifier() {
    return QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper();
}

QString projectFolder(const QString &projectFile) {
    return paths::parentFolder(projectFile);
}

QString resolvedAgainstProject(const QString &path, const QString &projectFile) {
    return path.startsWith(QLatin1Char('/')) ? path
                                             : paths::joined(projectFolder(projectFile), path);
}

QString mediaFolder(const QString &projectFile) {
    return paths::joined(projectFolder(projectFile), QStringLiteral("media"));
}

QString cacheRoot(const QString &projectFile) {
    return paths::joined(projectFolder(projectFile), QStringLiteral(".corvane-cache"));
}

} // namespace corvane

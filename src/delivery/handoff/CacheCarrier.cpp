#include "delivery/handoff/CacheCarrier.h"

#include "delivery/handoff/PackageProject.h"
#include "delivery/handoff/SelectsHandoff.h"
#include "mediacache/FilmstripService.h"
#include "platform/Paths.h"
#include "transfer/ImportCopier.h"
#include "trust/PathSafety.h"

#include <cerrno>

namespace corvane {

namespace {

using PackageProject::canonicalIdentifier;

QString thumbnailName(const QString &identifier) {
    return QStringLiteral("thumbnails/%1.jpg").arg(identifier);
}

/// Throws unless the path lies in the cache and is reached through no link, the cache's own folder
/// included.
void vetAsset(const QString &path, const QString &cacheRoot) {
    SelectsHandoff::assertContained(path, cacheRoot);
    if (!PathSafety::isInsideWithoutSymlinks(path, cacheRoot)) {
        throw PathSafety::Violation(PathSafety::Violation::Kind::symlinkedPathComponent, path,
                                    QStringLiteral("cache asset"));
    }
}

/// The pictures of a folder, in no order; none where it can't be listed. Hidden ones are what an
/// interrupted write left.
QStringList picturesIn(const QString &folder, const QString &cacheRoot) {
    QStringList names;
    try {
        vetAsset(folder, cacheRoot);
        for (const DirectoryEntry &entry : fileSystem().list(folder)) {
            const bool isPicture = entry.hasValidName &&
                                   entry.name.endsWith(QLatin1String("jpg")) &&
                                   !entry.name.startsWith(QLatin1Char('.'));
            if (isPicture) {
                names.append(entry.name);
            }
        }
    } catch (const Failure &) {
        names.clear();
    }
    return names;
}

QString frameName(int index) {
    return QString::asprintf("frame-%02d.jpg", index);
}

} // namespace

CacheCarrier::CacheCarrier(QString sourceRoot, QString packageRoot, std::stop_token stop)
    : m_sourceRoot(std::move(sourceRoot)),
      m_packageRoot(std::move(packageRoot)),
      m_stop(std::move(stop)) {}

/// Whoever reads the package looks for the canonical name; the source may have another spelling.
bool CacheCarrier::carryThumbnail(const VideoRecord &video) const {
    const auto identifier = canonicalIdentifier(video.id);
    if (!identifier) {
        return false;
    }
    const QString name = thumbnailName(*identifier);
    return carry(name, name) || (video.id != *identifier && carry(thumbnailName(video.id), name));
}

bool CacheCarrier::carryFilmstrip(const VideoRecord &video) const {
    if (!canonicalIdentifier(video.id)) {
        return false;
    }
    const QString folder = video.id + QStringLiteral("/filmstrip/");
    QSet<QString> carried;
    const QStringList pictures =
        picturesIn(paths::joined(m_sourceRoot, folder.chopped(1)), m_sourceRoot);
    for (const QString &name : pictures) {
        if (carry(folder + name, folder + name)) {
            carried.insert(name);
        }
    }
    for (int index = 0; index < FilmstripService::kFrameCount; ++index) {
        if (!carried.contains(frameName(index))) {
            return false;
        }
    }
    return true;
}

void CacheCarrier::carrySubclipThumbnails(const VideoRecord &video) const {
    for (const Subclip &subclip : video.subclips) {
        if (const auto identifier = canonicalIdentifier(subclip.id)) {
            const QString name = QStringLiteral("subclip-thumbs/%1.jpg").arg(*identifier);
            carry(name, name);
        }
    }
}

/// Both names are relative to their caches. False where there is nothing to carry, or it failed.
bool CacheCarrier::carry(const QString &from, const QString &to) const {
    try {
        carryNow(paths::joined(m_sourceRoot, from), paths::joined(m_packageRoot, to));
        return true;
    } catch (const std::exception &) {
        return false;
    }
}

void CacheCarrier::carryNow(const QString &from, const QString &to) const {
    vetAsset(from, m_sourceRoot);
    vetAsset(to, m_packageRoot);
    if (PathSafety::fileType(from) != FileType::Regular) {
        throw FileError(from, ENOENT); // spares making a folder for nothing
    }
    ImportCopier::copy(from, to, ImportCopier::SourceRoot{m_sourceRoot, std::nullopt}, {}, m_stop,
                       0666, Durability::Later);
}

} // namespace corvane

#include "delivery/handoff/CacheCopier.h"

#include "delivery/handoff/PackageProject.h"
#include "delivery/handoff/SelectsHandoff.h"
#include "mediacache/FilmstripService.h"
#include "platform/Paths.h"
#include "transfer/ImportCopier.h"
#include "trust/PathSafety.h"

namespace corvane {

namespace {

using PackageProject::canonicalIdentifier;

QString thumbnailName(const QString &identifier) {
    return QStringLiteral("thumbnails/%1.jpg").arg(identifier);
}

/// Throws unless the path is inside the cache, with no symbolic link from the cache folder on.
void assertCacheAsset(const QString &path, const QString &cacheRoot) {
    SelectsHandoff::assertContained(path, cacheRoot);
    if (!PathSafety::isInsideWithoutSymlinks(path, cacheRoot)) {
        throw PathSafety::Violation(PathSafety::Violation::Kind::symlinkedPathComponent, path,
                                    QStringLiteral("cache asset"));
    }
}

/// Returns the names of the images in the folder, unordered; empty if it cannot be listed. Hidden
/// files are left over from interrupted writes.
QStringList imagesIn(const QString &folder, const QString &cacheRoot) {
    QStringList names;
    try {
        assertCacheAsset(folder, cacheRoot);
        for (const DirectoryEntry &entry : fileSystem().list(folder)) {
            const bool isImage = entry.hasValidName && entry.name.endsWith(QLatin1String("jpg")) &&
                                 !entry.name.startsWith(QLatin1Char('.'));
            if (isImage) {
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

CacheCopier::CacheCopier(QString sourceRoot, OpenFolder packageRoot, std::stop_token stop)
    : m_sourceRoot(std::move(sourceRoot)),
      m_packageRoot(std::move(packageRoot)),
      m_stop(std::move(stop)) {}

/// The package uses the canonical name; the source may spell the id differently.
bool CacheCopier::copyThumbnail(const VideoRecord &video) const {
    const auto identifier = canonicalIdentifier(video.id);
    if (!identifier) {
        return false;
    }
    const QString name = thumbnailName(*identifier);
    return copy(name, name) || (video.id != *identifier && copy(thumbnailName(video.id), name));
}

bool CacheCopier::copyFilmstrip(const VideoRecord &video) const {
    if (!canonicalIdentifier(video.id)) {
        return false;
    }
    const QString folder = video.id + QStringLiteral("/filmstrip/");
    QSet<QString> copied;
    const QStringList images =
        imagesIn(paths::joined(m_sourceRoot, folder.chopped(1)), m_sourceRoot);
    for (const QString &name : images) {
        if (copy(folder + name, folder + name)) {
            copied.insert(name);
        }
    }
    for (int index = 0; index < FilmstripService::kFrameCount; ++index) {
        if (!copied.contains(frameName(index))) {
            return false;
        }
    }
    return true;
}

void CacheCopier::copySubclipThumbnails(const VideoRecord &video) const {
    for (const Subclip &subclip : video.subclips) {
        if (const auto identifier = canonicalIdentifier(subclip.id)) {
            const QString name = QStringLiteral("subclip-thumbs/%1.jpg").arg(*identifier);
            copy(name, name);
        }
    }
}

/// Copies a file by its paths in the two caches. Returns false if it does not exist or on failure.
bool CacheCopier::copy(const QString &from, const QString &to) const {
    const QString source = paths::joined(m_sourceRoot, from);
    try {
        assertCacheAsset(source, m_sourceRoot);
        if (PathSafety::fileType(source) != FileType::Regular) {
            return false; // before a folder is created
        }
        const auto destination = Destination::below(
            m_packageRoot, paths::joined(m_packageRoot.path(), to), Placing::mayReplaceRegular);
        ImportCopier::copy(source, destination, ImportCopier::SourceRoot{m_sourceRoot, {}}, {},
                           m_stop, {.durability = Durability::Later});
        return true;
    } catch (const std::exception &) {
        return false;
    }
}

} // namespace corvane

#include "trust/MediaSourceAuthorization.h"

#include "trust/AuthorizationFile.h"
#include "trust/ContentHasher.h"
#include "trust/FolderIdentities.h"

#include <QCoreApplication>

namespace corvane {

namespace {

/// Returns the current identity of the folder; nullopt unless it is a real folder, not a link.
std::optional<MediaRootRecord> mediaRootRecord(const QString &mediaFolder) {
    const QString path = paths::standardized(mediaFolder);
    const auto status = fileSystem().linkStatus(path);
    if (!status || status->type != FileType::Directory) {
        return std::nullopt;
    }
    const auto identity = PathSafety::folderIdentity(path);
    const bool isUnchanged = identity && identity->inode == status->inode;
    return isUnchanged ? std::optional(MediaRootRecord{*identity, path}) : std::nullopt;
}

/// The record has the absolute path, so an older one doesn't need the path on the volume.
bool isSameRoot(const MediaRootRecord &stored, const MediaRootRecord &current) {
    return stored.path == current.path &&
           (stored.isSameFolder(current) || stored.lacksPathOf(current));
}

std::optional<QString> anchorIfReadable(const QString &path) {
    try {
        return ContentHasher::makeAnchor(path);
    } catch (const ContentHasher::HashError &) {
        return std::nullopt;
    }
}

constexpr qint64 kQuickHashBytes = qint64(64) << 20; ///< hashed in well under a second

bool isSlowToHash(const QStringList &files) {
    qint64 bytes = 0;
    for (const QString &file : files) {
        const auto status =
            bytes <= kQuickHashBytes ? fileSystem().targetStatus(file) : std::nullopt;
        bytes += status ? status->size : 0;
    }
    return bytes > kQuickHashBytes;
}

/// Includes clips that can't be accessed, so that authorizing them makes them pending.
QStringList clipsInMediaFolder(const Project &project, const QString &projectFile) {
    const QString folder = mediaFolder(projectFile);
    QStringList clips;
    if (PathSafety::fileType(folder) != FileType::Directory) {
        return clips;
    }
    for (const VideoItem &video : project.videos) {
        const QString path = resolvedAgainstProject(video->sourcePath, projectFile);
        if (!PathSafety::reachesOutsideOrThroughSymlink(path, folder) &&
            PathSafety::fileType(path).value_or(FileType::Regular) == FileType::Regular) {
            clips.append(path);
        }
    }
    return clips;
}

} // namespace

MediaSourceAuthorization::MediaSourceAuthorization(const QString &dataFolder,
                                                   std::unique_ptr<QSettings> userDefaults)
    : m_filePath(paths::joined(dataFolder, QStringLiteral("media-authorizations.json"))),
      m_userDefaults(std::move(userDefaults)),
      m_tables(std::make_unique<AuthorizationTables>()),
      m_listeners(std::make_shared<Listeners>()),
      m_executor(QStringLiteral("MediaSourceAuth")) {
    // Runs before every other operation on the executor.
    m_executor.post([this, dataFolder] {
        try {
            fileSystem().createFolders(dataFolder);
        } catch (const FileError &) {
            // The first change fails to be written, and is reported then.
        }
        *m_tables = AuthorizationFile::read(m_filePath);
    });
}

MediaSourceAuthorization::~MediaSourceAuthorization() = default;

QString MediaSourceAuthorization::projectKey(const QString &projectFile) {
    return paths::resolvingLinks(projectFile);
}

QCoro::Task<void> MediaSourceAuthorization::authorize(QStringList paths, QString projectFile,
                                                      QHash<QString, QString> knownAnchors) {
    if (paths.isEmpty()) {
        co_return;
    }
    auto [key, candidates] = co_await m_executor.run([this, paths, projectFile, knownAnchors] {
        std::pair<QString, QList<Candidate>> listed(projectKey(projectFile), {});
        FolderIdentities identities;
        QSet<QString> seen;
        for (const QString &requested : paths) {
            const QString path = paths::standardized(requested);
            if (!seen.contains(path)) {
                seen.insert(path);
                const auto known = knownAnchors.constFind(path);
                listed.second.append(
                    {path, identities.ofParent(path),
                     known == knownAnchors.cend() ? std::nullopt : std::optional(*known)});
            }
        }
        listCandidates(listed.first, listed.second);
        return listed;
    });
    // One task per file, so that the executor can run others before an import is hashed entirely.
    for (Candidate &candidate : candidates) {
        if (candidate.identity && !candidate.anchor) {
            candidate.anchor = co_await utilityExecutor().run(
                [path = candidate.path] { return anchorIfReadable(path); });
        }
    }
    co_await m_executor.run([this, key, candidates] { storeGrants(key, candidates); });
}

/// Lists new paths without an identity until they are hashed. If the process ends before that, the
/// user is asked about them instead of finding them refused. The registry file is written for this
/// only if hashing is slow, since it is written again with the grants.
void MediaSourceAuthorization::listCandidates(const QString &key, QList<Candidate> &candidates) {
    AuthorizedPaths &table = m_tables->authorizedPaths[key];
    const QSet<QString> pending = m_tables->pendingLegacyPaths.value(key);
    QStringList toHash;
    for (Candidate &candidate : candidates) {
        if (!table.contains(candidate.path)) {
            candidate.isNew = !pending.contains(candidate.path);
            table.insert(candidate.path, std::nullopt);
            if (candidate.identity && !candidate.anchor) {
                toHash.append(candidate.path);
            }
        }
    }
    if (isSlowToHash(toHash)) {
        persist();
    }
}

void MediaSourceAuthorization::storeGrants(const QString &key, const QList<Candidate> &candidates) {
    AuthorizedPaths &table = m_tables->authorizedPaths[key];
    QSet<QString> unresolved;
    QSet<QString> granted;
    for (const Candidate &candidate : candidates) {
        const auto known = table.constFind(candidate.path);
        if (!candidate.identity) {
            if (known == table.cend()) {
                table.insert(candidate.path, std::nullopt);
            }
            continue;
        }
        RootIdentity identity = *candidate.identity;
        identity.contentHash = candidate.anchor;
        if (!identity.contentHash && known != table.cend() && *known) {
            identity.contentHash = (*known)->contentHash;
        }
        if (identity.contentHash) {
            table.insert(candidate.path, identity);
            if (candidate.isNew) { // a query may have made it pending while it was hashed
                granted.insert(candidate.path);
            }
        } else {
            table.insert(candidate.path, std::nullopt);
            unresolved.insert(candidate.path);
        }
    }
    removePending(key, granted);
    addPending(key, unresolved);
    persist();
}

QCoro::Task<void> MediaSourceAuthorization::authorizeMediaRoot(QString mediaFolder,
                                                               QString projectFile) {
    co_await m_executor.run([this, mediaFolder, projectFile] {
        if (const auto record = mediaRootRecord(mediaFolder)) {
            m_tables->authorizedMediaRoots.insert(projectKey(projectFile), *record);
            persist();
        }
    });
}

QCoro::Task<bool> MediaSourceAuthorization::isMediaRootAuthorized(QString mediaFolder,
                                                                  QString projectFile) {
    co_return co_await m_executor.run([this, mediaFolder, projectFile] {
        return isRootAuthorized(projectKey(projectFile), mediaFolder);
    });
}

bool MediaSourceAuthorization::isRootAuthorized(const QString &key,
                                                const QString &mediaFolder) const {
    const auto stored = m_tables->authorizedMediaRoots.constFind(key);
    if (stored == m_tables->authorizedMediaRoots.cend()) {
        return false;
    }
    const auto current = mediaRootRecord(mediaFolder);
    return current && isSameRoot(*stored, *current);
}

QCoro::Task<AuthorizedPaths> MediaSourceAuthorization::authorizedPaths(QString projectFile) {
    co_return co_await m_executor.run(
        [this, projectFile] { return m_tables->authorizedPaths.value(projectKey(projectFile)); });
}

QCoro::Task<PathSafety::SourceGrants> MediaSourceAuthorization::sourceGrants(QString projectFile) {
    co_return co_await m_executor.run([this, projectFile] {
        const QString key = projectKey(projectFile);
        return PathSafety::SourceGrants{
            .projectFolder = projectFolder(projectFile),
            .authorizedSourcePaths = m_tables->authorizedPaths.value(key),
            .mediaRootAuthorized = isRootAuthorized(key, mediaFolder(projectFile))};
    });
}

QCoro::Task<void> MediaSourceAuthorization::authorizeMediaFolderClips(Project project,
                                                                      QString projectFile) {
    const QStringList clips = co_await m_executor.run([project = std::move(project), projectFile] {
        return clipsInMediaFolder(project, projectFile);
    });
    co_await authorize(clips, projectFile);
}

void MediaSourceAuthorization::setContentMismatchContinuation(
    std::function<void(ContentMismatchEvent)> sink) {
    m_listeners->contentMismatch = std::move(sink);
}

void MediaSourceAuthorization::setUnsavedNoticeContinuation(std::function<void(QString)> sink) {
    m_listeners->unsaved = std::move(sink);
}

/// Queues the report to the main thread before the task ends, so that it is delivered before the
/// operation that changed the tables completes.
void MediaSourceAuthorization::persist() {
    const std::optional<QString> fault = AuthorizationFile::write(*m_tables, m_filePath);
    const bool wasWritten = std::exchange(m_isFileUpToDate, !fault);
    if (!fault && wasWritten) {
        return;
    }
    std::optional<QString> notice;
    if (fault) {
        notice = QStringLiteral("The media authorizations could not be written to %1: %2 "
                                "They last until Corvane quits.")
                     .arg(m_filePath, *fault);
    }
    QMetaObject::invokeMethod(
        QCoreApplication::instance(),
        [weakListeners = std::weak_ptr(m_listeners), notice] {
            const auto listeners = weakListeners.lock();
            if (listeners) {
                listeners->unsavedNotice = notice;
            }
            if (listeners && notice && listeners->unsaved) {
                listeners->unsaved(*notice);
            }
        },
        Qt::QueuedConnection);
}

} // namespace corvane

#include "trust/MediaSourceAuthorization.h"

#include "trust/AuthorizationFile.h"
#include "trust/ContentHasher.h"
#include "trust/FolderIdentities.h"

#include <QCoreApplication>

namespace corvane {

namespace {

/// What the folder is now; nothing where it is no real folder, as a link to one isn't.
std::optional<MediaRootRecord> mediaRootRecord(const QString &mediaFolder) {
    const QString path = paths::standardized(mediaFolder);
    const auto status = fileSystem().linkStatus(path);
    if (!status || status->type != FileType::Directory) {
        return std::nullopt;
    }
    return MediaRootRecord{.path = path,
                           .device = int(status->device),
                           .inode = status->inode,
                           .volumeUUID = fileSystem().volumeUUID(path)};
}

bool isSameRoot(const MediaRootRecord &stored, const MediaRootRecord &present) {
    const RootIdentity was{stored.device, stored.inode, stored.volumeUUID, {}};
    const RootIdentity is{present.device, present.inode, present.volumeUUID, {}};
    return stored.path == present.path && was.isSameFolder(is);
}

std::optional<QString> anchorIfReadable(const QString &path) {
    try {
        return ContentHasher::makeAnchor(path);
    } catch (const ContentHasher::HashError &) {
        return std::nullopt;
    }
}

/// How many bytes are hashed without writing down first what waits for it: well below a second's.
constexpr qint64 kBriefBytes = qint64(64) << 20;

bool takesLongToHash(const QStringList &files) {
    qint64 bytes = 0;
    for (const QString &file : files) {
        const auto status = bytes <= kBriefBytes ? fileSystem().targetStatus(file) : std::nullopt;
        bytes += status ? status->size : 0;
    }
    return bytes > kBriefBytes;
}

/// A clip that can't be looked at is taken too: granting it makes it pending, not forgotten.
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
    // The first piece of work, so that whatever is asked finds the file read.
    m_executor.post([this, dataFolder] {
        try {
            fileSystem().createFolders(dataFolder);
        } catch (const FileError &) {
            // Writing will fail as silently: grants then last as long as the process.
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
    struct Request {
        QString key;
        QList<Candidate> candidates;
    };
    Request request = co_await m_executor.run([this, paths, projectFile, knownAnchors] {
        Request made{.key = projectKey(projectFile)};
        FolderIdentities identities;
        QSet<QString> seen;
        for (const QString &given : paths) {
            const QString path = paths::standardized(given);
            if (!seen.contains(path)) {
                seen.insert(path);
                const auto known = knownAnchors.constFind(path);
                made.candidates.append(
                    {path, identities.ofParent(path),
                     known == knownAnchors.cend() ? std::nullopt : std::optional(*known)});
            }
        }
        listUnproved(made.key, made.candidates);
        return made;
    });
    // One file at a time, so that other work on that executor isn't held up by a whole import.
    for (Candidate &candidate : request.candidates) {
        if (candidate.identity && !candidate.anchor) {
            candidate.anchor = co_await utilityExecutor().run(
                [path = candidate.path] { return anchorIfReadable(path); });
        }
    }
    co_await m_executor.run([this, request] { storeGrants(request.key, request.candidates); });
}

/// Lists what has no entry yet as unproved while its hashing lasts: where the process ends before
/// that, the paths are known, and the user is asked about them instead of finding them refused. The
/// file is written for it only where the hashing is long: it is written whole, and once more with
/// the grants.
void MediaSourceAuthorization::listUnproved(const QString &key, QList<Candidate> &candidates) {
    AuthorizedPaths &table = m_tables->authorizedPaths[key];
    const QSet<QString> pending = m_tables->pendingLegacyPaths.value(key);
    QStringList listed;
    for (Candidate &candidate : candidates) {
        if (!table.contains(candidate.path)) {
            candidate.isNew = !pending.contains(candidate.path);
            table.insert(candidate.path, std::nullopt);
            if (candidate.identity && !candidate.anchor) {
                listed.append(candidate.path);
            }
        }
    }
    if (takesLongToHash(listed)) {
        persist();
    }
}

void MediaSourceAuthorization::storeGrants(const QString &key, const QList<Candidate> &candidates) {
    AuthorizedPaths &table = m_tables->authorizedPaths[key];
    QSet<QString> unproved;
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
            if (candidate.isNew) { // somebody may have taken it for unresolved meanwhile
                granted.insert(candidate.path);
            }
        } else {
            table.insert(candidate.path, std::nullopt);
            unproved.insert(candidate.path);
        }
    }
    removePending(key, granted);
    addPending(key, unproved);
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
    const auto present = mediaRootRecord(mediaFolder);
    return present && isSameRoot(*stored, *present);
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

/// On the executor. What is told goes its way before the work that changed the tables is done.
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
        [listening = std::weak_ptr(m_listeners), notice] {
            const auto listeners = listening.lock();
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

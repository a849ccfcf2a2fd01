#include "trust/MediaSourceAuthorization.h"

#include "platform/Cancellation.h"
#include "trust/AuthorizationFile.h"
#include "trust/ContentHasher.h"
#include "trust/FolderIdentities.h"
#include "trust/HashingMeter.h"

#include <chrono>

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
    if (!isUnchanged) {
        return std::nullopt;
    }
    const FolderIdentity &folder = *identity;
    return MediaRootRecord{folder, path};
}

/// The record has the absolute path, so an older one doesn't need the path on the volume.
bool isSameRoot(const MediaRootRecord &stored, const MediaRootRecord &current) {
    return stored.path == current.path &&
           (stored.isSameFolder(current) || stored.lacksPathOf(current));
}

constexpr qint64 kQuickHashBytes = qint64(64) << 20; ///< hashed in well under a second
/// How long hashed files may wait to be written. A registry is up to 8 MB, too much for each file.
constexpr std::chrono::seconds kWriteInterval{2};

/// Returns nullopt if the file can't be read. Throws `Cancelled`.
std::optional<QString> anchorIfReadable(const QString &path, const std::stop_token &stop,
                                        HashingMeter &meter) {
    try {
        return ContentHasher::makeAnchor(path, stop,
                                         [&meter](qint64 bytes) { meter.addBytes(bytes); });
    } catch (const ContentHasher::HashError &) {
        return std::nullopt;
    }
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
    m_executor.post([this, dataFolder] { load(dataFolder); });
}

/// Writes what was hashed by an operation that will not complete.
MediaSourceAuthorization::~MediaSourceAuthorization() {
    m_executor.post([this] { persistIfDirty(); });
}

QString MediaSourceAuthorization::projectKey(const QString &projectFile) {
    return paths::resolvingLinks(projectFile);
}

/// Used by the executor and, between its functions, by the main thread.
struct MediaSourceAuthorization::GrantRequest {
    QString key;
    QList<Candidate> toHash;
    qsizetype hashedCount = 0; ///< of `toHash`
    qint64 bytesToHash = 0;
    QSet<QString> granted; ///< with a new anchor
    std::chrono::steady_clock::time_point lastWrite = std::chrono::steady_clock::now();
};

QCoro::Task<QSet<QString>> MediaSourceAuthorization::authorize(QStringList paths,
                                                               QString projectFile,
                                                               QHash<QString, QString> knownAnchors,
                                                               HashingControl control) {
    if (paths.isEmpty()) {
        co_return {};
    }
    const auto request = std::make_shared<GrantRequest>();
    co_await m_executor.run([this, request, paths, projectFile, knownAnchors] {
        request->key = projectKey(projectFile);
        beginGrants(*request, paths, knownAnchors);
    });
    const auto meter = std::make_shared<HashingMeter>(control.progress, int(request->toHash.size()),
                                                      request->bytesToHash);
    qint64 bytesBefore = 0;
    // One task per file, so that the executors can run others before an import is hashed entirely.
    for (Candidate candidate : std::as_const(request->toHash)) {
        try {
            candidate.anchor =
                co_await utilityExecutor().run([path = candidate.path, bytes = candidate.bytes,
                                                stop = control.stop, meter, bytesBefore] {
                    throwIfStopRequested(stop);
                    const auto anchor = anchorIfReadable(path, stop, *meter);
                    meter->finishFile(bytesBefore, bytes);
                    return anchor;
                });
        } catch (const Cancelled &) {
            break;
        }
        bytesBefore += candidate.bytes;
        co_await m_executor.run([this, request, candidate] {
            ++request->hashedCount;
            storeGrant(*request, candidate);
        });
    }
    co_await m_executor.run([this, request] { finishGrants(*request); });
    co_return request->granted;
}

/// Lists new paths without an identity until they are hashed. If the process ends before that, the
/// user is asked about them instead of finding them refused. The registry file is written for this
/// only if hashing is slow, since it is written again with the grants. Grants what needs no
/// hashing.
void MediaSourceAuthorization::beginGrants(GrantRequest &request, const QStringList &paths,
                                           const QHash<QString, QString> &knownAnchors) {
    FolderIdentities identities;
    QSet<QString> seen;
    QList<Candidate> ready;
    for (const QString &requested : paths) {
        const QString path = paths::standardized(requested);
        if (seen.contains(path)) {
            continue;
        }
        seen.insert(path);
        const auto known = knownAnchors.constFind(path);
        Candidate candidate{.path = path,
                            .identity = identities.ofParent(path),
                            .anchor = known == knownAnchors.cend() ? std::nullopt
                                                                   : std::optional(*known)};
        listCandidate(request.key, candidate);
        const bool needsHashing = candidate.identity && !candidate.anchor;
        const auto status = needsHashing ? fileSystem().targetStatus(path) : std::nullopt;
        candidate.bytes = status ? status->size : 0;
        request.bytesToHash += candidate.bytes;
        (needsHashing ? request.toHash : ready).append(candidate);
    }
    if (request.bytesToHash > kQuickHashBytes) {
        persist();
        request.lastWrite = std::chrono::steady_clock::now();
    }
    for (const Candidate &candidate : std::as_const(ready)) {
        storeGrant(request, candidate);
    }
}

void MediaSourceAuthorization::listCandidate(const QString &key, Candidate &candidate) {
    AuthorizedPaths &table = m_tables->authorizedPaths[key];
    if (!table.contains(candidate.path)) {
        candidate.isNew = !m_tables->pendingLegacyPaths.value(key).contains(candidate.path);
        table.insert(candidate.path, std::nullopt);
        m_isDirty = true;
    }
}

/// Grants a file that was hashed, or makes it pending if it could not be.
void MediaSourceAuthorization::storeGrant(GrantRequest &request, const Candidate &candidate) {
    AuthorizedPaths &table = m_tables->authorizedPaths[request.key];
    const std::optional<RootIdentity> known = table.value(candidate.path);
    if (!candidate.identity) {
        table.insert(candidate.path, known);
    } else if (candidate.anchor || (known && known->contentHash)) {
        RootIdentity identity = *candidate.identity;
        identity.contentHash = candidate.anchor ? candidate.anchor : known->contentHash;
        table.insert(candidate.path, identity);
        if (candidate.anchor) {
            request.granted.insert(candidate.path);
        }
        if (candidate.isNew) { // a query may have made it pending while it was hashed
            removePending(request.key, {candidate.path});
        }
    } else {
        table.insert(candidate.path, std::nullopt);
        addPending(request.key, {candidate.path});
    }
    m_isDirty = true;
    const auto now = std::chrono::steady_clock::now();
    if (now - request.lastWrite >= kWriteInterval) {
        persist();
        request.lastWrite = now;
    }
}

/// Makes the new files pending that were not hashed.
void MediaSourceAuthorization::finishGrants(GrantRequest &request) {
    const AuthorizedPaths table = m_tables->authorizedPaths.value(request.key);
    for (const Candidate &candidate : request.toHash.mid(request.hashedCount)) {
        if (!table.value(candidate.path)) {
            addPending(request.key, {candidate.path});
            m_isDirty = true;
        }
    }
    persistIfDirty();
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
                                                                      QString projectFile,
                                                                      HashingControl control) {
    const QStringList clips = co_await m_executor.run([project = std::move(project), projectFile] {
        return clipsInMediaFolder(project, projectFile);
    });
    co_await authorize(clips, projectFile, {}, std::move(control));
}

void MediaSourceAuthorization::setContentMismatchContinuation(
    std::function<void(ContentMismatchEvent)> sink) {
    m_listeners->contentMismatch = std::move(sink);
}

} // namespace corvane

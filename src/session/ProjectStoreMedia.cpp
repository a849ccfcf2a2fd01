#include "platform/Paths.h"
#include "session/ProjectStore.h"
#include "trust/PathSafety.h"

#include <QPointer>

#include <algorithm>

namespace corvane {

namespace {

QStringList sortedList(const QSet<QString> &paths) {
    QStringList list(paths.cbegin(), paths.cend());
    std::ranges::sort(list);
    return list;
}

QStringList clipsInMediaFolder(const Project &project, const QString &mediaFolder) {
    QStringList clips;
    for (const VideoItem &video : project.videos) {
        if (!PathSafety::reachesOutsideOrThroughSymlink(video->sourcePath, mediaFolder)) {
            clips.append(video->sourcePath);
        }
    }
    return clips;
}

bool isRefused(const QString &clip, const PathSafety::SourceGrants &grants) {
    try {
        PathSafety::validateSource(clip, grants, QStringLiteral("source"));
        return false;
    } catch (const PathSafety::Violation &) {
        return true;
    }
}

/// True if the media folder holds clips, nothing in it was ever granted, and one is refused. Looks
/// at the disk.
bool isUnauthorizedPackage(const Project &project, const PathSafety::SourceGrants &grants) {
    const QString media = paths::joined(grants.projectFolder, QStringLiteral("media"));
    if (PathSafety::fileType(media) != FileType::Directory) {
        return false;
    }
    const QStringList clips = clipsInMediaFolder(project, media);
    const bool anyGranted = std::ranges::any_of(
        grants.authorizedSourcePaths.keyBegin(), grants.authorizedSourcePaths.keyEnd(),
        [&](const QString &path) { return path == media || paths::isBelow(path, media); });
    return !anyGranted &&
           std::ranges::any_of(clips, [&](const QString &clip) { return isRefused(clip, grants); });
}

} // namespace

QCoro::Task<bool> ProjectStore::legacyPackageNeedsAuthorization(Project project, QString file) {
    auto &authorization = m_authorization;
    PathSafety::SourceGrants grants{.projectFolder = projectFolder(file)};
    grants.authorizedSourcePaths = co_await authorization.authorizedPaths(file);
    grants.mediaRootAuthorized =
        co_await authorization.isMediaRootAuthorized(mediaFolder(file), file);
    co_return co_await userInitiatedExecutor().run(
        [project, grants] { return isUnauthorizedPackage(project, grants); });
}

/// A path shows in one list at most: a mismatch goes first, then a missing identity, then the rest.
QCoro::Task<> ProjectStore::refreshMediaConfirmationState() {
    if (!m_project || !m_fileURL) {
        co_return; // closed while it was being opened
    }
    const QPointer self(this);
    auto &authorization = m_authorization;
    const QString file = *m_fileURL;
    MediaConfirmation state;
    state.legacyPackageMediaNeedsAuthorization =
        co_await legacyPackageNeedsAuthorization(*m_project, file);
    const QSet<QString> unresolved = co_await authorization.unresolvedPaths(file);
    const QSet<QString> pending = co_await authorization.pendingLegacyPaths(file);
    const QSet<QString> mismatched = co_await authorization.contentMismatchPaths(file);
    if (!self || m_fileURL != file) {
        co_return;
    }
    state.legacyProjectIdMediaPendingPaths = sortedList(pending - unresolved - mismatched);
    state.unresolvedMediaPendingPaths = sortedList((unresolved & pending) - mismatched);
    state.contentMismatchPendingPaths = sortedList(mismatched & pending);
    state.legacyProjectIdMediaNeedsConfirmation = !state.legacyProjectIdMediaPendingPaths.isEmpty();
    state.unresolvedMediaNeedsConfirmation = !state.unresolvedMediaPendingPaths.isEmpty();
    state.contentMismatchNeedsConfirmation = !state.contentMismatchPendingPaths.isEmpty();
    setMediaConfirmation(std::move(state));
}

void ProjectStore::noteContentMismatch(const ContentMismatchEvent &event) {
    if (!m_fileURL || MediaSourceAuthorization::projectKey(*m_fileURL) != event.projectKey) {
        return;
    }
    MediaConfirmation state = m_mediaConfirmation;
    const QSet<QString> known(state.contentMismatchPendingPaths.cbegin(),
                              state.contentMismatchPendingPaths.cend());
    if (known.contains(event.paths)) {
        return;
    }
    state.contentMismatchPendingPaths = sortedList(known | event.paths);
    state.contentMismatchNeedsConfirmation = true;
    setMediaConfirmation(std::move(state));
}

} // namespace corvane

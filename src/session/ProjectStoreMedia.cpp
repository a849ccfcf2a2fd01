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

bool isRefused(const QString &clip, const PathSafety::SourceGrants &grants) {
    try {
        PathSafety::validateSource(clip, grants, QStringLiteral("source"));
        return false;
    } catch (const PathSafety::Violation &) {
        return true;
    }
}

bool isAnyGrantedBelow(const AuthorizedPaths &table, const QString &folder) {
    return std::any_of(table.keyBegin(), table.keyEnd(), [&](const QString &path) {
        return path == folder || paths::isBelow(path, folder);
    });
}

/// True if the media folder holds clips, nothing in it was ever granted, and one is refused. Looks
/// at the disk, but for most projects only at the folder: the table answers first.
bool isUnauthorizedPackage(const Project &project, const PathSafety::SourceGrants &grants) {
    const QString media = paths::joined(grants.projectFolder, QStringLiteral("media"));
    return PathSafety::fileType(media) == FileType::Directory &&
           !isAnyGrantedBelow(grants.authorizedSourcePaths, media) &&
           std::ranges::any_of(project.videos, [&](const VideoItem &video) {
               const QString clip = resolvedAgainstProject(video->sourcePath, project.filePath);
               return !PathSafety::reachesOutsideOrThroughSymlink(clip, media) &&
                      isRefused(clip, grants);
           });
}

} // namespace

QCoro::Task<bool> ProjectStore::legacyPackageNeedsAuthorization(Project project, QString file) {
    const QPointer self(this);
    const PathSafety::SourceGrants grants = co_await m_authorization.sourceGrants(file);
    if (!self) {
        co_return false;
    }
    co_return co_await m_mediaChecks.run(
        [project, grants] { return isUnauthorizedPackage(project, grants); });
}

void ProjectStore::MediaConfirmation::raiseFlags() {
    legacyProjectIdMediaNeedsConfirmation = !legacyProjectIdMediaPendingPaths.isEmpty();
    unresolvedMediaNeedsConfirmation = !unresolvedMediaPendingPaths.isEmpty();
    contentMismatchNeedsConfirmation = !contentMismatchPendingPaths.isEmpty();
}

/// A path shows in one list at most: a mismatch goes first, then a missing identity, then the rest.
/// The sets are read last and at one moment, and what is read is published before any later word of
/// the registry arrives, so that an event is either in what is read or comes behind it.
QCoro::Task<> ProjectStore::refreshMediaConfirmationState() {
    if (!m_project || !m_fileURL) {
        co_return; // closed while it was being opened
    }
    const QPointer self(this);
    const QString file = *m_fileURL;
    MediaConfirmation state;
    state.legacyPackageMediaNeedsAuthorization =
        co_await legacyPackageNeedsAuthorization(*m_project, file);
    if (!self || m_fileURL != file) {
        co_return;
    }
    const auto [unresolved, pending, mismatched] = co_await m_authorization.pendingMedia(file);
    if (!self || m_fileURL != file) {
        co_return;
    }
    state.legacyProjectIdMediaPendingPaths = sortedList(pending - unresolved - mismatched);
    state.unresolvedMediaPendingPaths = sortedList((unresolved & pending) - mismatched);
    state.contentMismatchPendingPaths = sortedList(mismatched & pending);
    state.raiseFlags();
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
    state.raiseFlags();
    setMediaConfirmation(std::move(state));
}

QCoro::Task<> ProjectStore::authorizeLegacyPackageMedia() {
    if (!m_project || !m_fileURL || m_answersAtWork.contains({Answer::legacyPackage, *m_fileURL})) {
        co_return;
    }
    const QPointer self(this);
    const QString file = *m_fileURL;
    m_answersAtWork.insert({Answer::legacyPackage, file});
    co_await m_authorization.authorizeMediaFolderClips(*m_project, file);
    if (!self) {
        co_return;
    }
    m_answersAtWork.erase({Answer::legacyPackage, file});
    if (m_fileURL != file) {
        co_return;
    }
    MediaConfirmation state = m_mediaConfirmation;
    state.legacyPackageMediaNeedsAuthorization = false;
    setMediaConfirmation(std::move(state));
    setAnsweredStatus(
        QStringLiteral("Authorized this project's media folder for Export and Handoff."));
}

QCoro::Task<> ProjectStore::confirmLegacyProjectIdMedia() {
    return confirm(Answer::legacyProjectId, &MediaConfirmation::legacyProjectIdMediaPendingPaths,
                   QStringLiteral("Confirmed this project's carried-over media authorizations."));
}

QCoro::Task<> ProjectStore::confirmUnresolvedMedia() {
    return confirm(
        Answer::unresolved, &MediaConfirmation::unresolvedMediaPendingPaths,
        QStringLiteral("Confirmed this project's external media at its current location."));
}

QCoro::Task<> ProjectStore::trustChangedContents() {
    return confirm(Answer::contentMismatch, &MediaConfirmation::contentMismatchPendingPaths, {});
}

/// Takes back what it asked for and leaves what came meanwhile.
QCoro::Task<> ProjectStore::confirm(Answer answer, QStringList MediaConfirmation::*list,
                                    QString status) {
    if (!m_project || !m_fileURL || m_answersAtWork.contains({answer, *m_fileURL})) {
        co_return;
    }
    const QPointer self(this);
    const QString file = *m_fileURL;
    const QStringList asked = m_mediaConfirmation.*list;
    m_answersAtWork.insert({answer, file});
    co_await m_authorization.confirmPendingPaths(asked, file);
    if (!self) {
        co_return;
    }
    m_answersAtWork.erase({answer, file});
    if (m_fileURL != file) {
        co_return;
    }
    MediaConfirmation state = m_mediaConfirmation;
    const QSet<QString> answered(asked.cbegin(), asked.cend());
    (state.*list).removeIf([&](const QString &path) { return answered.contains(path); });
    state.raiseFlags();
    setMediaConfirmation(std::move(state));
    setAnsweredStatus(status);
}

void ProjectStore::setAnsweredStatus(const QString &text) {
    const QString told = m_authorization.unsavedNotice().value_or(text);
    if (!told.isEmpty()) {
        setStatus(told);
    }
}

} // namespace corvane

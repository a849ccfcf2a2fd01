// Media confirmation: what the registry asks about the open project, and the user's answers.

#include "platform/Paths.h"
#include "session/ProjectStore.h"
#include "trust/PathSafety.h"

#include <QPointer>

#include <algorithm>

namespace corvane {

namespace {

bool isRefused(const QString &clip, const PathSafety::SourceGrants &grants) {
    try {
        PathSafety::validateSource(clip, grants, QStringLiteral("source"));
        return false;
    } catch (const PathSafety::Violation &) {
        return true;
    }
}

bool hasGrantWithin(const AuthorizedPaths &table, const QString &folder) {
    return std::any_of(table.keyBegin(), table.keyEnd(), [&](const QString &path) {
        return path == folder || paths::isBelow(path, folder);
    });
}

/// True if the media folder contains clips, no path in it was ever granted, and a clip is refused.
/// Accesses files; for most projects only the media folder itself, since the table is checked
/// first.
bool isUnauthorizedPackage(const Project &project, const PathSafety::SourceGrants &grants) {
    const QString media = paths::joined(grants.projectFolder, QStringLiteral("media"));
    return PathSafety::fileType(media) == FileType::Directory &&
           !hasGrantWithin(grants.authorizedSourcePaths, media) &&
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

/// The pending sets are read last and published without another suspension, so that a mismatch
/// event is either contained in them or delivered afterwards.
QCoro::Task<> ProjectStore::refreshMediaConfirmationState() {
    if (!project() || !m_fileURL) {
        co_return; // closed while it was being opened
    }
    const QPointer self(this);
    const QString file = *m_fileURL;
    MediaConfirmation state;
    state.legacyPackageMediaNeedsAuthorization =
        co_await legacyPackageNeedsAuthorization(*project(), file);
    if (!self || m_fileURL != file) {
        co_return;
    }
    state.setPending(co_await m_authorization.pendingMedia(file));
    if (self && m_fileURL == file) {
        setMediaConfirmation(std::move(state));
    }
}

void ProjectStore::addContentMismatch(const ContentMismatchEvent &event) {
    if (m_fileURL && MediaSourceAuthorization::projectKey(*m_fileURL) == event.projectKey) {
        MediaConfirmation state = m_mediaConfirmation;
        state.addContentMismatches(event.paths);
        setMediaConfirmation(std::move(state));
    }
}

QCoro::Task<> ProjectStore::authorizeLegacyPackageMedia() {
    return runAnswer(
        Answer::legacyPackage,
        [this](const QString &file) {
            return m_authorization.authorizeMediaFolderClips(*project(), file);
        },
        [](MediaConfirmation &state) { state.legacyPackageMediaNeedsAuthorization = false; },
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

/// Removes only the confirmed paths from the list: others may have been added meanwhile.
QCoro::Task<> ProjectStore::confirm(Answer answer, QStringList MediaConfirmation::*list,
                                    QString status) {
    const QStringList confirmed = m_mediaConfirmation.*list;
    return runAnswer(
        answer,
        [this, confirmed](const QString &file) {
            return m_authorization.confirmPendingPaths(confirmed, file);
        },
        [list, confirmed](MediaConfirmation &state) { state.remove(list, confirmed); },
        std::move(status));
}

/// Publishes `status`, or that the registry couldn't be written, unless the text is empty.
QCoro::Task<> ProjectStore::runAnswer(Answer answer, Grant grant, StateChange change,
                                      QString status) {
    if (!project() || !m_fileURL || m_runningAnswers.contains({answer, *m_fileURL})) {
        co_return;
    }
    const QPointer self(this);
    const QString file = *m_fileURL;
    m_runningAnswers.insert({answer, file});
    co_await grant(file);
    if (!self) {
        co_return;
    }
    m_runningAnswers.erase({answer, file});
    if (m_fileURL != file) {
        co_return;
    }
    MediaConfirmation state = m_mediaConfirmation;
    change(state);
    setMediaConfirmation(std::move(state));
    const QString text = m_authorization.unsavedNotice().value_or(status);
    if (!text.isEmpty()) {
        setStatus(text);
    }
}

} // namespace corvane

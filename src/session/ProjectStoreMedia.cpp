// Media confirmation: what the registry asks about the open project, and the user's answers.

#include "platform/Paths.h"
#include "platform/RemainingTime.h"
#include "session/MediaConfirmationBanner.h"
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
    co_return co_await m_fileChecks.run(
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
    if (isOpen(event.projectKey)) {
        MediaConfirmation state = m_mediaConfirmation;
        state.addContentMismatches(event.paths);
        setMediaConfirmation(std::move(state));
    }
}

QCoro::Task<> ProjectStore::authorizeLegacyPackageMedia() {
    return runAnswer(
        Answer::legacyPackage,
        [this](const QString &file, const HashingControl &control) {
            return grantMediaFolder(*project(), file, control);
        },
        QStringLiteral("Authorized this project's media folder for Export and Handoff."));
}

QCoro::Task<QStringList> ProjectStore::grantMediaFolder(Project project, QString file,
                                                        HashingControl control) {
    co_await m_authorization.authorizeMediaFolderClips(std::move(project), std::move(file),
                                                       std::move(control));
    co_return {};
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

QCoro::Task<> ProjectStore::confirm(Answer answer, QStringList MediaConfirmation::*list,
                                    QString status) {
    return runAnswer(
        answer,
        [this, asked = m_mediaConfirmation.*list](const QString &file,
                                                  const HashingControl &control) {
            return confirmPaths(asked, file, control);
        },
        std::move(status));
}

QCoro::Task<QStringList> ProjectStore::confirmPaths(QStringList paths, QString file,
                                                    HashingControl control) {
    const QSet<QString> granted =
        co_await m_authorization.confirmPendingPaths(paths, std::move(file), std::move(control));
    paths.removeIf([&](const QString &path) { return granted.contains(path); });
    co_return paths;
}

HashingControl ProjectStore::answerControl() {
    const auto report = [self = QPointer(this), remaining = RemainingTime(clock().monotonic())](
                            const HashingProgress &progress) {
        if (self) {
            const double fraction = progress.fraction();
            const QString timeLeft = remaining.text(fraction, self->clock().monotonic());
            self->publish(self->m_mediaProgress,
                          std::optional(MediaProgress{fraction, hashingText(progress, timeLeft)}),
                          &ProjectStore::mediaProgressChanged);
        }
    };
    return {.stop = m_answerStop.get_token(), .progress = report};
}

/// Publishes that files couldn't be granted, that the registry couldn't be written, or `status`,
/// unless the text is empty. What is still pending is read after the answer, without a suspension
/// before it is published: other paths may have become pending meanwhile.
QCoro::Task<> ProjectStore::runAnswer(Answer answer, Grant grant, QString status) {
    if (!project() || !m_fileURL || m_runningAnswers.contains({answer, *m_fileURL})) {
        co_return;
    }
    const QPointer self(this);
    const QString file = *m_fileURL;
    m_runningAnswers.insert({answer, file});
    const QStringList refused = co_await grant(file, answerControl());
    if (!self) {
        co_return;
    }
    const PendingMedia pending = co_await m_authorization.pendingMedia(file);
    if (!self) {
        co_return;
    }
    m_runningAnswers.erase({answer, file});
    const bool isCancelled = m_answerStop.stop_requested();
    if (m_runningAnswers.empty()) {
        m_answerStop = std::stop_source();
        publish(m_mediaProgress, {}, &ProjectStore::mediaProgressChanged);
    }
    if (m_fileURL != file) {
        co_return;
    }
    MediaConfirmation state = m_mediaConfirmation;
    if (answer == Answer::legacyPackage) {
        state.legacyPackageMediaNeedsAuthorization = false;
    }
    state.setPending(pending);
    setMediaConfirmation(std::move(state));
    if (!refused.isEmpty()) {
        status =
            isCancelled ? cancelledAnswerText(refused.size()) : unconfirmedText(refused.size());
    }
    const QString text = m_authorization.unsavedNotice().value_or(status);
    if (!text.isEmpty()) {
        setStatus(text);
    }
}

} // namespace corvane

// Saving: the document, copies of it and backups.

#include "platform/Paths.h"
#include "platform/Tasks.h"
#include "session/ProjectStore.h"

#include <QPointer>

namespace corvane {

namespace {

using SaveError = ProjectFileIO::SaveError;

/// False for a failure that only the user can resolve.
bool canSucceedLater(SaveError::Kind kind) {
    return kind == SaveError::Kind::writeFailed || kind == SaveError::Kind::diskCorruptAbort;
}

ProjectStoreError saveFailure(const SaveError &error) {
    const bool isForeign = error.kind() == SaveError::Kind::changedOnDisk;
    return {isForeign ? ProjectStoreError::Kind::changedOnDisk
                      : ProjectStoreError::Kind::saveFailed,
            error.description()};
}

/// The project as another one, with the same contents, for the file `target`. In another folder,
/// relative paths of media would lead nowhere, so they are made absolute.
Project projectForCopy(Project project, const QString &target) {
    const QString file = project.filePath;
    project.id = newIdentifier();
    if (projectFolder(target) == projectFolder(file)) {
        return project;
    }
    const auto makeAbsolute = [&file](QString &path) {
        if (!path.isEmpty()) {
            path = resolvedAgainstProject(path, file);
        }
    };
    for (VideoItem &item : project.videos) {
        VideoRecord &video = item.edit();
        makeAbsolute(video.sourcePath);
        for (auto *const path : {&video.sidecarPath, &video.hdPath, &video.proxyPath}) {
            if (*path) {
                makeAbsolute(**path);
            }
        }
    }
    return project;
}

} // namespace

QCoro::Task<> ProjectStore::flushPendingSave() {
    const QPointer self(this);
    const quint64 before = revision();
    const bool saveIsDue = isSaving() || (m_saver && m_saver->hasPending());
    if (const auto saver = m_saver) {
        co_await saver->flush();
    }
    if (!self) {
        co_return;
    }
    co_await waitForRunningSave();
    // A save that just failed is not retried at once.
    const bool hasJustFailed =
        self && saveIsDue && revision() == before && m_saveState.failure.has_value();
    if (self && m_isDirty && !hasJustFailed) {
        co_await saveNow();
    }
    if (self && m_isDirty && m_saveState.failure) {
        setLastError(m_saveState.failure); // again, even if the user has dismissed it before
    }
}

QCoro::Task<bool> ProjectStore::saveEverything() {
    const QPointer self(this);
    while (self && (m_isDirty || isSaving() || (m_saver && m_saver->hasPending()))) {
        const quint64 before = revision();
        co_await flushPendingSave();
        if (self && m_isDirty && revision() == before) {
            co_return false; // still dirty without a new edit: the save failed
        }
    }
    co_return true;
}

QCoro::Task<> ProjectStore::waitForRunningSave() {
    if (const auto running = m_lastSave) {
        co_await *running;
    }
}

QCoro::Task<> ProjectStore::saveNow(ForeignChanges changes) {
    const QPointer self(this);
    const auto foreign = m_baseline;
    const bool overwrites = changes == ForeignChanges::Overwrite && project();
    if (overwrites) {
        m_baseline = std::make_shared<FileBaseline>();
        setNextSaveAllowsDecrease();
    }
    const auto any = m_baseline;
    const auto save = std::make_shared<QCoro::Task<>>(performSave());
    m_lastSave = save;
    co_await *save;
    if (self && overwrites && m_saveState.failure && m_baseline == any) {
        m_baseline = foreign; // the answer doesn't cover later changes, so a retry asks again
    }
}

QCoro::Task<> ProjectStore::performSave() {
    if (!project() || !m_fileURL) {
        co_return;
    }
    const QPointer self(this);
    const auto baseline = m_baseline;
    const quint64 before = revision();
    const bool allowDecrease = takeNextSaveAllowsDecrease();
    if (++m_runningSaves == 1) {
        Q_EMIT isSavingChanged();
    }
    SaveState state;
    bool shouldRetry = true;
    try {
        state.fileSize = co_await m_io.save(*project(), *m_fileURL, allowDecrease, baseline);
    } catch (const SaveError &error) {
        state.failure = saveFailure(error);
        shouldRetry = canSucceedLater(error.kind());
    } catch (const std::exception &error) {
        state.failure.emplace(ProjectStoreError::Kind::saveFailed, describe(error));
    }
    if (!self) {
        co_return;
    }
    if (m_baseline != baseline) {
        // Closed or opened again since, or the user has chosen to overwrite the file.
    } else if (state.failure) {
        if (allowDecrease) { // then it wasn't the guard that refused
            setNextSaveAllowsDecrease();
        }
        publishSaveFailure(std::move(*state.failure), shouldRetry);
    } else {
        setDirty(revision() != before);
        publishSave(state);
    }
    if (self && --m_runningSaves == 0) {
        Q_EMIT isSavingChanged();
    }
}

void ProjectStore::publishSave(const SaveState &state) {
    m_retry.reset();
    m_lastSavedAt = clock().now();
    setSaveState(state);
    Q_EMIT lastSavedAtChanged();
    if (m_lastError && m_lastError->isSaveFailure()) {
        setLastError({});
    }
}

/// Publishes a failure as the last error only once: autosave and retries repeat it.
void ProjectStore::publishSaveFailure(ProjectStoreError failure, bool shouldRetry) {
    if (shouldRetry) {
        m_retry.schedule();
    } else {
        m_retry.reset();
    }
    const bool isKnown = m_saveState.failure == failure;
    setSaveState({.failure = failure, .fileSize = m_saveState.fileSize});
    if (!isKnown) {
        setLastError(std::move(failure));
    }
}

QCoro::Task<bool> ProjectStore::saveCopy(QString file) {
    if (!project()) {
        co_return false;
    }
    const QPointer self(this);
    file = paths::standardized(file);
    const QString key = co_await keyOf(file);
    if (!self || !project()) {
        co_return false;
    }
    std::optional<ProjectStoreError> failure;
    try {
        if (isOpen(key)) {
            throw Failure(
                QStringLiteral("%1 is the open project itself. Choose another name.").arg(file));
        }
        const QString original = *m_fileURL;
        MediaSourceAuthorization &authorization = m_authorization; // outlives the store
        co_await m_io.save(projectForCopy(*project(), file), file, false);
        const AuthorizedPaths granted = co_await authorization.authorizedPaths(original);
        co_await authorization.markPending(granted.keys(), {}, file);
    } catch (const std::exception &error) {
        failure.emplace(ProjectStoreError::Kind::copyFailed, describe(error));
    }
    if (!self) {
        co_return false;
    }
    if (failure) {
        setLastError(std::move(failure));
        co_return false;
    }
    setStatus(QStringLiteral("Saved a copy: %1").arg(paths::lastComponent(file)));
    co_return true;
}

QCoro::Task<std::optional<ProjectStoreError>> ProjectStore::backUp() {
    if (!project()) {
        co_return std::nullopt;
    }
    const QPointer self(this);
    try {
        const QString backup = co_await m_backups.write(*project());
        if (self) {
            setStatus(QStringLiteral("Backup written: %1").arg(paths::lastComponent(backup)));
        }
    } catch (const std::exception &error) {
        co_return ProjectStoreError(ProjectStoreError::Kind::backupFailed, describe(error));
    }
    co_return std::nullopt;
}

QCoro::Task<> ProjectStore::writeBackup() {
    const QPointer self(this);
    const auto failure = co_await backUp();
    if (self && failure) {
        setLastError(failure);
    }
}

void ProjectStore::scheduleSave() {
    setDirty(true);
    if (m_saver) {
        m_saver->schedule();
    }
}

} // namespace corvane

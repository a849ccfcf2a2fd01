#include "session/ProjectStore.h"

#include "document/ProjectMigration.h"
#include "platform/Paths.h"
#include "platform/Tasks.h"

#include <QPointer>

namespace corvane {

namespace {

QString errorPrefix(ProjectStoreError::Kind kind) {
    switch (kind) {
    case ProjectStoreError::Kind::openFailed:
        return QStringLiteral("Open failed: ");
    case ProjectStoreError::Kind::saveFailed:
        return QStringLiteral("Save failed: ");
    case ProjectStoreError::Kind::createFailed:
        return QStringLiteral("Create failed: ");
    case ProjectStoreError::Kind::backupFailed:
        break;
    }
    return QStringLiteral("Backup failed: ");
}

std::optional<QString> absentIfEmpty(const QString &text) {
    return text.isEmpty() ? std::nullopt : std::optional(text);
}

Project makeProject(const NewProject &fields, const QString &file, const QDateTime &now) {
    return {.id = newIdentifier(),
            .name = fields.name,
            .filePath = file,
            .projectName = fields.name,
            .shootDate = absentIfEmpty(fields.shootDate.trimmed()),
            .clientOrSeries = absentIfEmpty(fields.clientOrSeries.trimmed()),
            .location = absentIfEmpty(fields.location.trimmed()),
            .notes = absentIfEmpty(fields.notes.trimmed()),
            .createdAt = now,
            .updatedAt = now};
}

} // namespace

ProjectStoreError::ProjectStoreError(Kind kind, const QString &error)
    : Failure(errorPrefix(kind) + error), m_kind(kind) {}

ProjectStore::ProjectStore(ProjectFileIO &io, ProjectRegistry &registry, BackupService &backups,
                           MediaSourceAuthorization &authorization, Clock &clock,
                           StartUpMigrations migrations, QObject *parent)
    : QObject(parent),
      m_io(io),
      m_registry(registry),
      m_backups(backups),
      m_authorization(authorization),
      m_clock(clock) {
    m_startUp = std::make_shared<QCoro::Task<>>(startUp(std::move(migrations)));
}

ProjectStore::~ProjectStore() {
    m_authorization.setContentMismatchContinuation({});
    m_authorization.setUnsavedNoticeContinuation({});
}

QCoro::Task<> ProjectStore::startUp(StartUpMigrations migrations) {
    const QPointer self(this);
    m_authorization.setContentMismatchContinuation([self](const ContentMismatchEvent &event) {
        if (self) {
            self->noteContentMismatch(event);
        }
    });
    m_authorization.setUnsavedNoticeContinuation([self](const QString &notice) {
        if (self) {
            self->setStatus(notice);
        }
    });
    co_await refreshRecents();
    if (self && migrations) {
        co_await migrations(m_recentProjects);
    }
}

QCoro::Task<> ProjectStore::waitForStartUp() {
    const auto startUp = m_startUp;
    co_await *startUp;
}

QCoro::Task<> ProjectStore::openProject(QString file) {
    const QPointer self(this);
    setLastError({});
    file = paths::standardized(file);
    if (!m_startUp->isReady()) { // as a rule it is; an older registry can take long, once
        setStatus(QStringLiteral("Checking the media of earlier projects…"));
        co_await waitForStartUp();
    }
    if (!self) {
        co_return;
    }
    std::optional<Project> loaded;
    // What is saved to the very file that is opened again must be in what is read, so it is read
    // again until nothing was saved behind the reading.
    for (bool isCurrent = false; !isCurrent;) {
        if (isOpen(file) && (!co_await saveEverything() || !self)) {
            co_return;
        }
        const quint64 revision = m_revision;
        loaded = co_await loadProject(file);
        if (!self || !loaded || !co_await saveEverything() || !self) {
            co_return;
        }
        isCurrent = !isOpen(file) || m_revision == revision;
    }
    adoptProject(std::move(*loaded), file);
    if (!self || !m_project) {
        co_return; // whoever heard of it closed it
    }
    Project migrated = *m_project;
    if (ProjectMigration::migrateReviewedFlags(migrated, m_clock.now())) {
        updateProject(std::move(migrated));
        setStatus(QStringLiteral("Migrated reviewed flags on legacy clips."));
    } else {
        setStatusMessage({});
    }
    if (self && m_project) {
        co_await touchRecents();
    }
    if (self) {
        co_await refreshMediaConfirmationState();
    }
}

/// Nothing where the file can't be read; that is told.
QCoro::Task<std::optional<Project>> ProjectStore::loadProject(QString file) {
    const QPointer self(this);
    try {
        co_return co_await m_io.load(file);
    } catch (const std::exception &error) {
        if (self) {
            setLastError(ProjectStoreError(ProjectStoreError::Kind::openFailed, describe(error)));
            setStatusMessage({});
        }
    }
    co_return std::nullopt;
}

bool ProjectStore::isOpen(const QString &file) const {
    return m_fileURL && MediaSourceAuthorization::projectKey(file) ==
                            MediaSourceAuthorization::projectKey(*m_fileURL);
}

/// Throws what is to be told behind "Create failed: ".
QCoro::Task<> ProjectStore::writeNewProject(Project project, QString file, ProjectFolder folder) {
    ProjectFileIO &io = m_io; // outlives the store
    if (folder == ProjectFolder::Create) {
        const QString path = projectFolder(file);
        try {
            co_await userInitiatedExecutor().run([path] { fileSystem().createFolders(path); });
        } catch (const FileError &error) {
            throw ProjectFileIO::SaveError::writeFailed(path, error.description());
        }
    }
    co_await io.save(project, file, false);
}

QCoro::Task<> ProjectStore::createProject(NewProject fields, QString file, ProjectFolder folder) {
    const QPointer self(this);
    setLastError({});
    if (!co_await saveEverything() || !self) {
        co_return;
    }
    const bool wasPending = m_pendingImportOnLoad;
    setPendingImportOnLoad(true);
    file = paths::standardized(file);
    const Project created = makeProject(fields, file, m_clock.now());
    try {
        co_await writeNewProject(created, file, folder);
    } catch (const std::exception &error) {
        if (self) {
            setLastError(ProjectStoreError(ProjectStoreError::Kind::createFailed, describe(error)));
            setPendingImportOnLoad(m_project && wasPending);
        }
        co_return;
    }
    // Nobody can edit a project that isn't published, but the one before may have been edited.
    if (!self || !co_await saveEverything()) {
        if (self) {
            setPendingImportOnLoad(wasPending);
        }
        co_return;
    }
    if (!self) {
        co_return;
    }
    adoptProject(created, file);
    m_lastSavedAt = m_clock.now();
    Q_EMIT lastSavedAtChanged();
    setStatus(QStringLiteral("Created project %1").arg(created.name));
    if (m_project) {
        co_await touchRecents();
    }
}

QCoro::Task<> ProjectStore::closeProject() {
    const QPointer self(this);
    if (!co_await saveEverything() || !self) {
        co_return;
    }
    leaveProject();
    setLastError({});
}

QCoro::Task<> ProjectStore::flushPendingSave() {
    const QPointer self(this);
    const quint64 revision = m_revision;
    const bool saveIsDue = isSaving() || (m_saver && m_saver->hasPending());
    if (const auto saver = m_saver) {
        co_await saver->flush();
    }
    if (!self) {
        co_return;
    }
    if (const auto running = m_lastSave) {
        co_await *running;
    }
    // A save that was due and failed isn't tried again at once: its failure is what is to be told.
    const bool hasJustFailed = self && saveIsDue && m_revision == revision && m_lastError &&
                               m_lastError->kind() == ProjectStoreError::Kind::saveFailed;
    if (self && m_isDirty && !hasJustFailed) {
        co_await saveNow();
    }
}

QCoro::Task<bool> ProjectStore::saveEverything() {
    const QPointer self(this);
    while (self && (m_isDirty || isSaving() || (m_saver && m_saver->hasPending()))) {
        const quint64 before = m_revision;
        co_await flushPendingSave();
        if (self && m_isDirty && m_revision == before) {
            co_return false; // nothing was edited meanwhile, so the save failed
        }
    }
    co_return true;
}

QCoro::Task<> ProjectStore::saveNow() {
    const auto save = std::make_shared<QCoro::Task<>>(performSave());
    m_lastSave = save;
    co_await *save;
}

QCoro::Task<> ProjectStore::performSave() {
    if (!m_project || !m_fileURL) {
        co_return;
    }
    const QPointer self(this);
    const QString file = *m_fileURL;
    const QString id = m_project->id;
    const quint64 revision = m_revision;
    const bool allowDecrease = std::exchange(m_nextSaveAllowsDecrease, false);
    if (++m_runningSaves == 1) {
        Q_EMIT isSavingChanged();
    }
    std::optional<ProjectStoreError> failure;
    try {
        co_await m_io.save(*m_project, file, allowDecrease);
    } catch (const std::exception &error) {
        failure.emplace(ProjectStoreError::Kind::saveFailed, describe(error));
    }
    if (!self) {
        co_return;
    }
    const bool isStillOpen = m_project && m_project->id == id && m_fileURL == file;
    if (isStillOpen && !failure) {
        setDirty(m_revision != revision);
        m_lastSavedAt = m_clock.now();
        Q_EMIT lastSavedAtChanged();
    }
    if (isStillOpen) {
        setLastError(failure);
    }
    if (--m_runningSaves == 0) {
        Q_EMIT isSavingChanged();
    }
}

QCoro::Task<std::optional<ProjectStoreError>> ProjectStore::backUp() {
    if (!m_project) {
        co_return std::nullopt;
    }
    const QPointer self(this);
    try {
        const QString backup = co_await m_backups.write(*m_project);
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

QCoro::Task<> ProjectStore::refreshRecents() {
    const QPointer self(this);
    const auto summaries = newestFirst(co_await m_registry.summaries());
    if (self && summaries != m_recentProjects) {
        m_recentProjects = summaries;
        Q_EMIT recentProjectsChanged();
    }
}

/// Called while a project is open.
QCoro::Task<> ProjectStore::touchRecents() {
    const QPointer self(this);
    const auto summaries = newestFirst(co_await m_registry.touch(*m_project, *m_fileURL));
    if (self && summaries != m_recentProjects) {
        m_recentProjects = summaries;
        Q_EMIT recentProjectsChanged();
    }
}

void ProjectStore::adoptProject(Project project, const QString &file) {
    m_undoStack.clear();
    m_redoStack.clear();
    m_inUndoBatch = false;
    m_isReplayingHistory = false;
    m_nextSaveAllowsDecrease = false;
    m_project = std::move(project);
    m_fileURL = file;
    ++m_revision;
    m_lastSavedAt.reset();
    m_saver = std::make_shared<DebounceSaver>(
        [self = QPointer(this)]() -> QCoro::Task<> {
            if (self) {
                co_await self->saveNow();
            }
        },
        m_clock);
    setDirty(false);
    setMediaConfirmation({});
    Q_EMIT projectChanged();
    Q_EMIT fileURLChanged();
    Q_EMIT lastSavedAtChanged();
}

void ProjectStore::leaveProject() {
    m_saver.reset();
    m_undoStack.clear();
    m_redoStack.clear();
    m_inUndoBatch = false;
    m_isReplayingHistory = false;
    m_nextSaveAllowsDecrease = false;
    setDirty(false);
    setStatusMessage({});
    setMediaConfirmation({});
    if (m_project) {
        m_project.reset();
        m_fileURL.reset();
        Q_EMIT projectChanged();
        Q_EMIT fileURLChanged();
    }
}

void ProjectStore::setStatus(const QString &text) {
    setStatusMessage(text);
}

void ProjectStore::clearLastError() {
    setLastError({});
}

void ProjectStore::consumePendingImport() {
    setPendingImportOnLoad(false);
}

void ProjectStore::setPendingImportOnLoad(bool pending) {
    if (std::exchange(m_pendingImportOnLoad, pending) != pending) {
        Q_EMIT pendingImportOnLoadChanged();
    }
}

void ProjectStore::setDirty(bool dirty) {
    if (std::exchange(m_isDirty, dirty) != dirty) {
        Q_EMIT isDirtyChanged();
    }
}

void ProjectStore::setLastError(std::optional<ProjectStoreError> error) {
    if (std::exchange(m_lastError, std::move(error)) != m_lastError) {
        Q_EMIT lastErrorChanged();
    }
}

void ProjectStore::setStatusMessage(std::optional<QString> text) {
    if (std::exchange(m_statusMessage, std::move(text)) != m_statusMessage) {
        Q_EMIT statusMessageChanged();
    }
}

void ProjectStore::setMediaConfirmation(MediaConfirmation state) {
    if (std::exchange(m_mediaConfirmation, std::move(state)) != m_mediaConfirmation) {
        Q_EMIT mediaConfirmationChanged();
    }
}

} // namespace corvane

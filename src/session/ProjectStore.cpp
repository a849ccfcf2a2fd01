#include "session/ProjectStore.h"

#include "document/ProjectMigration.h"
#include "platform/Paths.h"
#include "platform/Tasks.h"

#include <QPointer>

namespace corvane {

ProjectStore::ProjectStore(ProjectFileIO &io, ProjectRegistry &registry, BackupService &backups,
                           MediaSourceAuthorization &authorization, Clock &clock,
                           StartUpMigrations migrations, QObject *parent)
    : ProjectEditor(clock, parent),
      m_io(io),
      m_registry(registry),
      m_backups(backups),
      m_authorization(authorization) {
    m_startUp = std::make_shared<QCoro::Task<>>(startUp(std::move(migrations)));
}

ProjectStore::~ProjectStore() {
    m_authorization.setContentMismatchContinuation({});
    m_authorization.setNoticeContinuation({});
}

QCoro::Task<> ProjectStore::startUp(StartUpMigrations migrations) {
    const QPointer self(this);
    m_authorization.setContentMismatchContinuation([self](const ContentMismatchEvent &event) {
        if (self) {
            self->addContentMismatch(event);
        }
    });
    m_authorization.setNoticeContinuation([self](const QString &notice) {
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
    if (!m_startUp->isReady()) { // as when the registry of an older version is migrated
        setStatus(QStringLiteral("Checking the media of earlier projects…"));
        co_await waitForStartUp();
    }
    if (!self) {
        co_return;
    }
    std::optional<Project> loaded = co_await loadUpToDate(file);
    if (!self || !loaded) {
        co_return;
    }
    adoptProject(std::move(*loaded), file);
    if (!self || !project()) {
        co_return; // closed by an observer
    }
    Project migrated = *project();
    if (ProjectMigration::migrateReviewedFlags(migrated, clock().now())) {
        updateProject(std::move(migrated));
        setStatus(QStringLiteral("Migrated reviewed flags on legacy clips."));
    } else {
        setStatusMessage({});
    }
    if (self && project()) {
        co_await touchRecents();
    }
    if (self) {
        co_await refreshMediaConfirmationState();
    }
    if (const QStringList notices = self ? m_authorization.notices() : QStringList();
        self && project() && !notices.isEmpty()) {
        setStatus(notices.join(QLatin1Char(' ')));
    }
}

/// Saves the open project and reads `file`. Reads again if `file` is the open project and it was
/// edited and saved during the read.
QCoro::Task<std::optional<Project>> ProjectStore::loadUpToDate(QString file) {
    const QPointer self(this);
    for (;;) {
        if (isOpen(file) && (!co_await saveEverything() || !self)) {
            co_return std::nullopt;
        }
        const quint64 before = revision();
        std::optional<Project> loaded = co_await loadProject(file);
        if (!self || !loaded || !co_await saveEverything() || !self) {
            co_return std::nullopt;
        }
        if (!isOpen(file) || revision() == before) {
            co_return loaded;
        }
    }
}

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

/// Throws the error whose description follows "Create failed: ".
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
    const Project created = makeProject(fields, file, clock().now());
    try {
        co_await writeNewProject(created, file, folder);
    } catch (const std::exception &error) {
        if (self) {
            setLastError(ProjectStoreError(ProjectStoreError::Kind::createFailed, describe(error)));
            setPendingImportOnLoad(project() && wasPending);
        }
        co_return;
    }
    // The project that is still open may have been edited meanwhile.
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
    m_lastSavedAt = clock().now();
    Q_EMIT lastSavedAtChanged();
    setStatus(QStringLiteral("Created project %1").arg(created.name));
    if (project()) {
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
    const quint64 before = revision();
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
    // A save that just failed is not retried at once: its failure is already published.
    const bool hasJustFailed = self && saveIsDue && revision() == before && m_lastError &&
                               m_lastError->kind() == ProjectStoreError::Kind::saveFailed;
    if (self && m_isDirty && !hasJustFailed) {
        co_await saveNow();
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

QCoro::Task<> ProjectStore::saveNow() {
    const auto save = std::make_shared<QCoro::Task<>>(performSave());
    m_lastSave = save;
    co_await *save;
}

QCoro::Task<> ProjectStore::performSave() {
    if (!project() || !m_fileURL) {
        co_return;
    }
    const QPointer self(this);
    const QString file = *m_fileURL;
    const QString id = project()->id;
    const quint64 before = revision();
    const bool allowDecrease = takeNextSaveAllowsDecrease();
    if (++m_runningSaves == 1) {
        Q_EMIT isSavingChanged();
    }
    std::optional<ProjectStoreError> failure;
    try {
        co_await m_io.save(*project(), file, allowDecrease);
    } catch (const std::exception &error) {
        failure.emplace(ProjectStoreError::Kind::saveFailed, describe(error));
    }
    if (!self) {
        co_return;
    }
    const bool isStillOpen = project() && project()->id == id && m_fileURL == file;
    if (isStillOpen && !failure) {
        setDirty(revision() != before);
        m_lastSavedAt = clock().now();
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

QCoro::Task<> ProjectStore::refreshRecents() {
    const QPointer self(this);
    QList<ProjectSummary> summaries = co_await m_registry.summaries();
    if (self) {
        setRecents(std::move(summaries));
    }
}

/// Requires an open project.
QCoro::Task<> ProjectStore::touchRecents() {
    const QPointer self(this);
    QList<ProjectSummary> summaries = co_await m_registry.touch(*project(), *m_fileURL);
    if (self) {
        setRecents(std::move(summaries));
    }
}

void ProjectStore::adoptProject(Project project, const QString &file) {
    clearHistory();
    setProject(std::move(project));
    m_fileURL = file;
    m_lastSavedAt.reset();
    m_saver = std::make_shared<DebounceSaver>(
        [self = QPointer(this)]() -> QCoro::Task<> {
            if (self) {
                co_await self->saveNow();
            }
        },
        clock());
    setDirty(false);
    setMediaConfirmation({});
    Q_EMIT projectChanged();
    Q_EMIT fileURLChanged();
    Q_EMIT lastSavedAtChanged();
}

void ProjectStore::leaveProject() {
    m_saver.reset();
    clearHistory();
    setDirty(false);
    setStatusMessage({});
    setMediaConfirmation({});
    if (project()) {
        setProject(std::nullopt);
        m_fileURL.reset();
        Q_EMIT projectChanged();
        Q_EMIT fileURLChanged();
    }
}

void ProjectStore::scheduleSave() {
    setDirty(true);
    if (m_saver) {
        m_saver->schedule();
    }
}

} // namespace corvane

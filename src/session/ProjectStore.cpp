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
      m_authorization(authorization),
      m_retry([this] { detach(saveNow()); }, clock) {
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

QCoro::Task<> ProjectStore::openProject(QString file, UnsavedEdits edits) {
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
    const QString key = co_await keyOf(file);
    if (!self) {
        co_return;
    }
    auto opened = edits == UnsavedEdits::Discard ? co_await loadAfterSaves(file)
                                                 : co_await loadUpToDate(file, key);
    if (!self || !opened) {
        co_return;
    }
    adoptProject(std::move(*opened), file, key);
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

/// Reads `file` when no save is running. Reads again if one has run meanwhile.
QCoro::Task<std::optional<ProjectFileIO::OpenedProject>>
ProjectStore::loadAfterSaves(QString file) {
    const QPointer self(this);
    for (;;) {
        co_await waitForRunningSave();
        if (!self) {
            co_return std::nullopt;
        }
        const auto lastSave = m_lastSave;
        std::optional<ProjectFileIO::OpenedProject> opened = co_await loadProject(file);
        if (!self || !opened || m_lastSave == lastSave) {
            co_return opened;
        }
    }
}

/// Saves the open project and reads `file`. Reads again if `file` is the open project and it was
/// edited and saved during the read.
QCoro::Task<std::optional<ProjectFileIO::OpenedProject>> ProjectStore::loadUpToDate(QString file,
                                                                                    QString key) {
    const QPointer self(this);
    for (;;) {
        if (isOpen(key) && (!co_await saveEverything() || !self)) {
            co_return std::nullopt;
        }
        const quint64 before = revision();
        std::optional<ProjectFileIO::OpenedProject> opened = co_await loadProject(file);
        if (!self || !opened || !co_await saveEverything() || !self) {
            co_return std::nullopt;
        }
        if (!isOpen(key) || revision() == before) {
            co_return opened;
        }
    }
}

QCoro::Task<std::optional<ProjectFileIO::OpenedProject>> ProjectStore::loadProject(QString file) {
    const QPointer self(this);
    try {
        co_return co_await m_io.open(file);
    } catch (const std::exception &error) {
        if (self) {
            setLastError(ProjectStoreError(ProjectStoreError::Kind::openFailed, describe(error)));
            setStatusMessage({});
        }
    }
    co_return std::nullopt;
}

/// Accesses the file, which may be on a drive that responds slowly.
QCoro::Task<QString> ProjectStore::keyOf(QString file) {
    co_return co_await m_fileChecks.run(
        [file] { return MediaSourceAuthorization::projectKey(file); });
}

/// Throws the error whose description follows "Create failed: ".
QCoro::Task<ProjectFileIO::OpenedProject>
ProjectStore::writeNewProject(Project project, QString file, ProjectFolder folder) {
    ProjectFileIO &io = m_io; // outlives the store
    if (folder == ProjectFolder::Create) {
        const QString path = projectFolder(file);
        try {
            co_await userInitiatedExecutor().run([path] { fileSystem().createFolders(path); });
        } catch (const FileError &error) {
            throw ProjectFileIO::SaveError::writeFailed(path, error.description());
        }
    }
    const auto baseline = std::make_shared<FileBaseline>();
    const qint64 size = co_await io.save(project, file, false, baseline);
    co_return {project, baseline, size};
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
    ProjectFileIO::OpenedProject created;
    try {
        created = co_await writeNewProject(makeProject(fields, file, clock().now()), file, folder);
    } catch (const std::exception &error) {
        if (self) {
            setLastError(ProjectStoreError(ProjectStoreError::Kind::createFailed, describe(error)));
            setPendingImportOnLoad(project() && wasPending);
        }
        co_return;
    }
    if (!self) {
        co_return;
    }
    const QString key = co_await keyOf(file);
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
    const QString name = created.project.name;
    adoptProject(std::move(created), file, key);
    m_lastSavedAt = clock().now();
    Q_EMIT lastSavedAtChanged();
    setStatus(QStringLiteral("Created project %1").arg(name));
    if (project()) {
        co_await touchRecents();
    }
}

QCoro::Task<> ProjectStore::closeProject(UnsavedEdits edits) {
    const QPointer self(this);
    if (edits == UnsavedEdits::Discard) {
        m_saver.reset(); // starts no save while this one ends
        m_retry.reset();
        co_await waitForRunningSave();
    } else if (!co_await saveEverything()) {
        co_return;
    }
    if (!self) {
        co_return;
    }
    leaveProject();
    setLastError({});
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

void ProjectStore::adoptProject(ProjectFileIO::OpenedProject opened, const QString &file,
                                const QString &key) {
    clearHistory();
    setProject(std::move(opened.project));
    m_baseline = std::move(opened.baseline);
    m_fileURL = file;
    m_projectKey = key;
    m_lastSavedAt.reset();
    m_saver = std::make_shared<DebounceSaver>(
        [self = QPointer(this)]() -> QCoro::Task<> {
            if (self) {
                co_await self->saveNow();
            }
        },
        clock());
    m_retry.reset();
    setDirty(false);
    setSaveState({.fileSize = opened.size});
    setMediaConfirmation({});
    Q_EMIT projectOpened();
    Q_EMIT projectChanged();
    Q_EMIT fileURLChanged();
    Q_EMIT lastSavedAtChanged();
}

void ProjectStore::leaveProject() {
    m_saver.reset();
    m_retry.reset();
    m_baseline.reset();
    clearHistory();
    setDirty(false);
    setSaveState({});
    setStatusMessage({});
    setMediaConfirmation({});
    if (project()) {
        setProject(std::nullopt);
        m_fileURL.reset();
        m_projectKey.clear();
        Q_EMIT projectChanged();
        Q_EMIT fileURLChanged();
    }
}

} // namespace corvane

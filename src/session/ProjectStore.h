#pragma once

#include "document/BackupService.h"
#include "document/ProjectFileIO.h"
#include "document/ProjectRegistry.h"
#include "session/DebounceSaver.h"
#include "session/MediaConfirmation.h"
#include "session/NewProject.h"
#include "session/ProjectEditor.h"
#include "session/SaveRetry.h"
#include "session/SaveState.h"

#include <memory>
#include <set>

namespace corvane {

/// Progress of an answer that reads files to grant them.
struct MediaProgress {
    double fraction = 0; ///< from 0 to 1
    QString text;        ///< bytes and time left

    bool operator==(const MediaProgress &) const = default;
};

/// The session: opens, saves and closes the project, and publishes its state to every front end.
/// The editing operations are inherited from `ProjectEditor`.
///
/// Main thread only. Operations that return a task access files without blocking the thread. A task
/// may outlive the store, and then completes without effect. No operation throws: failures are
/// published as `lastError`.
class ProjectStore : public ProjectEditor {
    Q_OBJECT

  public:
    /// Migrates the registry of grants at start-up, given the recent projects. Completes when a
    /// project may be opened. Must not throw.
    using StartUpMigrations = std::function<QCoro::Task<>(QList<ProjectSummary>)>;
    /// The fate of edits that aren't saved yet. `Discard` requires the user's consent.
    enum class UnsavedEdits { Save, Discard };
    /// The fate of changes that another program has made to the project's file. `Overwrite`
    /// requires the user's consent.
    enum class ForeignChanges { Refuse, Overwrite };

    /// Starts the start-up task: connects to `authorization`, loads the recent projects and runs
    /// `migrations` if it is not empty. The services must outlive the store and its tasks.
    ProjectStore(ProjectFileIO &io, ProjectRegistry &registry, BackupService &backups,
                 MediaSourceAuthorization &authorization, Clock &clock = Clock::system(),
                 StartUpMigrations migrations = {}, QObject *parent = nullptr);
    ~ProjectStore() override;

    // Published state. Each field has a signal, which is emitted after every change.
    /// Path of the project file; nullopt if no project is open.
    const std::optional<QString> &fileURL() const { return m_fileURL; }
    bool isDirty() const { return m_isDirty; } ///< memory differs from the file
    bool isSaving() const { return m_runningSaves > 0; }
    const SaveState &saveState() const { return m_saveState; } ///< of the open project
    /// End of the last successful save of the open project; nullopt before the first.
    const std::optional<QDateTime> &lastSavedAt() const { return m_lastSavedAt; }
    const std::optional<ProjectStoreError> &lastError() const { return m_lastError; }
    const std::optional<QString> &statusMessage() const { return m_statusMessage; }
    const QList<ProjectSummary> &recentProjects() const {
        return m_recentProjects;
    } ///< newest first
    /// Set when a project is created, until the review screen has opened the import flow.
    bool pendingImportOnLoad() const { return m_pendingImportOnLoad; }
    const MediaConfirmation &mediaConfirmation() const { return m_mediaConfirmation; }
    /// nullopt unless an answer has been reading files for a moment.
    const std::optional<MediaProgress> &mediaProgress() const { return m_mediaProgress; }

    MediaSourceAuthorization &authorization() { return m_authorization; }

    // Opening and closing.
    /// Completes when the start-up task is done.
    QCoro::Task<> waitForStartUp();
    /// Waits for the start-up task, saves the open project or discards its edits, and replaces it
    /// by the one in `file`. If the save or the read fails, the open project stays open. Opening
    /// the open file reads it again.
    QCoro::Task<> openProject(QString file, UnsavedEdits edits = UnsavedEdits::Save);
    /// Saves the open project, writes a new one to `file` and opens it. Sets `pendingImportOnLoad`.
    QCoro::Task<> createProject(NewProject fields, QString file,
                                ProjectFolder folder = ProjectFolder::MustExist);
    /// Saves or discards the edits and closes. If the save fails, the project stays open.
    QCoro::Task<> closeProject(UnsavedEdits edits = UnsavedEdits::Save);
    QCoro::Task<> refreshRecents();

    // Saving. A failed save that can succeed later is retried.
    /// Completes when all edits are on disk or a save failed. Publishes the failure again even if
    /// the user has dismissed it.
    QCoro::Task<> flushPendingSave();
    /// Saves at once, with or without unsaved edits. No-op without an open project.
    QCoro::Task<> saveNow(ForeignChanges changes = ForeignChanges::Refuse);
    /// Writes the open project to another file, as a project of its own for which the user has to
    /// confirm the media. The open project stays open. Publishes a failure and returns false.
    QCoro::Task<bool> saveCopy(QString file);
    /// Writes a backup. Returns the failure instead of publishing it; nullopt on success or without
    /// an open project.
    QCoro::Task<std::optional<ProjectStoreError>> backUp();
    /// Writes a backup and publishes a failure as `lastError`.
    QCoro::Task<> writeBackup();

    void setStatus(const QString &text) { setStatusMessage(text); }
    void clearLastError() { setLastError({}); }
    void consumePendingImport() { setPendingImportOnLoad(false); }

    // Media confirmation.
    /// Reads `mediaConfirmation` from the registry again. Done whenever a project is opened.
    QCoro::Task<> refreshMediaConfirmationState();
    // The user's answers. Each grants the listed files, which may read them entirely, and then
    // reads `mediaConfirmation` again: files that could not be read are still listed. No-op while
    // the same answer is in progress.
    QCoro::Task<> authorizeLegacyPackageMedia();
    QCoro::Task<> confirmLegacyProjectIdMedia();
    QCoro::Task<> confirmUnresolvedMedia();
    QCoro::Task<> trustChangedContents();
    /// Stops the answers in progress. Files that were read are granted, the others stay listed.
    void cancelAnswers() { m_answerStop.request_stop(); }

  Q_SIGNALS:
    /// A project was opened, perhaps the open one again. Emitted before the other signals about it.
    void projectOpened();
    void fileURLChanged();
    void isDirtyChanged();
    void isSavingChanged();
    void saveStateChanged();
    void lastSavedAtChanged();
    void lastErrorChanged();
    void statusMessageChanged();
    void recentProjectsChanged();
    void pendingImportOnLoadChanged();
    void mediaConfirmationChanged();
    void mediaProgressChanged();

  private:
    void scheduleSave() override;

    QCoro::Task<> startUp(StartUpMigrations migrations);
    // Return nullopt and publish the failure if the file can't be read.
    QCoro::Task<std::optional<ProjectFileIO::OpenedProject>> loadProject(QString file);
    QCoro::Task<std::optional<ProjectFileIO::OpenedProject>> loadAfterSaves(QString file);
    QCoro::Task<std::optional<ProjectFileIO::OpenedProject>> loadUpToDate(QString file,
                                                                          QString key);
    QCoro::Task<ProjectFileIO::OpenedProject> writeNewProject(Project project, QString file,
                                                              ProjectFolder folder);
    QCoro::Task<QString> keyOf(QString file);
    bool isOpen(const QString &key) const { return m_fileURL && m_projectKey == key; }
    void adoptProject(ProjectFileIO::OpenedProject opened, const QString &file, const QString &key);
    void leaveProject();
    QCoro::Task<> performSave();
    void publishSave(const SaveState &state);
    void publishSaveFailure(ProjectStoreError failure, bool shouldRetry);
    QCoro::Task<> waitForRunningSave();
    /// Saves until no edit is unsaved. Returns false if a save failed.
    QCoro::Task<bool> saveEverything();
    QCoro::Task<> touchRecents();
    void setRecents(QList<ProjectSummary> summaries) {
        publish(m_recentProjects, newestFirst(std::move(summaries)),
                &ProjectStore::recentProjectsChanged);
    }

    /// Sets a field and emits its signal if the value differs.
    template <typename Value>
    void publish(Value &field, Value value, void (ProjectStore::*changed)()) {
        if (field != value) {
            field = std::move(value);
            Q_EMIT(this->*changed)();
        }
    }
    void setPendingImportOnLoad(bool isPending) {
        publish(m_pendingImportOnLoad, isPending, &ProjectStore::pendingImportOnLoadChanged);
    }
    void setDirty(bool isDirty) { publish(m_isDirty, isDirty, &ProjectStore::isDirtyChanged); }
    void setSaveState(SaveState state) {
        publish(m_saveState, std::move(state), &ProjectStore::saveStateChanged);
    }
    void setLastError(std::optional<ProjectStoreError> error) {
        publish(m_lastError, std::move(error), &ProjectStore::lastErrorChanged);
    }
    void setStatusMessage(std::optional<QString> text) {
        publish(m_statusMessage, std::move(text), &ProjectStore::statusMessageChanged);
    }
    void setMediaConfirmation(MediaConfirmation state) {
        publish(m_mediaConfirmation, std::move(state), &ProjectStore::mediaConfirmationChanged);
    }

    enum class Answer { legacyPackage, legacyProjectId, unresolved, contentMismatch };
    /// Returns the files that could not be granted.
    using Grant = std::function<QCoro::Task<QStringList>(QString projectFile, HashingControl)>;
    QCoro::Task<> runAnswer(Answer answer, Grant grant, QString status);
    QCoro::Task<QStringList> confirmPaths(QStringList paths, QString file, HashingControl control);
    QCoro::Task<QStringList> grantMediaFolder(Project project, QString file,
                                              HashingControl control);
    HashingControl answerControl();
    QCoro::Task<> confirm(Answer answer, QStringList MediaConfirmation::*list, QString status);
    QCoro::Task<bool> legacyPackageNeedsAuthorization(Project project, QString file);
    void addContentMismatch(const ContentMismatchEvent &event);

    ProjectFileIO &m_io;
    ProjectRegistry &m_registry;
    BackupService &m_backups;
    MediaSourceAuthorization &m_authorization;

    std::optional<QString> m_fileURL;
    QString m_projectKey; ///< of that file, in the registry of grants
    bool m_isDirty = false;
    int m_runningSaves = 0;
    SaveState m_saveState;
    std::optional<QDateTime> m_lastSavedAt;
    std::optional<ProjectStoreError> m_lastError;
    std::optional<QString> m_statusMessage;
    QList<ProjectSummary> m_recentProjects;
    bool m_pendingImportOnLoad = false;
    MediaConfirmation m_mediaConfirmation;
    std::set<std::pair<Answer, QString>> m_runningAnswers; ///< with the path of the project file
    std::stop_source m_answerStop;                         ///< of all answers in progress
    std::optional<MediaProgress> m_mediaProgress;
    /// For short file checks, which must not wait for a copy.
    SerialExecutor m_fileChecks{QStringLiteral("FileChecks")};

    std::shared_ptr<QCoro::Task<>> m_startUp;
    std::shared_ptr<FileBaseline> m_baseline; ///< null without an open project
    std::shared_ptr<DebounceSaver> m_saver;   ///< null if no project is open
    SaveRetry m_retry;
    /// The save that started last. Saves run in the order they started, so it also ends last.
    std::shared_ptr<QCoro::Task<>> m_lastSave;
};

} // namespace corvane

#pragma once

#include "document/BackupService.h"
#include "document/ProjectFileIO.h"
#include "document/ProjectRegistry.h"
#include "session/DebounceSaver.h"
#include "trust/MediaSourceAuthorization.h"

#include <QObject>
#include <QSet>

#include <functional>
#include <memory>
#include <optional>
#include <set>

namespace corvane {

/// A failure of the session, worded for the user: what was tried, and the error beneath it.
class ProjectStoreError : public Failure {
  public:
    enum class Kind { openFailed, saveFailed, createFailed, backupFailed };

    ProjectStoreError(Kind kind, const QString &error);

    Kind kind() const { return m_kind; }

    bool operator==(const ProjectStoreError &other) const {
        return m_kind == other.m_kind && description() == other.description();
    }

  private:
    Kind m_kind;
};

/// What a new project is made of; empty texts become absent fields.
struct NewProject {
    QString name;
    QString shootDate;
    QString clientOrSeries;
    QString location;
    QString notes;
};

/// Whether creating a project makes the folder that its file goes into.
enum class ProjectFolder { MustExist, Create };

/// A subclip and the clip that it belongs to.
struct SubclipKey {
    QString videoId;
    QString subclipId;

    bool operator==(const SubclipKey &) const = default;
};

/// The session: the one object that owns the open project and all that is known about it while it
/// is open. Front ends read its fields and call its operations; nothing else changes the document.
///
/// Main thread. Operations that give a task wait for files without blocking the thread; a task that
/// outlives the store ends quietly. Failures are told through `lastError`, never thrown.
class ProjectStore : public QObject {
    Q_OBJECT

  public:
    static constexpr qsizetype kUndoLimit = 50;

    /// What brings an older registry of grants along, given the recent list; run once at start-up.
    /// Returns when a project may be opened. Must not throw.
    using StartUpMigrations = std::function<QCoro::Task<>(QList<ProjectSummary>)>;

    /// The objects handed in must outlive the store. Starts the start-up task: the sinks for
    /// content mismatches and for grants that can't be written, the recent list, then the
    /// migrations if there are any.
    ProjectStore(ProjectFileIO &io, ProjectRegistry &registry, BackupService &backups,
                 MediaSourceAuthorization &authorization, Clock &clock = Clock::system(),
                 StartUpMigrations migrations = {}, QObject *parent = nullptr);
    ~ProjectStore() override;

    // Published fields. Each has a signal that is raised when the value differs.
    const std::optional<Project> &project() const { return m_project; }
    const std::optional<QString> &fileURL() const { return m_fileURL; }
    bool isDirty() const { return m_isDirty; }
    bool isSaving() const { return m_runningSaves > 0; }
    const std::optional<QDateTime> &lastSavedAt() const { return m_lastSavedAt; }
    const std::optional<ProjectStoreError> &lastError() const { return m_lastError; }
    const std::optional<QString> &statusMessage() const { return m_statusMessage; }
    const QList<ProjectSummary> &recentProjects() const { return m_recentProjects; }
    bool pendingImportOnLoad() const { return m_pendingImportOnLoad; }

    /// What the registry can't vouch for; the lists are sorted, and a flag is true exactly when its
    /// list isn't empty. All empty while no project is open.
    struct MediaConfirmation {
        bool legacyPackageMediaNeedsAuthorization = false;
        bool contentMismatchNeedsConfirmation = false;
        QStringList contentMismatchPendingPaths;
        bool legacyProjectIdMediaNeedsConfirmation = false;
        QStringList legacyProjectIdMediaPendingPaths;
        bool unresolvedMediaNeedsConfirmation = false;
        QStringList unresolvedMediaPendingPaths;

        /// Sets the flags of the three lists by them.
        void raiseFlags();
        bool operator==(const MediaConfirmation &) const = default;
    };
    const MediaConfirmation &mediaConfirmation() const { return m_mediaConfirmation; }

    /// The clip as it is now, or null. Quick within a batch, which keeps a table.
    const VideoRecord *video(const QString &id) const;

    MediaSourceAuthorization &authorization() { return m_authorization; }
    Clock &clock() { return m_clock; }

    // The session.
    /// Returns when the start-up task is done. Opening a project waits for it too.
    QCoro::Task<> waitForStartUp();
    /// Opens a project in the place of any open one, whose pending edits are saved first. Where the
    /// new one can't be read, or the old one can't be saved, the old one stays open.
    QCoro::Task<> openProject(QString file);
    /// Creates the file, with its folder and what is missing above that if it is asked to, and
    /// opens it; the import flow is due next.
    QCoro::Task<> createProject(NewProject fields, QString file,
                                ProjectFolder folder = ProjectFolder::MustExist);
    /// Saves what is unsaved and closes. Where that save fails, the project stays open.
    QCoro::Task<> closeProject();
    /// Returns when nothing unsaved remains in memory, or a save failed.
    QCoro::Task<> flushPendingSave();
    QCoro::Task<> saveNow();
    /// Makes a backup and gives its failure to the caller alone, who tells it in his own place;
    /// nothing where it was made, or no project is open.
    QCoro::Task<std::optional<ProjectStoreError>> backUp();
    /// The same for whoever looks at `lastError`.
    QCoro::Task<> writeBackup();
    QCoro::Task<> refreshRecents();
    void setStatus(const QString &text);
    void clearLastError();
    /// The review screen has seen that the import flow is due.
    void consumePendingImport();

    // Changing the document as a whole, for the flows.
    /// Publishes the document as it is given, marks it dirty and schedules a save. It takes no
    /// snapshot and sets no date. A document of another project than the open one changes nothing.
    void updateProject(Project project);
    /// Changes one clip as it is now, with no undo step; whatever else was edited stays.
    void updateVideo(const QString &videoId, const std::function<void(VideoRecord &)> &change);
    void pushUndoState();

    // Media confirmation.
    /// Reads anew what the registry can't vouch for. Opening a project does.
    QCoro::Task<> refreshMediaConfirmationState();
    // The user's answers. Each has no effect without an open project, returns when the files are
    // hashed, and takes back what it answered, whether the registry could grant it or not: what it
    // couldn't is there again at the next reading. An answer given again while it is at work is
    // passed over. They write the registry alone.
    /// Grants the clips in the project's media folder.
    QCoro::Task<> authorizeLegacyPackageMedia();
    QCoro::Task<> confirmLegacyProjectIdMedia();
    QCoro::Task<> confirmUnresolvedMedia();
    QCoro::Task<> trustChangedContents();

    // Review edits. Ids that aren't found change nothing.
    void setRating(const QString &videoId, int rating);
    void toggleFavorite(const QString &videoId);
    void toggleSelectedForExport(const QString &videoId);
    void toggleRejected(const QString &videoId);
    void toggleReviewed(const QString &videoId);
    void setNotes(const QString &videoId, const QString &text);
    void addTag(const QString &videoId, const QString &text);
    void removeTag(const QString &videoId, const QString &text);
    int selectClips(const QStringList &videoIds);
    int deselectClips(const QStringList &videoIds);
    /// Gives the new subclip's id, or an empty text where nothing was added.
    QString addSubclip(const QString &videoId, double inSeconds, double outSeconds);
    void renameSubclip(const SubclipKey &key, const std::optional<QString> &text);
    void setSubclipRating(const SubclipKey &key, int rating);
    void toggleSubclipFavorite(const SubclipKey &key);
    void toggleSubclipSelected(const SubclipKey &key);
    int selectSubclips(const QList<SubclipKey> &keys);
    int deselectSubclips(const QList<SubclipKey> &keys);
    void deleteSubclip(const SubclipKey &key);
    void deleteSubclips(const QList<SubclipKey> &keys);

    // History.
    void undo();
    void redo();
    bool canUndo() const { return !m_undoStack.isEmpty(); }
    bool canRedo() const { return !m_redoStack.isEmpty(); }
    /// While it lives, the operations that run are one undo step: the snapshot taken when it was
    /// made. `projectChanged` is raised once, when the outermost ends. Batches may nest, and none
    /// lives across a wait.
    class UndoBatch {
      public:
        explicit UndoBatch(ProjectStore &store);
        ~UndoBatch();
        Q_DISABLE_COPY_MOVE(UndoBatch)

      private:
        ProjectStore &m_store;
        bool m_before;
    };

  Q_SIGNALS:
    void projectChanged();
    void fileURLChanged();
    void isDirtyChanged();
    void isSavingChanged();
    void lastSavedAtChanged();
    void lastErrorChanged();
    void statusMessageChanged();
    void recentProjectsChanged();
    void pendingImportOnLoadChanged();
    void mediaConfirmationChanged();

  private:
    enum class Undoable { Yes, No };

    QCoro::Task<> startUp(StartUpMigrations migrations);
    QCoro::Task<std::optional<Project>> loadProject(QString file);
    QCoro::Task<> writeNewProject(Project project, QString file, ProjectFolder folder);
    bool isOpen(const QString &file) const;
    QCoro::Task<> performSave();
    /// Saves until memory and file agree; false where a save failed.
    QCoro::Task<bool> saveEverything();
    QCoro::Task<> touchRecents();
    QCoro::Task<bool> legacyPackageNeedsAuthorization(Project project, QString file);
    enum class Answer { legacyPackage, legacyProjectId, unresolved, contentMismatch };
    QCoro::Task<> confirm(Answer answer, QStringList MediaConfirmation::*list, QString status);
    /// The status after an answer: its own, or that the registry couldn't be written.
    void setAnsweredStatus(const QString &text);
    void adoptProject(Project project, const QString &file);
    void leaveProject();
    void setPendingImportOnLoad(bool pending);
    void setDirty(bool dirty);
    void setLastError(std::optional<ProjectStoreError> error);
    void setStatusMessage(std::optional<QString> text);
    void setMediaConfirmation(MediaConfirmation state);
    void noteContentMismatch(const ContentMismatchEvent &event);

    /// The frame of every edit: snapshot, change on a copy, date, publish, mark dirty, schedule.
    using ProjectChange = std::function<void(Project &)>;
    using VideoChange = std::function<void(VideoRecord &)>;
    using SubclipChange = std::function<void(VideoRecord &, Subclip &)>;
    void edit(Undoable undoable, const ProjectChange &change);
    void editVideo(Undoable undoable, const QString &id, const VideoChange &change);
    void editSubclip(Undoable undoable, const SubclipKey &key, const SubclipChange &change);
    int editSubclips(const QList<SubclipKey> &keys, bool select);
    int editSelection(const QStringList &videoIds, bool select);
    void autoReview(VideoRecord &video) const;
    void publishEdit();
    qsizetype indexOfVideo(const QString &id) const;
    void replay(QList<Project> &from, QList<Project> &to);

    ProjectFileIO &m_io;
    ProjectRegistry &m_registry;
    BackupService &m_backups;
    MediaSourceAuthorization &m_authorization;
    Clock &m_clock;

    std::optional<Project> m_project;
    std::optional<QString> m_fileURL;
    bool m_isDirty = false;
    int m_runningSaves = 0;
    std::optional<QDateTime> m_lastSavedAt;
    std::optional<ProjectStoreError> m_lastError;
    std::optional<QString> m_statusMessage;
    QList<ProjectSummary> m_recentProjects;
    bool m_pendingImportOnLoad = false;
    MediaConfirmation m_mediaConfirmation;
    std::set<std::pair<Answer, QString>> m_answersAtWork; ///< each for a project file
    /// Looks at many files for the media checks, and so waits for no copy.
    SerialExecutor m_mediaChecks{QStringLiteral("MediaChecks"),
                                 SerialExecutor::Priority::UserInitiated};

    std::shared_ptr<QCoro::Task<>> m_startUp;
    std::shared_ptr<DebounceSaver> m_saver; ///< while a project is open
    /// The save begun last. Saves run in the order in which they began, so it also ends last.
    std::shared_ptr<QCoro::Task<>> m_lastSave;
    /// Counts edits, so that a save knows whether what it wrote still is what is in memory.
    quint64 m_revision = 0;
    bool m_nextSaveAllowsDecrease = false;
    QList<Project> m_undoStack; ///< newest last
    QList<Project> m_redoStack;
    bool m_inUndoBatch = false;
    /// Of a batch: whether it changed anything yet, and where each clip stands, once it was asked.
    bool m_batchChangedProject = false;
    mutable QHash<QString, qsizetype> m_batchIndexes;
    bool m_isReplayingHistory = false;
};

} // namespace corvane

#pragma once

#include "document/ProjectFileIO.h"
#include "document/ProjectRegistry.h"
#include "trust/HashingProgress.h"
#include "trust/PathSafety.h"

#include <QHash>
#include <QSet>
#include <QSettings>
#include <QString>
#include <QStringList>

#include <functional>
#include <memory>

namespace corvane {

struct AuthorizationTables;
struct LegacyMigrationCandidate;
struct LegacyMigrationOutcome;

/// The grant of a project's media folder. The fields identify the folder itself.
struct MediaRootRecord : FolderIdentity {
    QString path; ///< standardized

    bool operator==(const MediaRootRecord &) const = default;
};

/// Reports files of a project that lost their grant because their contents changed.
struct ContentMismatchEvent {
    QString projectKey;
    QSet<QString> paths;
};

/// What the registry stores for one project.
struct ProjectGrants {
    QString projectKey;
    int grantedCount = 0; ///< files
    int pendingCount = 0; ///< files that need the user's confirmation
    bool hasMediaFolder = false;

    bool operator==(const ProjectGrants &) const = default;
};

/// A snapshot of the paths of a project that need the user's confirmation.
struct PendingMedia {
    QSet<QString> unresolved;      ///< listed without an identity; a subset of `pendingLegacy`
    QSet<QString> pendingLegacy;   ///< all pending paths
    QSet<QString> contentMismatch; ///< ever reported as changed, still pending or not
};

/// The registry of grants: which files each project may read on this computer. It is stored outside
/// the projects, so that a project file from elsewhere cannot grant itself access.
///
/// A grant records the identity of the file's parent folder and an anchor of the file's contents
/// (`RootIdentity`). A project is identified by its key: the path of the project file, standardized
/// and with symbolic links resolved. A project file that is moved therefore has no grants.
///
/// The registry is the file "media-authorizations.json" in the data folder, and is rewritten after
/// every change. If it can't be read, no file is granted, and the first change renames it before a
/// new one is written. If it can't be written, changes last until the process ends. `notices`
/// reports both, and a file that is nearly full.
///
/// Call and await every operation on the main thread. No operation throws. The tables are accessed
/// only on the object's own executor; files are hashed on the utility executor, so that hashing
/// delays no other operation.
class MediaSourceAuthorization {
  public:
    static constexpr qint64 kFileLimit = qint64(8) << 20; ///< bytes of the registry file
    static constexpr qint64 kNearlyFull =
        kFileLimit * 4 / 5 + 1; ///< bytes from which it is reported

    /// Opens the registry in `dataFolder`, which is created if missing. `userDefaults` stores which
    /// migrations are done; nullptr selects the application's own settings.
    explicit MediaSourceAuthorization(const QString &dataFolder,
                                      std::unique_ptr<QSettings> userDefaults = {});
    ~MediaSourceAuthorization();
    Q_DISABLE_COPY_MOVE(MediaSourceAuthorization)

    static QString projectKey(const QString &projectFile);

    // Grants.
    /// Grants the files with their current folders and contents. A file that can't be hashed keeps
    /// its earlier anchor; without one it is listed without an identity and becomes pending. If its
    /// folder can't be read, an earlier grant stays as it is. `knownAnchors` maps standardized
    /// paths to anchors that the caller has just computed; these files are not read again. Returns
    /// the standardized paths that were granted with an anchor of their present contents.
    ///
    /// Each file is granted as soon as it is hashed. If `control.stop` is requested, the files that
    /// were hashed are granted, and new ones that were not become pending.
    QCoro::Task<QSet<QString>> authorize(QStringList paths, QString projectFile,
                                         QHash<QString, QString> knownAnchors = {},
                                         HashingControl control = {});
    /// Grants the media folder. No-op if it is not a folder, or is a symbolic link.
    QCoro::Task<void> authorizeMediaRoot(QString mediaFolder, QString projectFile);
    /// Grants the project's clips that are located in its media folder.
    QCoro::Task<void> authorizeMediaFolderClips(Project project, QString projectFile,
                                                HashingControl control = {});

    // Queries.
    /// Returns whether the media folder was granted and is still the same folder.
    QCoro::Task<bool> isMediaRootAuthorized(QString mediaFolder, QString projectFile);
    QCoro::Task<AuthorizedPaths> authorizedPaths(QString projectFile);
    /// Returns a snapshot of all grants of the project. `preverifiedAnchors` is empty.
    QCoro::Task<PathSafety::SourceGrants> sourceGrants(QString projectFile);
    /// Returns every project with entries, sorted by key.
    QCoro::Task<QList<ProjectGrants>> projects();
    /// Removes all entries of a project, named by its file or its key. Returns false if it has
    /// none.
    QCoro::Task<bool> forget(QString projectFile);

    // Pending paths, which need the user's confirmation.
    QCoro::Task<QSet<QString>> pendingLegacyPaths(QString projectFile);
    QCoro::Task<QSet<QString>> contentMismatchPaths(QString projectFile);
    /// Returns the paths listed without an identity, and makes them pending.
    QCoro::Task<QSet<QString>> unresolvedPaths(QString projectFile);
    /// Returns the three sets as of one moment. Makes unresolved paths pending.
    QCoro::Task<PendingMedia> pendingMedia(QString projectFile);
    /// Grants those of the paths that are pending and returns the granted ones. Files that can't be
    /// hashed now stay pending, even if they have an earlier anchor.
    QCoro::Task<QSet<QString>> confirmPendingPaths(QStringList paths, QString projectFile,
                                                   HashingControl control = {});
    /// Makes refused paths pending without granting them: `neverGranted` as unresolved, `changed`
    /// as changed since their grant. Existing grants stay.
    QCoro::Task<void> markPending(QStringList neverGranted, QStringList changed,
                                  QString projectFile);

    // One-time migrations of older registries, see AuthorizationMigrations.h. A migration that was
    // completed is skipped from then on.
    /// Turns grants recorded under a project id into pending paths of the only recent project with
    /// that id. Drops them if no or several recent projects have it.
    QCoro::Task<void> rekeyLegacyProjectIdEntries(QList<ProjectSummary> summaries);
    /// Grants every clip of every readable recent project.
    QCoro::Task<void> grandfatherLegacyProjects(QList<ProjectSummary> summaries, ProjectFileIO &io);
    /// Verifies older anchors and replaces them by full ones. Reads every file with an older anchor
    /// entirely, at utility priority.
    QCoro::Task<void> grandfatherContentHashes();

    // Reports. Callbacks run on the main thread; an empty one disconnects.
    /// Message that the latest change could not be written; nullopt if the file is up to date.
    const std::optional<QString> &unsavedNotice() const { return m_listeners->unsavedNotice; }
    /// Messages about the registry file that still apply: unreadable, not written, nearly full.
    QStringList notices() const;
    /// Size of the registry file after the last read or write.
    qint64 fileBytes() const { return m_listeners->fileBytes; }
    const QString &filePath() const { return m_filePath; }
    void setContentMismatchContinuation(std::function<void(ContentMismatchEvent)> sink);
    /// `sink` receives each new notice before the operation that caused it completes.
    void setNoticeContinuation(std::function<void(QString)> sink);

  private:
    /// A file to be granted.
    struct Candidate {
        QString path;                         ///< standardized
        std::optional<RootIdentity> identity; ///< of its folder; nullopt if unreadable
        std::optional<QString> anchor;        ///< nullopt until the file is hashed
        bool isNew = false;                   ///< neither listed nor pending before
        qint64 bytes = 0;                     ///< size of a file that is to be hashed
    };
    struct GrantRequest;
    /// Main thread. Shared with queued reports, which must not access a destroyed registry.
    struct Listeners {
        std::function<void(ContentMismatchEvent)> contentMismatch;
        std::function<void(QString)> notice;
        std::optional<QString> unreadableNotice;
        std::optional<QString> unsavedNotice;
        std::optional<QString> sizeNotice;
        qint64 fileBytes = 0;
    };
    using Notice = std::optional<QString> Listeners::*;
    /// The result of applying the outcomes of one project.
    struct MigrationStep {
        QSet<QString> mismatched;
        bool isComplete = true; ///< false if a file must be tried again at the next start
    };

    // On the executor.
    bool isRootAuthorized(const QString &key, const QString &mediaFolder) const;
    void load(const QString &dataFolder);
    void persist();
    void persistIfDirty();
    void setUnreadableFileAside();
    bool eraseProject(const QString &key);
    void report(Notice notice, const std::optional<QString> &text);
    void reportSize(qint64 bytes);
    void beginGrants(GrantRequest &request, const QStringList &paths,
                     const QHash<QString, QString> &knownAnchors);
    void listCandidate(const QString &key, Candidate &candidate);
    void storeGrant(GrantRequest &request, const Candidate &candidate);
    void finishGrants(GrantRequest &request);
    QSet<QString> listUnresolved(const QString &key);
    QStringList pendingAmong(const QString &key, const QStringList &paths) const;
    QSet<QString> finishConfirmation(const QString &key, const QStringList &paths,
                                     const QSet<QString> &hashed);
    void addPending(const QString &key, const QSet<QString> &paths);
    void removePending(const QString &key, const QSet<QString> &paths);
    void rekey(const QList<ProjectSummary> &summaries);
    QHash<QString, QList<LegacyMigrationCandidate>> legacyCandidates() const;
    MigrationStep apply(const QString &key, const QList<LegacyMigrationOutcome> &outcomes);

    // On the main thread.
    QSettings &userDefaults();
    bool isMigrated(const QString &guard);
    void setMigrated(const QString &guard);

    QString m_filePath;
    std::unique_ptr<QSettings> m_userDefaults;     ///< main thread; created on first use
    std::unique_ptr<AuthorizationTables> m_tables; ///< executor
    bool m_isDirty = false;                        ///< executor; hashed files are not written yet
    std::optional<QString> m_readFault; ///< executor; why the file, which is still there, is unread
    std::shared_ptr<Listeners> m_listeners;
    SerialExecutor m_executor;
};

} // namespace corvane

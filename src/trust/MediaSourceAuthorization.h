#pragma once

#include "document/ProjectFileIO.h"
#include "document/ProjectRegistry.h"
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

/// The grant of a project's whole media folder. All but the path describe the folder itself.
struct MediaRootRecord {
    QString path; ///< standardized
    int device = 0;
    quint64 inode = 0;
    std::optional<QString> volumeUUID;

    bool operator==(const MediaRootRecord &) const = default;
};

/// Files of a project lost their grant because their contents changed.
struct ContentMismatchEvent {
    QString projectKey;
    QSet<QString> paths;
};

/// What of a project waits for the user's word, all of one moment.
struct PendingMedia {
    QSet<QString> unresolved;      ///< paths without identity; all of them are pending too
    QSet<QString> pendingLegacy;   ///< all that is pending
    QSet<QString> contentMismatch; ///< what once was told to have changed, pending or not any more
};

/// The memory of which files each project may read. It lives outside every project, so that a
/// project file handed around can't grant itself anything.
///
/// A project is known by its key: the project file's path with links resolved, then standardized.
/// The registry is the file "media-authorizations.json" in the application's data folder, written
/// whole at each change. No operation throws: what can't be read becomes an entry without identity
/// or a pending path, and a registry that can't be read authorizes nothing.
///
/// Every operation is called and awaited on the main thread; the tables are touched on the object's
/// own executor alone. Hashing happens off it, so that a long read doesn't hold up the others.
class MediaSourceAuthorization {
  public:
    static constexpr qint64 kFileLimit = qint64(8) << 20;

    /// Keeps the registry in `dataFolder`, which is created if it is missing. The guards of the
    /// migrations are kept in `userDefaults`, or in the application's own if it is null.
    explicit MediaSourceAuthorization(const QString &dataFolder,
                                      std::unique_ptr<QSettings> userDefaults = {});
    ~MediaSourceAuthorization();
    Q_DISABLE_COPY_MOVE(MediaSourceAuthorization)

    static QString projectKey(const QString &projectFile);

    /// Grants the files as they now are: the identity of each one's folder and a full anchor of its
    /// content. Where the caller hashed a file's bytes while writing them, `knownAnchors` has the
    /// anchor by its standardized path, and the file isn't read again.
    QCoro::Task<void> authorize(QStringList paths, QString projectFile,
                                QHash<QString, QString> knownAnchors = {});
    QCoro::Task<void> authorizeMediaRoot(QString mediaFolder, QString projectFile);
    QCoro::Task<bool> isMediaRootAuthorized(QString mediaFolder, QString projectFile);
    QCoro::Task<AuthorizedPaths> authorizedPaths(QString projectFile);
    /// A snapshot of the project's grants, without preverified anchors.
    QCoro::Task<PathSafety::SourceGrants> sourceGrants(QString projectFile);
    QCoro::Task<QSet<QString>> pendingLegacyPaths(QString projectFile);
    QCoro::Task<QSet<QString>> contentMismatchPaths(QString projectFile);
    /// The paths without identity; they are made pending if they aren't yet.
    QCoro::Task<QSet<QString>> unresolvedPaths(QString projectFile);
    /// The three sets as one piece of work on the executor, so that no change comes between them.
    /// Like `unresolvedPaths` it makes the paths without identity pending.
    QCoro::Task<PendingMedia> pendingMedia(QString projectFile);
    /// Grants anew those of the paths that are pending; they stay pending until they are granted,
    /// and what can't be hashed goes on being so.
    QCoro::Task<void> confirmPendingPaths(QStringList paths, QString projectFile);
    /// Makes pending what the user offered anew and is refused as it stands: paths that were never
    /// granted, as unresolved, and paths whose folder or contents changed since, as mismatched.
    /// Nothing is granted, and no grant is taken away.
    QCoro::Task<void> markPending(QStringList neverGranted, QStringList changed,
                                  QString projectFile);
    /// Grants the project's clips that lie in its media folder.
    QCoro::Task<void> authorizeMediaFolderClips(Project project, QString projectFile);

    // Migrations, see AuthorizationMigrations.h. Each has a guard in the user defaults: once it is
    // done it is never run again.
    /// Takes what older versions recorded under a project's id as pending for the one recent
    /// project that has this id, and drops what belongs to none or to several.
    QCoro::Task<void> rekeyLegacyProjectIdEntries(QList<ProjectSummary> summaries);
    /// Grants every clip of every recent project that can be read, as it now is.
    QCoro::Task<void> grandfatherLegacyProjects(QList<ProjectSummary> summaries, ProjectFileIO &io);
    /// Replaces the older anchors by full ones where they still prove the file. Reads each file
    /// that has one whole, at utility priority.
    QCoro::Task<void> grandfatherContentHashes();

    /// What the user must know after a change that couldn't be written: it lasts as long as the
    /// process, or until a later change is written. Nothing while the file is up to date.
    const std::optional<QString> &unsavedNotice() const { return m_listeners->unsavedNotice; }

    /// The one receiver of mismatch events, called on the main thread. Empty takes it away.
    void setContentMismatchContinuation(std::function<void(ContentMismatchEvent)> sink);
    /// The one receiver of notices about changes that couldn't be written, called on the main
    /// thread at each of them, before the operation that made it returns. Empty takes it away.
    void setUnsavedNoticeContinuation(std::function<void(QString)> sink);

  private:
    /// A file that is to be granted, and what could be learned of it.
    struct Candidate {
        QString path;                         ///< standardized
        std::optional<RootIdentity> identity; ///< of its folder; nothing where that can't be read
        std::optional<QString> anchor;        ///< nothing where the file can't be hashed
        bool isNew = false;                   ///< nothing was known of the path before
    };

    /// The main thread's. Shared, so that word from the executor finds it gone with the object.
    struct Listeners {
        std::function<void(ContentMismatchEvent)> contentMismatch;
        std::function<void(QString)> unsaved;
        std::optional<QString> unsavedNotice;
    };
    /// What applying one project's outcomes came to.
    struct MigrationStep {
        QSet<QString> mismatched;
        bool isComplete = true; ///< nothing must be tried again
    };

    bool isRootAuthorized(const QString &key, const QString &mediaFolder) const;
    void persist();
    void listUnproved(const QString &key, QList<Candidate> &candidates);
    void storeGrants(const QString &key, const QList<Candidate> &candidates);
    QSet<QString> listUnresolved(const QString &key);
    QStringList pendingAmong(const QString &key, const QStringList &paths) const;
    void settleConfirmed(const QString &key, const QStringList &paths);
    void addPending(const QString &key, const QSet<QString> &paths);
    void removePending(const QString &key, const QSet<QString> &paths);

    QSettings &userDefaults();
    bool isMigrated(const QString &guard);
    void setMigrated(const QString &guard);
    void rekey(const QList<ProjectSummary> &summaries);
    QHash<QString, QList<LegacyMigrationCandidate>> legacyCandidates() const;
    MigrationStep apply(const QString &key, const QList<LegacyMigrationOutcome> &outcomes);

    QString m_filePath;
    std::unique_ptr<QSettings> m_userDefaults;     ///< the main thread's, made at first use
    std::unique_ptr<AuthorizationTables> m_tables; ///< the executor's
    bool m_wasWritten = true;                      ///< the executor's: how the last writing went
    std::shared_ptr<Listeners> m_listeners;
    SerialExecutor m_executor;
};

} // namespace corvane

#pragma once

#include "document/Project.h"
#include "platform/SerialExecutor.h"
#include "trust/RootIdentity.h"

#include <QHash>
#include <QSet>
#include <QString>
#include <QStringList>

#include <atomic>
#include <functional>
#include <memory>

namespace corvane {

struct AuthorizationTables;

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

    /// The one instance of the process, over the application's data folder, made at first use.
    static MediaSourceAuthorization &shared();
    /// An instance of its own over another folder, which is created if it is missing.
    explicit MediaSourceAuthorization(const QString &dataFolder);
    ~MediaSourceAuthorization();
    Q_DISABLE_COPY_MOVE(MediaSourceAuthorization)

    static QString projectKey(const QString &projectFile);

    /// Grants the files as they now are: the identity of each one's folder and a full anchor of its
    /// content.
    QCoro::Task<void> authorize(QStringList paths, QString projectFile);
    QCoro::Task<void> authorizeMediaRoot(QString mediaFolder, QString projectFile);
    QCoro::Task<bool> isMediaRootAuthorized(QString mediaFolder, QString projectFile);
    QCoro::Task<AuthorizedPaths> authorizedPaths(QString projectFile);
    QCoro::Task<QSet<QString>> pendingLegacyPaths(QString projectFile);
    QCoro::Task<QSet<QString>> contentMismatchPaths(QString projectFile);
    /// The paths without identity; they are made pending if they aren't yet.
    QCoro::Task<QSet<QString>> unresolvedPaths(QString projectFile);
    /// Grants anew those of the paths that are pending. What still can't be hashed stays pending.
    QCoro::Task<void> confirmPendingPaths(QStringList paths, QString projectFile);
    /// Grants the project's clips that lie in its media folder.
    QCoro::Task<void> authorizeMediaFolderClips(Project project, QString projectFile);

    /// False after a change that couldn't be written: it lasts as long as the process, or until a
    /// later change is written. Any thread.
    bool isOnDisk() const { return m_isOnDisk; }

    /// The one receiver of mismatch events, called on the main thread. Empty takes it away.
    void setContentMismatchContinuation(std::function<void(ContentMismatchEvent)> sink);

  private:
    /// A file that is to be granted, and what could be learned of it.
    struct Candidate {
        QString path;                         ///< standardized
        std::optional<RootIdentity> identity; ///< of its folder; nothing where that can't be read
        std::optional<QString> anchor;        ///< nothing where the file can't be hashed
        bool isNew = false;                   ///< nothing was known of the path before
    };

    void persist() const;
    void listUnproved(const QString &key, QList<Candidate> &candidates);
    void storeGrants(const QString &key, const QList<Candidate> &candidates);
    QStringList takePending(const QString &key, const QStringList &paths);
    void restoreUnconfirmed(const QString &key, const QStringList &paths);

    QString m_fileURL;
    mutable std::atomic<bool> m_isOnDisk = true;
    std::unique_ptr<AuthorizationTables> m_tables;                           ///< the executor's
    std::function<void(ContentMismatchEvent)> m_contentMismatchContinuation; ///< the main thread's
    SerialExecutor m_executor;
};

} // namespace corvane

#pragma once

#include "cli/Command.h"
#include "platform/InstanceLock.h"
#include "session/ProjectStore.h"
#include "trust/AuthorizationMigrations.h"

namespace corvane {

/// The session of one command: the lock on the user's data, the store and all that it stands on.
/// Operations run the event loop until they are done, and throw what the store tells as its last
/// error. Main thread.
class CliSession {
  public:
    /// Throws `AlreadyRunning` where another process has the data. Returns when an older registry
    /// of grants was brought along.
    ///
    /// Replacing the older anchors reads every file that has one whole, and is only worth beginning
    /// where it may end: a run that is over, or broken off, before that has read in vain, and the
    /// next one begins again. So a command that is about something else leaves it out, and the one
    /// that is about these grants waits for it.
    explicit CliSession(const Console &console,
                        ContentHashMigration hashes = ContentHashMigration::Skipped);

    ProjectStore &store() { return m_store; }
    /// The open project.
    const Project &project() const { return *m_store.project(); }

    void create(const NewProject &fields, const QString &file);
    void open(const QString &file);
    /// Returns when every edit is in the file.
    void save();

    /// The ids of the clips that the texts name, each by its id or by a file name that no other
    /// clip has, each clip once. Throws before anything is changed where one names none or several.
    QStringList resolveClips(const QStringList &texts) const;

  private:
    void throwLastError() const;
    QString resolveClip(const QString &text) const;

    InstanceLock m_lock;
    ProjectFileIO m_io;
    ProjectRegistry m_registry;
    BackupService m_backups;
    MediaSourceAuthorization m_authorization;
    ProjectStore m_store;
};

} // namespace corvane

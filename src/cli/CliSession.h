#pragma once

#include "cli/Command.h"
#include "platform/InstanceLock.h"
#include "session/ProjectStore.h"
#include "trust/AuthorizationMigrations.h"

namespace corvane {

/// The session of one command: the lock on the data folder, the store and the services below it.
/// Operations run the event loop until they are finished, and throw the store's last error. Main
/// thread only.
///
/// The error stream gets a warning if the project's file is almost too large, and if another
/// machine has the project open.
class CliSession {
  public:
    /// Locks the data folder and migrates an older registry of grants. Throws `AlreadyRunning` if
    /// another process holds the lock.
    ///
    /// The hash migration reads entire files and starts over if it is interrupted. Only commands
    /// about grants should run it.
    explicit CliSession(Console &console,
                        ContentHashMigration hashes = ContentHashMigration::Skipped);
    /// Also opens the project that the first argument names.
    explicit CliSession(const CommandCall &call,
                        ContentHashMigration hashes = ContentHashMigration::Skipped);

    ProjectStore &store() { return m_store; }
    /// The open project.
    const Project &project() const { return *m_store.project(); }

    void create(const NewProject &fields, const QString &file);
    /// Writes all edits to the file.
    void save();
    /// Prints what is to be said about the registry of grants. Returns false if changes to it could
    /// not be written.
    bool printNotices(const CommandCall &call) const;

    /// Returns the ids of the clips, named by id or by unique file name, without duplicates. Throws
    /// if a text matches no clip or several.
    QStringList resolveClips(const QStringList &texts) const;

  private:
    void throwLastError() const;
    void warn(const QString &sentence);
    void warnIfNearlyFull();

    Console &m_console;
    InstanceLock m_lock;
    ProjectFileIO m_io;
    ProjectRegistry m_registry;
    BackupService m_backups;
    MediaSourceAuthorization m_authorization;
    ProjectStore m_store;
    bool m_hasWarnedOfSize = false;
};

} // namespace corvane

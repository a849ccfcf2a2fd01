#pragma once

#include "platform/FileSystem.h"

namespace corvane {

/// When a written file reaches the disk.
enum class Durability {
    Synced, ///< its data before it gets its final name, the name before `commit` returns
    Later,  ///< when the caller syncs the volume; for many small files that belong together
};

/// Writes a file under a temporary name in the folder of its target. The destructor removes it
/// unless `commit` renamed it. Not thread-safe.
///
/// The steps are separate functions that throw `FileError`, so that a caller can report the failure
/// of each step in its own words.
class TemporaryFile {
  public:
    /// Creates the empty file at `path`, which must be in the target's folder and not exist.
    explicit TemporaryFile(QString path, quint32 permissions = 0666,
                           Durability durability = Durability::Synced);
    ~TemporaryFile();
    Q_DISABLE_COPY_MOVE(TemporaryFile)

    const QString &path() const noexcept { return m_path; }
    const Descriptor &descriptor() const noexcept { return m_file; }

    void write(const char *bytes, qint64 count);
    /// Syncs the data unless `Durability::Later`, and closes the file. Returns its status, whose
    /// identity (device, inode, modification time) it keeps under its final name.
    FileStatus finish();
    /// Renames the finished file to the target's name and syncs the folder unless
    /// `Durability::Later`. Replaces a regular file atomically; fails with `EEXIST` if the target
    /// is anything else or is created by another process during the call.
    void commit(const QString &target);

  private:
    QString m_path;
    Durability m_durability;
    Descriptor m_file;
    qint64 m_written = 0;
    qint64 m_handedToDisk = 0;
    bool m_isCommitted = false;
};

/// Replaces the file at `path` by `bytes` atomically, or leaves it unchanged and throws
/// `FileError`. Readers see the old content or the new, never a mixture. A symbolic link stays, and
/// its target is replaced; a dangling link fails with `ENOENT`. The permissions of a replaced file
/// are kept if the file system supports that. Returns the status of the new file.
///
/// If only the final sync of the folder fails, this throws although the new file has its name: it
/// may not survive a loss of power.
FileStatus writeAtomically(const QString &path, const QByteArray &bytes);

} // namespace corvane

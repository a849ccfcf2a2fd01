#pragma once

#include "platform/FileSystem.h"

namespace corvane {

/// When a written file reaches the disk.
enum class Durability {
    Synced, ///< before it gets its name, and the name before `commit` returns
    Later,  ///< whenever the caller syncs the volume; for many small files that stand or fall
            ///< together
};

/// A file in the making under a hidden name beside its target. It is removed on every way out but
/// `commit`. Used by one thread.
///
/// Each step throws `FileError`, so that a caller can word each one's failure differently.
class TemporaryFile {
  public:
    /// Creates the empty file. `path` must be in the target's folder and not exist.
    explicit TemporaryFile(QString path, quint32 permissions = 0666,
                           Durability durability = Durability::Synced);
    ~TemporaryFile();
    Q_DISABLE_COPY_MOVE(TemporaryFile)

    const QString &path() const noexcept { return m_path; }
    const Descriptor &descriptor() const noexcept { return m_file; }

    void write(const char *bytes, qint64 count);
    /// Data to the disk, unless that is for later, then the descriptor closed. Gives the finished
    /// file's identity, which it keeps under its final name.
    FileStatus finish();
    /// Moves the finished file to the target's name. Nothing there: the name must still be free
    /// when the move happens. A regular file there: it is replaced in one step; anything else
    /// fails with `EEXIST`. The folder is synced.
    void commit(const QString &target);

  private:
    QString m_path;
    Durability m_durability;
    Descriptor m_file;
    qint64 m_written = 0;
    qint64 m_handedToDisk = 0;
    bool m_isCommitted = false;
};

/// Replaces the file at `path` by `bytes` in one step, or leaves it as it was and throws
/// `FileError`. A reader sees the old file or the new one, never a part. A symbolic link stays and
/// its target is replaced; one that leads nowhere fails with `ENOENT`. A replaced file's
/// permissions are kept where the file system lets them be set. Gives the new file's identity.
///
/// Where only the folder's sync at the end fails, the new file is in place and may not survive a
/// loss of power; that is thrown all the same.
FileStatus writeAtomically(const QString &path, const QByteArray &bytes);

} // namespace corvane

#pragma once

#include "platform/OpenFolder.h"

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
    /// Creates the empty file in the target's folder, which must not contain the name.
    TemporaryFile(OpenFolder folder, QString name, quint32 permissions = 0666,
                  Durability durability = Durability::Synced);
    ~TemporaryFile();
    Q_DISABLE_COPY_MOVE(TemporaryFile)

    const OpenFolder &folder() const noexcept { return m_folder; }
    const QString &name() const noexcept { return m_name; }
    const Descriptor &descriptor() const noexcept { return m_file; }

    void write(const char *bytes, qint64 count);
    /// Syncs the data unless `Durability::Later`, and closes the file. Returns its status, whose
    /// identity (device, inode, modification time) it keeps under its final name.
    FileStatus finish();
    /// Renames the finished file to the target's name and syncs the folder unless
    /// `Durability::Later`. Fails with `EEXIST` if the name is taken by an entry that may not be
    /// replaced; the call may then be repeated with another name.
    void commit(const QString &target, Placing placing = Placing::mayReplaceRegular);

  private:
    OpenFolder m_folder;
    QString m_name;
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

/// Creates a file of an open folder with these bytes, or replaces it, which changes its
/// permissions. Fails with `EEXIST` if the name is taken by an entry that may not be replaced.
FileStatus writeAtomically(const OpenFolder &folder, const QString &name, const QByteArray &bytes,
                           Placing placing);

} // namespace corvane

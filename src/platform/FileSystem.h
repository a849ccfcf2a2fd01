#pragma once

#include "platform/Failure.h"
#include "platform/MountTable.h"

#include <QList>
#include <QString>

#include <chrono>
#include <memory>
#include <optional>

namespace corvane {

/// Thrown if a file system call fails. `code()` is its `errno`. The description is the system's
/// text for it ("No space left on device"), without the path: the code that catches the error
/// composes the message for the user.
class FileError : public Failure {
  public:
    FileError(QString path, int code);

    const QString &path() const noexcept { return m_path; }
    int code() const noexcept { return m_code; }
    bool isMissingFile() const noexcept; ///< the code is `ENOENT`

  private:
    QString m_path;
    int m_code;
};

enum class FileType { Regular, Directory, SymbolicLink, Other };

/// In nanoseconds, so that two writes within a millisecond have different modification times.
using FileTime = std::chrono::sys_time<std::chrono::nanoseconds>;

struct FileStatus {
    FileType type = FileType::Other;
    qint64 size = 0; ///< bytes
    quint64 device = 0;
    quint64 inode = 0;
    FileTime modified;
    quint32 permissions = 0; ///< the twelve permission bits

    bool operator==(const FileStatus &) const = default;
};

/// Owns an open file descriptor and closes it on destruction.
class Descriptor {
  public:
    Descriptor() = default;
    explicit Descriptor(int number, QString path) : m_number(number), m_path(std::move(path)) {}
    Descriptor(Descriptor &&other) noexcept;
    Descriptor &operator=(Descriptor &&other) noexcept;
    ~Descriptor();

    int number() const noexcept { return m_number; }
    bool isOpen() const noexcept { return m_number >= 0; }
    const QString &path() const noexcept { return m_path; }
    /// Returns the number and gives up ownership: the caller closes it.
    int release() noexcept;

  private:
    int m_number = -1;
    QString m_path;
};

/// An entry of a folder; never "." or "..".
struct DirectoryEntry {
    QString name;
    /// False if the name on disk isn't valid UTF-8. `name` is then an approximation for messages
    /// and doesn't lead to the file.
    bool hasValidName = true;
    /// Valid only if `isTypeKnown`. Some file systems don't list types; `linkStatus` has them.
    FileType type = FileType::Other;
    bool isTypeKnown = false;
};

/// Which entry a rename may replace.
enum class Placing {
    mustBeFree,        ///< none
    mayReplaceRegular, ///< a regular file
};

/// The mount that contains an open file, and the file's path.
struct MountedPath {
    quint64 fileSystemId = 0;
    std::optional<Mount> mount; ///< nullopt if unknown
    QByteArray path;            ///< current, without symbolic links; empty if unknown

    bool operator==(const MountedPath &) const = default;
};

/// The file system calls of the program. An interface, so that a test can make any call fail and
/// can discard unsynced data. All files are written through it, except by libraries (settings) and
/// `InstanceLock`.
///
/// Paths are absolute. A path that contains a NUL character fails with `EINVAL`. Every function
/// throws `FileError` on failure unless it is documented otherwise. Thread-safe, but a descriptor
/// must not be used by two threads at a time, except that of a folder.
///
/// The functions whose names end in "At" refer to an entry of an open folder by its name, which
/// must be a single path component (`EINVAL`). They act on that folder even if it was renamed or
/// another folder has its path now, and follow no link.
class FileSystem {
  public:
    virtual ~FileSystem();

    /// How to treat a symbolic link at the end of a path: `Refuse` fails with `ELOOP`. Links among
    /// the parent folders are always followed.
    enum class Links { Follow, Refuse };

    // Status. The first three return nullopt on any failure; `linkStatus` doesn't follow a link.
    virtual std::optional<FileStatus> linkStatus(const QString &path) const = 0;
    virtual std::optional<FileStatus> targetStatus(const QString &path) const = 0;
    virtual std::optional<FileStatus> linkStatusAt(const Descriptor &folder,
                                                   const QString &name) const = 0;
    /// Follows links. Throws, unlike `targetStatus`.
    virtual FileStatus status(const QString &path) const = 0;
    virtual FileStatus status(const Descriptor &file) const = 0;
    /// The entries of a folder, unsorted.
    virtual QList<DirectoryEntry> list(const QString &folder) const = 0;
    /// Resolves all links in a path that exists.
    virtual QString realPath(const QString &path) const = 0;

    // Reading.
    /// Doesn't block, even if the path leads to a FIFO without a writer.
    virtual Descriptor openForReading(const QString &path, Links links) = 0;
    /// Without read permission for the folder, the descriptor serves only for the "At" functions.
    virtual Descriptor openFolder(const QString &path) = 0;
    // A symbolic link fails with `ELOOP` or `ENOTDIR`.
    virtual Descriptor openFolderAt(const Descriptor &folder, const QString &name) = 0;
    virtual Descriptor openFileAt(const Descriptor &folder, const QString &name) = 0;
    // Read up to `maximum` bytes and return how many were read: 0 at the end of the file. `readAt`
    // leaves the descriptor's position unchanged.
    virtual qint64 read(const Descriptor &file, char *into, qint64 maximum) = 0;
    virtual qint64 readAt(const Descriptor &file, qint64 offset, char *into, qint64 maximum) = 0;

    // Writing.
    /// Creates a file; `EEXIST` if the name is taken. The umask applies to the permissions.
    virtual Descriptor createFileAt(const Descriptor &folder, const QString &name,
                                    quint32 permissions = 0666) = 0;
    /// Opens an existing file without changing it. Links are followed.
    virtual Descriptor openForWriting(const QString &path) = 0;
    // Write all `count` bytes; `EIO` if the system accepts no byte, or only a few at a time.
    // `writeAt` leaves the descriptor's position unchanged.
    virtual void write(const Descriptor &file, const char *bytes, qint64 count) = 0;
    virtual void writeAt(const Descriptor &file, qint64 offset, const char *bytes,
                         qint64 count) = 0;
    /// Hints that the system may start to write a part of the file to the disk. Never fails.
    virtual void startWriteBack(const Descriptor &file, qint64 offset, qint64 count) noexcept = 0;
    /// Gives an empty file the bytes of another one without copying them. Returns false if the file
    /// system can't, or if the two are on different ones.
    virtual bool shareBytes(const Descriptor &from, const Descriptor &into) noexcept = 0;
    virtual void setPermissions(const Descriptor &file, quint32 permissions) = 0;
    /// Blocks until the file's data is on the disk.
    virtual void sync(const Descriptor &file) = 0;
    /// Closes the descriptor and reports a delayed write error, unlike its destructor.
    virtual void close(Descriptor &file) = 0;

    // Names.
    /// Creates a folder and its missing parents. A no-op if the folder exists.
    virtual void createFolders(const QString &path) = 0;
    /// Creates a folder; `EEXIST` if the name is taken. Of two processes that race for the name,
    /// one succeeds.
    virtual void createFolderAt(const Descriptor &folder, const QString &name) = 0;
    /// Renames a file of the folder atomically; `EEXIST` if the new name is taken by an entry that
    /// may not be replaced.
    virtual void renameAt(const Descriptor &folder, const QString &from, const QString &to,
                          Placing placing) = 0;
    // Not for folders.
    virtual void remove(const QString &path) = 0;
    virtual void removeAt(const Descriptor &folder, const QString &name) = 0;
    /// Blocks until the folder's entries are on the disk. A no-op if the system can't do that: on
    /// some network mounts, and for a folder without read permission.
    virtual void syncFolder(const Descriptor &folder) = 0;

    // Volumes.
    /// Blocks until everything written to the volume of this path is on the disk. For many small
    /// files much faster than `sync` for each.
    virtual void syncVolume(const QString &path) = 0;
    virtual MountedPath mountedPath(const Descriptor &file) const = 0;
    /// The UUID of a mounted volume, which is the same after a remount; nullopt if it has none. For
    /// the identity of a folder use `FolderIdentity`.
    virtual std::optional<QString> volumeUUID(const Mount &mount) const = 0;
    /// Free space for unprivileged users on the file system that contains the path.
    virtual qint64 availableBytes(const QString &path) const = 0;
};

/// The file system that the process uses: a `SystemFileSystem` unless a test replaced it.
/// Thread-safe.
FileSystem &fileSystem();

/// Replaces `fileSystem()` during its lifetime. For tests. Scopes of two threads must not overlap.
class FileSystemScope {
  public:
    explicit FileSystemScope(FileSystem &replacement);
    ~FileSystemScope();
    Q_DISABLE_COPY_MOVE(FileSystemScope)

  private:
    FileSystem *m_previous;
};

/// Reads a file from the descriptor's position, or from the start by its path (links are followed),
/// to the end, but at most `limit` + 1 bytes: a result larger than `limit` means that the file is
/// too large. Throws `FileError`.
QByteArray readAll(const Descriptor &file, qint64 limit);
QByteArray readAll(const QString &path, qint64 limit);

} // namespace corvane

#pragma once

#include "platform/Failure.h"

#include <QList>
#include <QString>

#include <chrono>
#include <memory>
#include <optional>

namespace corvane {

/// A call to the operating system about a file failed. `code()` is its `errno`; the description is
/// the system's own sentence for it ("No space left on device"), without the path: whoever catches
/// it knows which file it was about and words the message.
class FileError : public Failure {
  public:
    FileError(QString path, int code);

    const QString &path() const noexcept { return m_path; }
    int code() const noexcept { return m_code; }
    bool isMissingFile() const noexcept;

  private:
    QString m_path;
    int m_code;
};

enum class FileType { Regular, Directory, SymbolicLink, Other };

/// Modification times keep the file system's nanoseconds: two writes within a millisecond differ.
using FileTime = std::chrono::sys_time<std::chrono::nanoseconds>;

struct FileStatus {
    FileType type = FileType::Other;
    qint64 size = 0;
    quint64 device = 0;
    quint64 inode = 0;
    FileTime modified;
    quint32 permissions = 0; ///< the twelve permission bits

    bool operator==(const FileStatus &) const = default;
};

/// An open file descriptor that closes itself. Only `FileSystem` makes one.
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
    /// Gives the number away; the caller closes it.
    int release() noexcept;

  private:
    int m_number = -1;
    QString m_path;
};

/// One name in a folder, as the system lists it (never "." or "..").
struct DirectoryEntry {
    QString name;
    /// False where the bytes on disk are no valid UTF-8. Such a name can't be kept in a document;
    /// `name` then holds a readable approximation, for a message and for nothing else.
    bool hasValidName = true;
    /// As the folder tells it; `Other` where it doesn't say, and then `linkStatus` knows.
    FileType type = FileType::Other;
    bool isTypeKnown = false;
};

/// The mount that a descriptor stands on.
struct Mount {
    quint64 fileSystemId = 0;
    QString mountPoint;

    bool operator==(const Mount &) const = default;
};

/// All that this program does with files, behind one interface, so that a test can make any call
/// fail and can drop what wasn't synced. No other code opens a file for writing.
///
/// Paths are absolute text in UTF-8; a path that holds a NUL character is refused with `EINVAL`.
/// Every operation throws `FileError` unless it says otherwise. All of them may be called from any
/// thread; one descriptor is used by one thread at a time.
class FileSystem {
  public:
    virtual ~FileSystem();

    enum class Links { Follow, Refuse };

    // Looking. Both give nothing where the attributes can't be read, for whatever reason.
    virtual std::optional<FileStatus> linkStatus(const QString &path) const = 0;
    virtual std::optional<FileStatus> targetStatus(const QString &path) const = 0;
    /// Follows links, and throws what `targetStatus` keeps to itself.
    virtual FileStatus status(const QString &path) const = 0;
    virtual FileStatus status(const Descriptor &file) const = 0;
    /// The names in a folder in the order in which the system gives them.
    virtual QList<DirectoryEntry> list(const QString &folder) const = 0;
    /// The path with every link on the way resolved; throws where a component is missing.
    virtual QString realPath(const QString &path) const = 0;

    // Reading.
    /// Opens without blocking, so that a FIFO in a file's place can't hold the program up.
    virtual Descriptor openForReading(const QString &path, Links links) = 0;
    virtual Descriptor openFolder(const QString &path) = 0;
    /// A step down from an open folder; a link is never followed.
    virtual Descriptor openFolderAt(const Descriptor &folder, const QString &name) = 0;
    virtual Descriptor openFileAt(const Descriptor &folder, const QString &name) = 0;
    /// Reads up to `most` bytes; 0 is the end of the file.
    virtual qint64 read(const Descriptor &file, char *into, qint64 most) = 0;
    virtual qint64 readAt(const Descriptor &file, qint64 offset, char *into, qint64 most) = 0;

    // Writing.
    /// Creates a file that doesn't exist yet, with the given permissions less the user's mask.
    virtual Descriptor createForWriting(const QString &path, quint32 permissions = 0666) = 0;
    /// Writes all of it or throws.
    virtual void write(const Descriptor &file, const char *bytes, qint64 count) = 0;
    /// Tells the system that bytes up to here may go to the disk now. Only a hint.
    virtual void startWriteBack(const Descriptor &file, qint64 offset, qint64 count) noexcept = 0;
    virtual void setPermissions(const Descriptor &file, quint32 permissions) = 0;
    /// Returns when the file's data are on the disk.
    virtual void sync(const Descriptor &file) = 0;
    virtual void close(Descriptor &file) = 0;

    // Names.
    /// Creates the folder with what is missing above it; an existing folder is fine.
    virtual void createFolders(const QString &path) = 0;
    /// Creates the one folder; `EEXIST` where anything has the name, so of two processes that ask
    /// for it one gets it.
    virtual void createFolder(const QString &path) = 0;
    /// Moves a file over whatever file has the name, in one step.
    virtual void rename(const QString &from, const QString &to) = 0;
    /// Moves a file to a name that nothing has; `EEXIST` where something has it after all.
    virtual void renameToFreeName(const QString &from, const QString &to) = 0;
    virtual void remove(const QString &path) = 0;
    /// Returns when the folder's names are on the disk, or at once where the system knows no way to
    /// see to it: on some network mounts, and for a folder that may be written but not read.
    virtual void syncFolder(const QString &path) = 0;

    // Volumes.
    /// Returns when all that was written to the volume of this path is on the disk: for many small
    /// files far quicker than syncing each.
    virtual void syncVolume(const QString &path) = 0;
    virtual Mount mount(const Descriptor &file) const = 0;
    /// The UUID of the file system that the path lies on, as the system's by-uuid links give it for
    /// the mount's device. It survives a remount. Nothing for a file system without one.
    virtual std::optional<QString> volumeUUID(const QString &path) const = 0;
    /// How much this user may still write to the file system that the path lies on.
    virtual qint64 availableBytes(const QString &path) const = 0;
};

/// The file system that the whole process uses: the real one, but for a test that puts another in
/// its place. May be called from any thread.
FileSystem &fileSystem();

/// While it lives, `fileSystem()` gives the one handed in. For tests; not nested across threads.
class FileSystemScope {
  public:
    explicit FileSystemScope(FileSystem &replacement);
    ~FileSystemScope();
    Q_DISABLE_COPY_MOVE(FileSystemScope)

  private:
    FileSystem *m_previous;
};

/// The whole content of a file, by a descriptor that was open already or by its path (links are
/// followed). A file larger than `most` bytes is read to `most` + 1 bytes, so that the caller sees
/// that it is too large without holding all of it.
QByteArray readAll(const Descriptor &file, qint64 most);
QByteArray readAll(const QString &path, qint64 most);

} // namespace corvane

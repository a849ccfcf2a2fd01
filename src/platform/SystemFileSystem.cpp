#include "platform/SystemFileSystem.h"

#include "platform/Paths.h"
#include "platform/VolumeUUID.h"

#include <QStringDecoder>

#include <cerrno>
#include <dirent.h>
#include <fcntl.h>
#include <functional>
#include <linux/fs.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <sys/vfs.h>
#include <unistd.h>

namespace corvane {

namespace {

/// The path in UTF-8. Throws `EINVAL` for a NUL character, at which the system would end the path.
QByteArray encoded(const QString &path) {
    if (path.contains(QChar(u'\0'))) {
        throw FileError(path, EINVAL);
    }
    return path.toUtf8();
}

/// The path of a folder's entry, for messages.
QString pathOf(const Descriptor &folder, const QString &name) {
    return paths::joined(folder.path(), name);
}

bool isEntryName(const QString &name) {
    return !name.isEmpty() && name != QLatin1String(".") && name != QLatin1String("..") &&
           !name.contains(QLatin1Char('/')) && !name.contains(QChar(u'\0'));
}

/// The name of a folder's entry in UTF-8. Throws `EINVAL` for anything but a single component.
QByteArray encodedEntry(const Descriptor &folder, const QString &name) {
    if (!isEntryName(name)) {
        throw FileError(pathOf(folder, name), EINVAL);
    }
    return name.toUtf8();
}

/// Repeats a call while it is interrupted by signals; throws on any other failure.
template <typename Call> auto checked(const QString &path, Call call) {
    for (;;) {
        const auto result = call();
        if (result >= 0) {
            return result;
        }
        if (errno != EINTR) {
            throw FileError(path, errno);
        }
    }
}

FileType typeOfMode(mode_t mode) {
    switch (mode & S_IFMT) {
    case S_IFREG:
        return FileType::Regular;
    case S_IFDIR:
        return FileType::Directory;
    case S_IFLNK:
        return FileType::SymbolicLink;
    default:
        return FileType::Other;
    }
}

FileStatus fromStat(const struct stat &raw) {
    return {.type = typeOfMode(raw.st_mode),
            .size = raw.st_size,
            .device = raw.st_dev,
            .inode = raw.st_ino,
            .modified = FileTime(std::chrono::seconds(raw.st_mtim.tv_sec) +
                                 std::chrono::nanoseconds(raw.st_mtim.tv_nsec)),
            .permissions = raw.st_mode & 07777U};
}

std::optional<FileStatus> statusIfReadable(const QString &path,
                                           int (*call)(const char *, struct stat *)) {
    struct stat raw{};
    const bool isReadable =
        !path.contains(QChar(u'\0')) && call(path.toUtf8().constData(), &raw) == 0;
    return isReadable ? std::optional(fromStat(raw)) : std::nullopt;
}

/// Bytes per write call. For larger writes the kernel allocates larger page cache folios, which
/// take up to twice as long to fill if their memory wasn't in use before.
constexpr qint64 kWriteStep = qint64(16) << 10;
/// A volume that accepts only a few bytes at a time is broken: after this many consecutive calls
/// that wrote fewer bytes than this, writing fails instead of taking minutes.
constexpr int kMaxTinyWrites = 64;
constexpr qint64 kTinyWrite = 512;

Descriptor opened(const QString &path, int flags, mode_t mode = 0) {
    const QByteArray name = encoded(path);
    return Descriptor(
        checked(path, [&] { return ::open(name.constData(), flags | O_CLOEXEC, mode); }), path);
}

/// Opens a folder. One that can't be listed may still be entered.
Descriptor openedFolder(const QString &path, const std::function<int(int flags)> &open) {
    constexpr int kFlags = O_DIRECTORY | O_CLOEXEC;
    try {
        return Descriptor(checked(path, [&] { return open(kFlags | O_RDONLY); }), path);
    } catch (const FileError &error) {
        if (error.code() != EACCES) {
            throw;
        }
    }
    return Descriptor(checked(path, [&] { return open(kFlags | O_PATH); }), path);
}

DirectoryEntry fromDirent(const dirent &raw) {
    const QByteArrayView name(raw.d_name);
    QStringDecoder decoder(QStringConverter::Utf8, QStringConverter::Flag::Stateless);
    DirectoryEntry entry{.name = decoder.decode(name)};
    entry.hasValidName = !decoder.hasError();
    entry.isTypeKnown = raw.d_type != DT_UNKNOWN;
    if (entry.isTypeKnown) {
        entry.type = typeOfMode(DTTOIF(raw.d_type));
    }
    return entry;
}

} // namespace

std::optional<FileStatus> SystemFileSystem::linkStatus(const QString &path) const {
    return statusIfReadable(path, &::lstat);
}

std::optional<FileStatus> SystemFileSystem::targetStatus(const QString &path) const {
    return statusIfReadable(path, &::stat);
}

std::optional<FileStatus> SystemFileSystem::linkStatusAt(const Descriptor &folder,
                                                         const QString &name) const {
    struct stat raw{};
    const bool isReadable =
        isEntryName(name) &&
        ::fstatat(folder.number(), name.toUtf8().constData(), &raw, AT_SYMLINK_NOFOLLOW) == 0;
    return isReadable ? std::optional(fromStat(raw)) : std::nullopt;
}

FileStatus SystemFileSystem::status(const QString &path) const {
    struct stat raw{};
    const QByteArray name = encoded(path);
    checked(path, [&] { return ::stat(name.constData(), &raw); });
    return fromStat(raw);
}

FileStatus SystemFileSystem::status(const Descriptor &file) const {
    struct stat raw{};
    checked(file.path(), [&] { return ::fstat(file.number(), &raw); });
    return fromStat(raw);
}

QList<DirectoryEntry> SystemFileSystem::list(const QString &folder) const {
    Descriptor descriptor = opened(folder, O_RDONLY | O_DIRECTORY);
    const std::unique_ptr<DIR, int (*)(DIR *)> stream(::fdopendir(descriptor.number()),
                                                      &::closedir);
    if (!stream) {
        throw FileError(folder, errno);
    }
    descriptor.release();
    QList<DirectoryEntry> entries;
    for (;;) {
        errno = 0;
        const dirent *raw = ::readdir(stream.get());
        if (!raw) {
            break;
        }
        if (qstrcmp(raw->d_name, ".") != 0 && qstrcmp(raw->d_name, "..") != 0) {
            entries.append(fromDirent(*raw));
        }
    }
    if (errno != 0) {
        throw FileError(folder, errno);
    }
    return entries;
}

QString SystemFileSystem::realPath(const QString &path) const {
    const QByteArray name = encoded(path);
    const std::unique_ptr<char, void (*)(void *)> real(::realpath(name.constData(), nullptr),
                                                       &::free);
    if (!real) {
        throw FileError(path, errno);
    }
    return QString::fromUtf8(real.get());
}

Descriptor SystemFileSystem::openForReading(const QString &path, Links links) {
    return opened(path, O_RDONLY | O_NONBLOCK | (links == Links::Refuse ? O_NOFOLLOW : 0));
}

Descriptor SystemFileSystem::openFolder(const QString &path) {
    const QByteArray name = encoded(path);
    return openedFolder(path, [&](int flags) { return ::open(name.constData(), flags); });
}

Descriptor SystemFileSystem::openFolderAt(const Descriptor &folder, const QString &name) {
    const QByteArray entry = encodedEntry(folder, name);
    return openedFolder(pathOf(folder, name), [&](int flags) {
        return ::openat(folder.number(), entry.constData(), flags | O_NOFOLLOW);
    });
}

Descriptor SystemFileSystem::openFileAt(const Descriptor &folder, const QString &name) {
    constexpr int kFlags = O_RDONLY | O_NONBLOCK | O_NOFOLLOW | O_CLOEXEC;
    const QString path = pathOf(folder, name);
    const QByteArray entry = encodedEntry(folder, name);
    return Descriptor(
        checked(path, [&] { return ::openat(folder.number(), entry.constData(), kFlags); }), path);
}

qint64 SystemFileSystem::read(const Descriptor &file, char *into, qint64 maximum) {
    return checked(file.path(), [&] { return ::read(file.number(), into, size_t(maximum)); });
}

qint64 SystemFileSystem::readAt(const Descriptor &file, qint64 offset, char *into, qint64 maximum) {
    return checked(file.path(),
                   [&] { return ::pread(file.number(), into, size_t(maximum), offset); });
}

Descriptor SystemFileSystem::createFileAt(const Descriptor &folder, const QString &name,
                                          quint32 permissions) {
    constexpr int kFlags = O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC;
    const QString path = pathOf(folder, name);
    const QByteArray entry = encodedEntry(folder, name);
    return Descriptor(checked(path,
                              [&] {
                                  return ::openat(folder.number(), entry.constData(), kFlags,
                                                  mode_t(permissions));
                              }),
                      path);
}

Descriptor SystemFileSystem::openForWriting(const QString &path) {
    return opened(path, O_WRONLY);
}

void SystemFileSystem::write(const Descriptor &file, const char *bytes, qint64 count) {
    writeAll(file, std::nullopt, bytes, count);
}

void SystemFileSystem::writeAt(const Descriptor &file, qint64 offset, const char *bytes,
                               qint64 count) {
    writeAll(file, offset, bytes, count);
}

void SystemFileSystem::writeAll(const Descriptor &file, std::optional<qint64> offset,
                                const char *bytes, qint64 count) {
    int tinyWrites = 0;
    while (count > 0) {
        const qint64 step = std::min(count, kWriteStep);
        const qint64 done = writeOnce(file, offset, bytes, step);
        tinyWrites = done < std::min(step, kTinyWrite) ? tinyWrites + 1 : 0;
        if (done == 0 || tinyWrites > kMaxTinyWrites) {
            throw FileError(file.path(), EIO);
        }
        offset = offset ? std::optional(*offset + done) : std::nullopt;
        bytes += done;
        count -= done;
    }
}

qint64 SystemFileSystem::writeOnce(const Descriptor &file, std::optional<qint64> offset,
                                   const char *bytes, qint64 count) {
    return checked(file.path(), [&] {
        return offset ? ::pwrite(file.number(), bytes, size_t(count), *offset)
                      : ::write(file.number(), bytes, size_t(count));
    });
}

void SystemFileSystem::startWriteBack(const Descriptor &file, qint64 offset,
                                      qint64 count) noexcept {
    ::sync_file_range(file.number(), offset, count, SYNC_FILE_RANGE_WRITE);
}

bool SystemFileSystem::shareBytes(const Descriptor &from, const Descriptor &into) noexcept {
    return ::ioctl(into.number(), FICLONE, from.number()) == 0;
}

void SystemFileSystem::setPermissions(const Descriptor &file, quint32 permissions) {
    checked(file.path(), [&] { return ::fchmod(file.number(), permissions); });
}

void SystemFileSystem::sync(const Descriptor &file) {
    checked(file.path(), [&] { return ::fsync(file.number()); });
}

void SystemFileSystem::close(Descriptor &file) {
    const QString path = file.path();
    // On Linux the descriptor is closed even after EINTR, so the call isn't repeated.
    if (::close(file.release()) != 0 && errno != EINTR) {
        throw FileError(path, errno);
    }
}

void SystemFileSystem::createFolders(const QString &path) {
    const QByteArray name = encoded(path);
    if (::mkdir(name.constData(), 0777) == 0) {
        return;
    }
    const int code = errno;
    const auto existing = targetStatus(path);
    if (existing && existing->type == FileType::Directory) {
        return;
    }
    if (existing) {
        throw FileError(path, ENOTDIR);
    }
    const QString parent = paths::parentFolder(path);
    if (code != ENOENT || parent == path) {
        throw FileError(path, code);
    }
    createFolders(parent);
    if (::mkdir(name.constData(), 0777) != 0 && errno != EEXIST) {
        throw FileError(path, errno);
    }
}

void SystemFileSystem::createFolderAt(const Descriptor &folder, const QString &name) {
    const QByteArray entry = encodedEntry(folder, name);
    checked(pathOf(folder, name),
            [&] { return ::mkdirat(folder.number(), entry.constData(), 0777); });
}

void SystemFileSystem::renameAt(const Descriptor &folder, const QString &from, const QString &to,
                                Placing placing) {
    const QByteArray source = encodedEntry(folder, from);
    const QByteArray target = encodedEntry(folder, to);
    const QString path = pathOf(folder, to);
    const int number = folder.number();
    const auto rename = [&](unsigned flags) {
        return ::renameat2(number, source.constData(), number, target.constData(), flags);
    };
    const auto existing = linkStatusAt(folder, to);
    const bool isRegular = existing && existing->type == FileType::Regular;
    if (placing == Placing::mayReplaceRegular && isRegular) {
        checked(path, [&] { return rename(0); });
        return;
    }
    if (existing) {
        throw FileError(path, EEXIST);
    }
    if (rename(RENAME_NOREPLACE) == 0) {
        return;
    }
    if (errno != EINVAL && errno != ENOSYS) {
        throw FileError(path, errno);
    }
    // The file system lacks RENAME_NOREPLACE. A hard link is exclusive too; without hard links only
    // a check just before the rename is left, which another process can race.
    if (::linkat(number, source.constData(), number, target.constData(), 0) == 0) {
        ::unlinkat(number, source.constData(), 0);
    } else if (errno == EEXIST || linkStatusAt(folder, to)) {
        throw FileError(path, EEXIST);
    } else {
        checked(path, [&] { return rename(0); });
    }
}

void SystemFileSystem::remove(const QString &path) {
    const QByteArray name = encoded(path);
    checked(path, [&] { return ::unlink(name.constData()); });
}

void SystemFileSystem::removeAt(const Descriptor &folder, const QString &name) {
    const QByteArray entry = encodedEntry(folder, name);
    checked(pathOf(folder, name),
            [&] { return ::unlinkat(folder.number(), entry.constData(), 0); });
}

void SystemFileSystem::syncFolder(const Descriptor &folder) {
    // EBADF: opened without read permission. The others: not supported, as by some network and FUSE
    // file systems.
    if (::fsync(folder.number()) != 0 && errno != EBADF && errno != EINVAL && errno != ENOTSUP &&
        errno != ENOSYS) {
        throw FileError(folder.path(), errno);
    }
}

void SystemFileSystem::syncVolume(const QString &path) {
    const Descriptor file = opened(path, O_RDONLY);
    checked(path, [&] { return ::syncfs(file.number()); });
}

MountedPath SystemFileSystem::mountedPath(const Descriptor &file) const {
    struct statfs raw{};
    checked(file.path(), [&] { return ::fstatfs(file.number(), &raw); });
    const auto &id = raw.f_fsid.__val;
    const QByteArray path = pathOfDescriptor(file.number());
    return {.fileSystemId = (quint64(quint32(id[0])) << 32) | quint32(id[1]),
            .mount = mountOfDescriptor(file.number(), path),
            .path = path};
}

std::optional<QString> SystemFileSystem::volumeUUID(const Mount &mount) const {
    return mountedVolumeUUID(mount);
}

qint64 SystemFileSystem::availableBytes(const QString &path) const {
    struct statvfs raw{};
    const QByteArray name = encoded(path);
    checked(path, [&] { return ::statvfs(name.constData(), &raw); });
    return qint64(raw.f_bavail) * qint64(raw.f_frsize);
}

} // namespace corvane

#include "support/FaultyFileSystem.h"

#include "platform/Paths.h"

#include <QFile>

#include <algorithm>
#include <cerrno>
#include <cstdio>

namespace corvane::test {

void FaultyFileSystem::failAt(int call, int code) {
    m_failingCode = code;
    m_failingCall = call;
    m_swappingCall = 0;
    m_calls = 0;
}

void FaultyFileSystem::swapAt(int call, const QString &folder, const QString &other) {
    m_swapped = {folder, other};
    m_swappingCall = call;
    m_calls = 0;
}

void FaultyFileSystem::setObserver(std::function<void(const QString &, const QString &)> observer) {
    const std::scoped_lock lock(m_mutex);
    m_observer = std::move(observer);
}

void FaultyFileSystem::dropUnsynced() {
    for (const QString &path : m_unsynced) {
        QFile::resize(path, 0);
    }
    m_unsynced.clear();
}

void FaultyFileSystem::count(const char *operation, const QString &path) {
    const auto observer = [this] {
        const std::scoped_lock lock(m_mutex);
        return m_observer;
    }();
    if (observer) {
        observer(QLatin1String(operation), path);
    }
    const int call = ++m_calls;
    if (call == m_swappingCall) {
        const auto &[folder, other] = m_swapped;
        std::rename(qPrintable(folder), qPrintable(folder + QStringLiteral(".away")));
        std::rename(qPrintable(other), qPrintable(folder));
    }
    if (call == m_failingCall) {
        throw FileError(path, m_failingCode);
    }
}

void FaultyFileSystem::noteRename(const QString &from, const QString &to) {
    const std::scoped_lock lock(m_mutex);
    if (m_unsynced.removeAll(from) > 0) {
        m_unsynced.append(to);
    }
}

Descriptor FaultyFileSystem::openForReading(const QString &path, Links links) {
    count("openForReading", path);
    return SystemFileSystem::openForReading(path, links);
}

Descriptor FaultyFileSystem::openFolder(const QString &path) {
    count("openFolder", path);
    return SystemFileSystem::openFolder(path);
}

Descriptor FaultyFileSystem::openFolderAt(const Descriptor &folder, const QString &name) {
    count("openFolderAt", name);
    return SystemFileSystem::openFolderAt(folder, name);
}

Descriptor FaultyFileSystem::openFileAt(const Descriptor &folder, const QString &name) {
    count("openFileAt", name);
    return SystemFileSystem::openFileAt(folder, name);
}

qint64 FaultyFileSystem::read(const Descriptor &file, char *into, qint64 maximum) {
    count("read", file.path());
    return SystemFileSystem::read(file, into, maximum);
}

qint64 FaultyFileSystem::readAt(const Descriptor &file, qint64 offset, char *into, qint64 maximum) {
    const qint64 readable = std::clamp<qint64>(m_readableBytes - offset, 0, maximum);
    return SystemFileSystem::readAt(file, offset, into, readable);
}

Descriptor FaultyFileSystem::createFileAt(const Descriptor &folder, const QString &name,
                                          quint32 permissions) {
    const QString path = paths::joined(folder.path(), name);
    count("createFileAt", path);
    Descriptor file = SystemFileSystem::createFileAt(folder, name, permissions);
    const std::scoped_lock lock(m_mutex);
    m_unsynced.append(path);
    return file;
}

Descriptor FaultyFileSystem::openForWriting(const QString &path) {
    count("openForWriting", path);
    return SystemFileSystem::openForWriting(path);
}

void FaultyFileSystem::write(const Descriptor &file, const char *bytes, qint64 size) {
    count("write", file.path());
    takeSpace(file, size);
    SystemFileSystem::write(file, bytes, size);
}

void FaultyFileSystem::writeAt(const Descriptor &file, qint64 offset, const char *bytes,
                               qint64 size) {
    count("writeAt", file.path());
    takeSpace(file, size);
    SystemFileSystem::writeAt(file, offset, bytes, size);
}

void FaultyFileSystem::takeSpace(const Descriptor &file, qint64 size) {
    if (m_freeSpace >= 0 && (m_freeSpace -= size) < 0) {
        m_freeSpace = 0;
        throw FileError(file.path(), ENOSPC);
    }
}

qint64 FaultyFileSystem::writeOnce(const Descriptor &file, std::optional<qint64> offset,
                                   const char *bytes, qint64 size) {
    return SystemFileSystem::writeOnce(file, offset, bytes,
                                       std::min<qint64>(size, m_bytesPerWrite));
}

bool FaultyFileSystem::shareBytes(const Descriptor &from, const Descriptor &into) noexcept {
    if (m_canShareBytes) {
        const qint64 size = SystemFileSystem::status(from).size;
        QByteArray bytes(size, Qt::Uninitialized);
        SystemFileSystem::readAt(from, 0, bytes.data(), size);
        SystemFileSystem::write(into, bytes.constData(), size);
        ++m_sharedFiles;
    }
    return m_canShareBytes;
}

void FaultyFileSystem::setPermissions(const Descriptor &file, quint32 permissions) {
    count("setPermissions", file.path());
    SystemFileSystem::setPermissions(file, permissions);
}

void FaultyFileSystem::sync(const Descriptor &file) {
    count("sync", file.path());
    SystemFileSystem::sync(file);
    const std::scoped_lock lock(m_mutex);
    m_unsynced.removeAll(file.path());
}

void FaultyFileSystem::close(Descriptor &file) {
    count("close", file.path());
    SystemFileSystem::close(file);
}

void FaultyFileSystem::createFolders(const QString &path) {
    count("createFolders", path);
    SystemFileSystem::createFolders(path);
}

void FaultyFileSystem::createFolderAt(const Descriptor &folder, const QString &name) {
    count("createFolderAt", paths::joined(folder.path(), name));
    SystemFileSystem::createFolderAt(folder, name);
}

void FaultyFileSystem::renameAt(const Descriptor &folder, const QString &from, const QString &to,
                                Placing placing) {
    count("renameAt", paths::joined(folder.path(), to));
    SystemFileSystem::renameAt(folder, from, to, placing);
    noteRename(paths::joined(folder.path(), from), paths::joined(folder.path(), to));
}

void FaultyFileSystem::syncFolder(const Descriptor &folder) {
    count("syncFolder", folder.path());
    SystemFileSystem::syncFolder(folder);
}

void FaultyFileSystem::syncVolume(const QString &path) {
    count("syncVolume", path);
    SystemFileSystem::syncVolume(path);
    const std::scoped_lock lock(m_mutex);
    m_unsynced.clear();
}

MountedPath FaultyFileSystem::mountedPath(const Descriptor &file) const {
    MountedPath location = SystemFileSystem::mountedPath(file);
    if (m_mountTable) {
        location.mount = mountContaining(*m_mountTable, location.path);
    }
    return location;
}

std::optional<QString> FaultyFileSystem::volumeUUID(const Mount &mount) const {
    return m_volumeUUID ? *m_volumeUUID : SystemFileSystem::volumeUUID(mount);
}

qint64 FaultyFileSystem::availableBytes(const QString &path) const {
    return m_freeSpace >= 0 ? qint64(m_freeSpace) : SystemFileSystem::availableBytes(path);
}

} // namespace corvane::test

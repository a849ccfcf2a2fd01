#include "support/FaultyFileSystem.h"

#include <QFile>

#include <cerrno>

namespace corvane::test {

void FaultyFileSystem::failAt(int call, int code) {
    m_failingCode = code;
    m_failingCall = call;
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
    if (++m_calls == m_failingCall) {
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

Descriptor FaultyFileSystem::createForWriting(const QString &path, quint32 permissions) {
    count("createForWriting", path);
    Descriptor file = SystemFileSystem::createForWriting(path, permissions);
    const std::scoped_lock lock(m_mutex);
    m_unsynced.append(path);
    return file;
}

void FaultyFileSystem::write(const Descriptor &file, const char *bytes, qint64 size) {
    count("write", file.path());
    if (m_freeSpace >= 0 && (m_freeSpace -= size) < 0) {
        m_freeSpace = 0;
        throw FileError(file.path(), ENOSPC);
    }
    SystemFileSystem::write(file, bytes, size);
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

void FaultyFileSystem::createFolder(const QString &path) {
    count("createFolder", path);
    SystemFileSystem::createFolder(path);
}

void FaultyFileSystem::rename(const QString &from, const QString &to) {
    count("rename", to);
    SystemFileSystem::rename(from, to);
    noteRename(from, to);
}

void FaultyFileSystem::renameToFreeName(const QString &from, const QString &to) {
    count("renameToFreeName", to);
    SystemFileSystem::renameToFreeName(from, to);
    noteRename(from, to);
}

void FaultyFileSystem::syncFolder(const QString &path) {
    count("syncFolder", path);
    SystemFileSystem::syncFolder(path);
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

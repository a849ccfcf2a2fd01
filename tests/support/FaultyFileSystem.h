#pragma once

#include "platform/SystemFileSystem.h"

#include <QHash>
#include <QStringList>

#include <atomic>
#include <functional>
#include <mutex>

namespace corvane::test {

/// The real file system, but for one call that fails, and a memory of what was synced.
///
/// Put it in place with a `FileSystemScope`. Calls that change or read files are counted from 1;
/// `failAt(n, code)` makes the n-th throw. A test that wants each operation to fail in turn first
/// runs its work to learn `calls()`, then again for each n.
class FaultyFileSystem : public SystemFileSystem {
  public:
    void failAt(int call, int code);
    /// Every write from now on fails with `ENOSPC` once so many bytes were written.
    void setFreeSpace(qint64 bytes) { m_freeSpace = bytes; }
    /// Called with the operation's name and path before each counted call.
    void setObserver(std::function<void(const QString &, const QString &)> observer);
    int calls() const { return m_calls; }
    /// Stands in for a volume UUID on every path.
    void setVolumeUUID(std::optional<QString> uuid) { m_volumeUUID = std::move(uuid); }

    /// What a power cut would leave: each file whose data weren't synced is emptied, under whatever
    /// name it has by now.
    void dropUnsynced();

    Descriptor openForReading(const QString &path, Links links) override;
    Descriptor openFolder(const QString &path) override;
    Descriptor openFolderAt(const Descriptor &folder, const QString &name) override;
    Descriptor openFileAt(const Descriptor &folder, const QString &name) override;
    qint64 read(const Descriptor &file, char *into, qint64 most) override;
    Descriptor createForWriting(const QString &path, quint32 permissions) override;
    void write(const Descriptor &file, const char *bytes, qint64 count) override;
    void setPermissions(const Descriptor &file, quint32 permissions) override;
    void sync(const Descriptor &file) override;
    void close(Descriptor &file) override;
    void createFolders(const QString &path) override;
    void createFolder(const QString &path) override;
    void rename(const QString &from, const QString &to) override;
    void renameToFreeName(const QString &from, const QString &to) override;
    void syncFolder(const QString &path) override;
    void syncVolume(const QString &path) override;
    std::optional<QString> volumeUUID(const QString &path) const override;
    qint64 availableBytes(const QString &path) const override;

  private:
    void count(const char *operation, const QString &path);
    void noteRename(const QString &from, const QString &to);

    std::atomic<int> m_calls = 0;
    std::atomic<int> m_failingCall = 0;
    std::atomic<int> m_failingCode = 0;
    std::atomic<qint64> m_freeSpace = -1;
    std::function<void(const QString &, const QString &)> m_observer;
    std::optional<std::optional<QString>> m_volumeUUID;
    std::mutex m_mutex;
    QStringList m_unsynced;
};

} // namespace corvane::test

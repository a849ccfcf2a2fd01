#pragma once

#include "platform/SystemFileSystem.h"

#include <QHash>
#include <QStringList>

#include <atomic>
#include <functional>
#include <limits>
#include <mutex>

namespace corvane::test {

/// The system's file system with injected failures, and a record of unsynced files.
///
/// Installed with a `FileSystemScope`. Counts the calls that read or change files. A test that
/// makes each call fail in turn runs its operation once to learn `calls()`, then once for each call
/// number.
class FaultyFileSystem : public SystemFileSystem {
  public:
    /// Makes the call with this number (from 1) fail with an `errno` code, and restarts the count.
    /// 0 for no failure.
    void failAt(int call, int code);
    /// Simulates a file system that can share bytes: each sharing copies the file.
    void setCanShareBytes(bool canShare) { m_canShareBytes = canShare; }
    int sharedFiles() const { return m_sharedFiles; }
    /// Makes writes fail with `ENOSPC` once this many bytes were written.
    void setFreeSpace(qint64 bytes) { m_freeSpace = bytes; }
    /// Makes the file end at this offset for `readAt`, whatever its size.
    void setReadableBytes(qint64 bytes) { m_readableBytes = bytes; }
    /// Limits the bytes that one system call writes; 0 makes it write no byte and succeed.
    void setBytesPerWrite(qint64 bytes) { m_bytesPerWrite = bytes; }
    /// Sets a function to call with the operation's name and path before each counted call.
    void setObserver(std::function<void(const QString &, const QString &)> observer);
    /// Before the call with this number (from 1), renames the folder to "<folder>.away" and gives
    /// its path to another folder or link. Restarts the count.
    void swapAt(int call, const QString &folder, const QString &other);
    int calls() const { return m_calls; }
    /// Replaces the system's mount table by a text in the form of /proc/self/mountinfo.
    void setMountTable(const QByteArray &table) { m_mountTable = table; }
    /// Sets the result of `volumeUUID` for all mounts.
    void setVolumeUUID(std::optional<QString> uuid) { m_volumeUUID = std::move(uuid); }

    /// Simulates a power cut: truncates all files that weren't synced, including renamed ones.
    void dropUnsynced();

    Descriptor openForReading(const QString &path, Links links) override;
    Descriptor openFolder(const QString &path) override;
    Descriptor openFolderAt(const Descriptor &folder, const QString &name) override;
    Descriptor openFileAt(const Descriptor &folder, const QString &name) override;
    qint64 read(const Descriptor &file, char *into, qint64 maximum) override;
    qint64 readAt(const Descriptor &file, qint64 offset, char *into, qint64 maximum) override;
    Descriptor createFileAt(const Descriptor &folder, const QString &name,
                            quint32 permissions) override;
    Descriptor openForWriting(const QString &path) override;
    void write(const Descriptor &file, const char *bytes, qint64 count) override;
    void writeAt(const Descriptor &file, qint64 offset, const char *bytes, qint64 count) override;
    bool shareBytes(const Descriptor &from, const Descriptor &into) noexcept override;
    void setPermissions(const Descriptor &file, quint32 permissions) override;
    void sync(const Descriptor &file) override;
    void close(Descriptor &file) override;
    void createFolders(const QString &path) override;
    void createFolderAt(const Descriptor &folder, const QString &name) override;
    void renameAt(const Descriptor &folder, const QString &from, const QString &to,
                  Placing placing) override;
    void syncFolder(const Descriptor &folder) override;
    void syncVolume(const QString &path) override;
    MountedPath mountedPath(const Descriptor &file) const override;
    std::optional<QString> volumeUUID(const Mount &mount) const override;
    qint64 availableBytes(const QString &path) const override;

  protected:
    qint64 writeOnce(const Descriptor &file, std::optional<qint64> offset, const char *bytes,
                     qint64 count) override;

  private:
    void takeSpace(const Descriptor &file, qint64 size);
    void count(const char *operation, const QString &path);
    void noteRename(const QString &from, const QString &to);

    std::atomic<int> m_calls = 0;
    std::atomic<int> m_failingCall = 0;
    std::atomic<int> m_failingCode = 0;
    std::atomic<int> m_swappingCall = 0;
    std::atomic<bool> m_canShareBytes = false;
    std::atomic<int> m_sharedFiles = 0;
    std::pair<QString, QString> m_swapped; ///< the folder and what takes its place
    std::atomic<qint64> m_freeSpace = -1;
    std::atomic<qint64> m_readableBytes = std::numeric_limits<qint64>::max();
    std::atomic<qint64> m_bytesPerWrite = std::numeric_limits<qint64>::max();
    std::function<void(const QString &, const QString &)> m_observer;
    std::optional<QByteArray> m_mountTable;
    std::optional<std::optional<QString>> m_volumeUUID;
    std::mutex m_mutex;
    QStringList m_unsynced;
};

} // namespace corvane::test

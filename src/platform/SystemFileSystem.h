#pragma once

#include "platform/FileSystem.h"

namespace corvane {

/// The operating system's file system, by POSIX and Linux calls. Stateless.
class SystemFileSystem : public FileSystem {
  public:
    std::optional<FileStatus> linkStatus(const QString &path) const override;
    std::optional<FileStatus> targetStatus(const QString &path) const override;
    std::optional<FileStatus> linkStatusAt(const Descriptor &folder,
                                           const QString &name) const override;
    FileStatus status(const QString &path) const override;
    FileStatus status(const Descriptor &file) const override;
    QList<DirectoryEntry> list(const QString &folder) const override;
    QString realPath(const QString &path) const override;

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
    void startWriteBack(const Descriptor &file, qint64 offset, qint64 count) noexcept override;
    bool shareBytes(const Descriptor &from, const Descriptor &into) noexcept override;
    void setPermissions(const Descriptor &file, quint32 permissions) override;
    void sync(const Descriptor &file) override;
    void close(Descriptor &file) override;

    void createFolders(const QString &path) override;
    void createFolderAt(const Descriptor &folder, const QString &name) override;
    void renameAt(const Descriptor &folder, const QString &from, const QString &to,
                  Placing placing) override;
    void remove(const QString &path) override;
    void removeAt(const Descriptor &folder, const QString &name) override;
    void syncFolder(const Descriptor &folder) override;

    void syncVolume(const QString &path) override;
    MountedPath mountedPath(const Descriptor &file) const override;
    std::optional<QString> volumeUUID(const Mount &mount) const override;
    qint64 availableBytes(const QString &path) const override;

  protected:
    /// One system call, which may write fewer bytes. Without an offset, writes at the descriptor's
    /// position. Returns the number of bytes written.
    virtual qint64 writeOnce(const Descriptor &file, std::optional<qint64> offset,
                             const char *bytes, qint64 count);

  private:
    void writeAll(const Descriptor &file, std::optional<qint64> offset, const char *bytes,
                  qint64 count);
};

} // namespace corvane

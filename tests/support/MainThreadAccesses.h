#pragma once

#include "platform/SystemFileSystem.h"

#include <QCoreApplication>
#include <QStringList>
#include <QThread>

namespace corvane::test {

/// Records the file accesses by path of the main thread, which must never wait for a drive, from
/// its construction on.
class MainThreadAccesses : public SystemFileSystem {
  public:
    MainThreadAccesses() : m_scope(*this) {}

    /// The recorded accesses, such as "list /a/b", without repetitions. Clears the record. Main
    /// thread.
    QStringList take() const { return std::exchange(m_accesses, {}); }

    std::optional<FileStatus> linkStatus(const QString &path) const override {
        note("linkStatus", path);
        return SystemFileSystem::linkStatus(path);
    }
    std::optional<FileStatus> targetStatus(const QString &path) const override {
        note("targetStatus", path);
        return SystemFileSystem::targetStatus(path);
    }
    FileStatus status(const QString &path) const override {
        note("status", path);
        return SystemFileSystem::status(path);
    }
    QList<DirectoryEntry> list(const QString &folder) const override {
        note("list", folder);
        return SystemFileSystem::list(folder);
    }
    QString realPath(const QString &path) const override {
        note("realPath", path);
        return SystemFileSystem::realPath(path);
    }
    Descriptor openForReading(const QString &path, Links links) override {
        note("openForReading", path);
        return SystemFileSystem::openForReading(path, links);
    }
    void createFolders(const QString &path) override {
        note("createFolders", path);
        SystemFileSystem::createFolders(path);
    }
    qint64 availableBytes(const QString &path) const override {
        note("availableBytes", path);
        return SystemFileSystem::availableBytes(path);
    }

  private:
    void note(const char *operation, const QString &path) const {
        const QCoreApplication *const application = QCoreApplication::instance();
        const QString access = QLatin1String(operation) + QLatin1Char(' ') + path;
        if (application && QThread::currentThread() == application->thread() &&
            !m_accesses.contains(access)) {
            m_accesses.append(access);
        }
    }

    mutable QStringList m_accesses;
    FileSystemScope m_scope;
};

} // namespace corvane::test

#include "platform/InstanceLock.h"

#include "platform/FileSystem.h"
#include "platform/Paths.h"

namespace corvane {

namespace {

QString describeHolder(const QLockFile &lock) {
    qint64 process = 0;
    QString host;
    QString program;
    if (!lock.getLockInfo(&process, &host, &program)) {
        return QStringLiteral("Another process");
    }
    return QStringLiteral("%1 (process %2 on %3)").arg(program).arg(process).arg(host);
}

} // namespace

InstanceLock::InstanceLock(const QString &dataFolder) {
    try {
        fileSystem().createFolders(dataFolder);
    } catch (const FileError &error) {
        throw Failure(QStringLiteral("Cannot create %1: %2").arg(dataFolder, error.description()));
    }
    m_lock = std::make_unique<QLockFile>(paths::joined(dataFolder, QStringLiteral("lock")));
    m_lock->setStaleLockTime(0); // a lock is stale when its process is gone, however old it is
    if (m_lock->tryLock(0)) {
        return;
    }
    if (m_lock->error() == QLockFile::LockFailedError) {
        throw AlreadyRunning(
            QStringLiteral("%1 is using Corvane's data in %2. Quit it, then try again.")
                .arg(describeHolder(*m_lock), dataFolder));
    }
    throw Failure(QStringLiteral("Cannot write to %1.").arg(dataFolder));
}

} // namespace corvane

#include "platform/InstanceLock.h"

#include "platform/Paths.h"

#include <QCoreApplication>
#include <QStringList>

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace corvane {

namespace {

/// The holder's program and process id, as `writeHolder` wrote them.
QString describeHolder(int lock) {
    QByteArray text(256, '\0');
    const ssize_t size = ::pread(lock, text.data(), size_t(text.size()), 0);
    const QStringList lines =
        QString::fromUtf8(text.left(std::max<ssize_t>(size, 0))).split(QLatin1Char('\n'));
    return lines.size() < 2 ? QStringLiteral("Another process")
                            : QStringLiteral("%1 (process %2)").arg(lines.at(1), lines.at(0));
}

/// Writes this process's id and program name to the lock file, a line each. Failures are ignored:
/// the text only serves the message of `AlreadyRunning`.
void writeHolder(int lock) {
    const QByteArray text = QByteArray::number(qint64(::getpid())) + '\n' +
                            QCoreApplication::applicationName().toUtf8() + '\n';
    if (::ftruncate(lock, 0) == 0) {
        [[maybe_unused]] const ssize_t written =
            ::pwrite(lock, text.constData(), size_t(text.size()), 0);
    }
}

} // namespace

InstanceLock::InstanceLock(const QString &dataFolder) {
    try {
        fileSystem().createFolders(dataFolder);
    } catch (const FileError &error) {
        throw Failure(QStringLiteral("Cannot create %1: %2").arg(dataFolder, error.description()));
    }
    const QString path = paths::joined(dataFolder, QStringLiteral("lock"));
    m_lock = Descriptor(
        ::open(path.toUtf8().constData(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0666), path);
    if (!m_lock.isOpen()) {
        throw Failure(QStringLiteral("Cannot write to %1: %2")
                          .arg(dataFolder, FileError(path, errno).description()));
    }
    if (::flock(m_lock.number(), LOCK_EX | LOCK_NB) == 0) {
        writeHolder(m_lock.number());
        return;
    }
    if (errno == EWOULDBLOCK) {
        throw AlreadyRunning(
            QStringLiteral("%1 is using Corvane's data in %2. Quit it, then try again.")
                .arg(describeHolder(m_lock.number()), dataFolder));
    }
    throw Failure(
        QStringLiteral("Cannot lock %1: %2").arg(dataFolder, FileError(path, errno).description()));
}

} // namespace corvane

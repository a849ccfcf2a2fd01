#include "document/DocumentLock.h"

#include "document/Project.h"
#include "platform/AtomicWrite.h"
#include "platform/Paths.h"

#include <QCoreApplication>
#include <QSysInfo>

#include <cerrno>
#include <csignal>

namespace corvane::DocumentLock {

namespace {

constexpr qint64 kLockFileLimit = qint64(64) << 10;

std::optional<Holder> readHolder(const QString &lock) {
    try {
        const QByteArray bytes =
            readAll(fileSystem().openForReading(lock, FileSystem::Links::Refuse), kLockFileLimit);
        if (bytes.size() > kLockFileLimit) {
            return std::nullopt;
        }
        return decodeJSON<Holder>(JSONDocument::parse(bytes).root());
    } catch (const Failure &) {
        return std::nullopt; // no lock, or none that this version understands
    }
}

/// True if the holder's process is one of this machine and has ended.
bool hasEnded(const Holder &holder) {
    return holder.host == QSysInfo::machineHostName() &&
           (holder.process <= 0 || (::kill(pid_t(holder.process), 0) != 0 && errno == ESRCH));
}

} // namespace

Holder thisProcess(const QDateTime &now) {
    return {.host = QSysInfo::machineHostName(),
            .user = qEnvironmentVariable("USER", QStringLiteral("Somebody")),
            .openedAt = now,
            .renewedAt = now,
            .process = QCoreApplication::applicationPid(),
            .session = newIdentifier()};
}

QString pathFor(const QString &projectFile) {
    const QString file = paths::resolvingLinks(projectFile);
    return paths::joined(paths::parentFolder(file),
                         QLatin1Char('.') + paths::lastComponent(file) + QStringLiteral(".lock"));
}

std::optional<Holder> otherHolder(const QString &projectFile, const QString &session,
                                  const QDateTime &now) {
    const auto holder = readHolder(pathFor(projectFile));
    const bool isOther =
        holder && holder->session != session && !hasEnded(*holder) &&
        holder->renewedAt.msecsTo(now) < std::chrono::milliseconds(kStaleAfter).count();
    return isOther ? holder : std::nullopt;
}

void write(const QString &projectFile, const Holder &holder) {
    const QString lock = pathFor(projectFile);
    const QString temporary = QStringLiteral(".tmp-") + holder.session;
    try {
        // Unlike `writeAtomically`, replaces no file that a link planted here leads to. Not synced:
        // a lock that a power cut damages is stale anyway.
        TemporaryFile file(OpenFolder::at(paths::parentFolder(lock)), temporary, 0666,
                           Durability::Later);
        const QByteArray bytes = encodeJSON(holder);
        file.write(bytes.constData(), bytes.size());
        file.finish();
        file.commit(paths::lastComponent(lock));
    } catch (const Failure &) {
        // Other machines are not warned. Their changes are noticed before the next save.
    }
}

void release(const QString &projectFile, const QString &session) {
    const QString lock = pathFor(projectFile);
    const auto holder = readHolder(lock);
    if (holder && holder->session == session) {
        try {
            fileSystem().remove(lock);
        } catch (const FileError &) {
            // It becomes stale.
        }
    }
}

} // namespace corvane::DocumentLock

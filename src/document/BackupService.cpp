#include "document/BackupService.h"

#include "document/ProjectFileIO.h"
#include "platform/AtomicWrite.h"
#include "platform/Paths.h"

#include <algorithm>

namespace corvane {

namespace {

const QString kSuffix = QStringLiteral(".corvane.bak");

struct Backup {
    QString path;
    FileTime modified;
};

QString stampOf(const QDateTime &date) {
    return isoDate::toText(date).replace(QLatin1Char(':'), QLatin1Char('-'));
}

/// True only for a text that `stampOf` returns: "Harbor.v2" is another project than "Harbor".
bool isStamp(QString text) {
    const QString stamp = text;
    for (const int colon : {13, 16}) {
        if (colon < text.size()) {
            text[colon] = QLatin1Char(':');
        }
    }
    const auto date = isoDate::fromText(text.toUtf8());
    return date && stampOf(*date) == stamp;
}

QList<Backup> backupsOf(const QString &folder, const QString &stem) {
    const QString start = stem + QLatin1Char('.');
    QList<Backup> backups;
    const QList<DirectoryEntry> entries = fileSystem().list(folder);
    for (const DirectoryEntry &entry : entries) {
        const qsizetype stampSize = entry.name.size() - start.size() - kSuffix.size();
        if (!entry.hasValidName || !entry.name.startsWith(start) || !entry.name.endsWith(kSuffix) ||
            !isStamp(entry.name.mid(start.size(), stampSize))) {
            continue;
        }
        const QString path = paths::joined(folder, entry.name);
        if (const auto status = fileSystem().linkStatus(path)) {
            backups.append({path, status->modified});
        }
    }
    return backups;
}

/// Removes all but the newest backups, by modification time and then by the timestamp in the name.
/// Always keeps `written`: after a clock was set back, it may have an earlier date than the others.
void rotate(const QString &folder, const QString &stem, const QString &written) {
    QList<Backup> backups = backupsOf(folder, stem);
    backups.removeIf([&written](const Backup &backup) { return backup.path == written; });
    std::ranges::sort(backups, std::ranges::greater(),
                      [](const Backup &backup) { return std::pair(backup.modified, backup.path); });
    for (const Backup &old : backups.mid(BackupService::kKeptBackups - 1)) {
        try {
            fileSystem().remove(old.path);
        } catch (const FileError &) {
            // The next backup tries again.
        }
    }
}

} // namespace

BackupService::BackupError BackupService::BackupError::writeFailed(const QString &file,
                                                                   const QString &error) {
    return BackupError(QStringLiteral("Backup write failed at %1: %2").arg(file, error));
}

BackupService::BackupService(Clock &clock)
    : m_clock(clock), m_executor(QStringLiteral("BackupService")) {}

QCoro::Task<QString> BackupService::write(Project project) {
    co_return co_await m_executor.run(
        [project = std::move(project), now = m_clock.now()] { return writeNow(project, now); });
}

QString BackupService::writeNow(const Project &project, const QDateTime &now) {
    const QString folder = paths::parentFolder(project.filePath);
    const QString stem = paths::split(paths::lastComponent(project.filePath)).stem;
    const QString path = paths::joined(folder, stem + QLatin1Char('.') + stampOf(now) + kSuffix);
    try {
        writeAtomically(path, encodeJSON(project));
    } catch (const Failure &error) {
        throw BackupError::writeFailed(path, error.description());
    }
    try {
        rotate(folder, stem, path);
    } catch (const FileError &) {
        // The folder can't be listed, so no backup is removed.
    }
    return path;
}

} // namespace corvane

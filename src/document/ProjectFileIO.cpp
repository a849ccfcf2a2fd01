#include "document/ProjectFileIO.h"

#include "document/ProjectMigration.h"
#include "platform/AtomicWrite.h"
#include "platform/Paths.h"

#include <cerrno>

namespace corvane {

namespace {

QString megabytes(qint64 bytes) {
    return QString::asprintf("%.0f MB", double(bytes) / double(qint64(1) << 20));
}

QString fullerFileText(const QString &what, qsizetype inMemory, qsizetype onDisk) {
    return QStringLiteral("Save aborted: in-memory has %1 %2 but disk has %3. Refusing to "
                          "overwrite a fuller file.")
        .arg(QString::number(inMemory), what, QString::number(onDisk));
}

/// Decodes a document of any supported version. An older one is converted to a tree, migrated, and
/// encoded again for the decoder.
Project decodeDocument(const QString &file, const JSONDocument &document) {
    using LoadError = ProjectFileIO::LoadError;
    const qint64 version = ProjectMigration::schemaVersion(document.root());
    if (version > kCurrentSchemaVersion) {
        throw LoadError::unknownFutureSchema(file, version);
    }
    try {
        if (version == kCurrentSchemaVersion) {
            return decodeJSON<Project>(document.root());
        }
        JSONValue value = document.root().toValue();
        ProjectMigration::migrate(*value.object());
        return decodeJSON<Project>(
            JSONDocument::parse(encodeJSON(value, JSONWriter::Style::Compact)).root());
    } catch (const Failure &error) {
        throw LoadError::decodeFailed(file, error.description());
    }
}

QByteArray readProjectFile(const QString &file) {
    using LoadError = ProjectFileIO::LoadError;
    if (const auto status = fileSystem().targetStatus(file)) {
        if (status->type != FileType::Regular) {
            throw LoadError::notAProjectFile(file);
        }
        if (status->size > ProjectFileIO::kFileLimit) {
            throw LoadError::fileTooLarge(file, status->size, ProjectFileIO::kFileLimit);
        }
    }
    try {
        QByteArray bytes = readAll(file, ProjectFileIO::kFileLimit);
        if (bytes.size() > ProjectFileIO::kFileLimit) {
            throw LoadError::fileTooLarge(file, bytes.size(), ProjectFileIO::kFileLimit);
        }
        return bytes;
    } catch (const FileError &error) {
        throw LoadError::readFailed(file, error);
    }
}

Project decodeProjectFile(const QString &file, QByteArray bytes) {
    using LoadError = ProjectFileIO::LoadError;
    JSONDocument document;
    try {
        document = JSONDocument::parse(std::move(bytes));
    } catch (const JSONSyntaxError &) {
        throw LoadError::invalidJSON(file);
    }
    if (document.root().kind() != JSONView::Kind::Object) {
        throw LoadError::invalidJSON(file);
    }
    Project project = decodeDocument(file, document);
    project.filePath = file;
    return project;
}

/// The status is read first: if another program replaces the file meanwhile, the next save compares
/// the contents.
ProjectFileIO::OpenedProject openProjectFile(const QString &file) {
    const auto status = fileSystem().targetStatus(file);
    QByteArray bytes = readProjectFile(file);
    const auto baseline = std::make_shared<FileBaseline>();
    baseline->setRead(status.value_or(FileStatus()), bytes);
    const qint64 size = bytes.size();
    return {decodeProjectFile(file, std::move(bytes)), baseline, size};
}

/// False only if the file certainly doesn't exist; a path that no file can have is left for the
/// write to report. Throws `SaveError` if the status can't be read: an existing file might be
/// overwritten otherwise.
bool existsOnDisk(const QString &file) {
    try {
        fileSystem().status(file);
        return true;
    } catch (const FileError &error) {
        if (error.code() == ENOENT || error.code() == ENOTDIR || error.code() == ENAMETOOLONG ||
            error.code() == EINVAL) {
            return false;
        }
        throw ProjectFileIO::SaveError::diskCorruptAbort(
            file, ProjectFileIO::LoadError::readFailed(file, error));
    }
}

/// A missing file is written again, except on another volume: while the file's volume isn't
/// mounted, its mount point is a folder of the system's disk.
void requireSameVolume(const QString &file, const FileBaseline &baseline) {
    const auto folder = fileSystem().targetStatus(paths::parentFolder(file));
    if (folder && folder->device != baseline.device()) {
        throw ProjectFileIO::SaveError::writeFailed(
            file, QStringLiteral("The volume that contained it is no longer connected."));
    }
}

/// Throws `SaveError` if the file isn't what the document was read from or last written to.
void requireUnchanged(const QString &file, FileBaseline &baseline) {
    using LoadError = ProjectFileIO::LoadError;
    using SaveError = ProjectFileIO::SaveError;
    using Match = FileBaseline::Match;
    if (!baseline.isKnown()) {
        return;
    }
    if (!existsOnDisk(file)) {
        requireSameVolume(file, baseline);
        return;
    }
    Match match = Match::Changed;
    try {
        if (const auto status = fileSystem().targetStatus(file)) {
            match = baseline.match(*status);
            if (match == Match::Uncertain) {
                match = baseline.match(*status, readProjectFile(file));
            }
        }
    } catch (const LoadError &error) {
        if (error.kind() == LoadError::Kind::readFailed) {
            throw SaveError::diskCorruptAbort(file, error);
        }
        // Another kind of file, or one that is too large.
    }
    if (match != Match::Same) {
        throw SaveError::changedOnDisk(file);
    }
}

} // namespace

using LoadError = ProjectFileIO::LoadError;
using SaveError = ProjectFileIO::SaveError;

LoadError LoadError::readFailed(const QString &file, const FileError &error) {
    LoadError failure(Kind::readFailed,
                      QStringLiteral("Failed to read %1: %2").arg(file, error.description()));
    failure.m_isMissingFile = error.isMissingFile();
    return failure;
}

LoadError LoadError::invalidJSON(const QString &file) {
    return {Kind::invalidJSON,
            QStringLiteral("%1 is not a valid `.corvane` JSON document.").arg(file)};
}

LoadError LoadError::decodeFailed(const QString &file, const QString &error) {
    return {Kind::decodeFailed, QStringLiteral("Failed to decode %1: %2").arg(file, error)};
}

LoadError LoadError::unknownFutureSchema(const QString &file, qint64 version) {
    return {
        Kind::unknownFutureSchema,
        QStringLiteral("%1 uses schema version %2, which is newer than this build supports (7). "
                       "Update Corvane to open this file.")
            .arg(file, QString::number(version))};
}

LoadError LoadError::notAProjectFile(const QString &file) {
    return {Kind::notAProjectFile,
            QStringLiteral("%1 is not a file. Pick the `.corvane` file itself.").arg(file)};
}

LoadError LoadError::fileTooLarge(const QString &file, qint64 bytes, qint64 limit) {
    return {
        Kind::fileTooLarge,
        QStringLiteral("%1 is %2, past the %3 limit for a `.corvane` file. Opening it would run "
                       "Corvane out of memory. If this is a real project, it's corrupt — open "
                       "the `.corvane.bak` next to it instead.")
            .arg(file, megabytes(bytes), megabytes(limit))};
}

SaveError SaveError::diskGuardTripped(qsizetype inMemoryVideos, qsizetype onDiskVideos) {
    return {Kind::diskGuardTripped,
            fullerFileText(QStringLiteral("videos"), inMemoryVideos, onDiskVideos)};
}

SaveError SaveError::diskGuardTrippedSubclips(qsizetype inMemory, qsizetype onDisk) {
    return {Kind::diskGuardTrippedSubclips,
            fullerFileText(QStringLiteral("subclips"), inMemory, onDisk)};
}

SaveError SaveError::diskCorruptAbort(const QString &file, const LoadError &error) {
    return {
        Kind::diskCorruptAbort,
        QStringLiteral("Save aborted: existing %1 is corrupt or unreadable (%2). Inspect the file "
                       "and recover from a `.corvane.bak` if needed.")
            .arg(file, error.description())};
}

SaveError SaveError::writeFailed(const QString &file, const QString &error) {
    return {Kind::writeFailed, QStringLiteral("Failed to write %1: %2").arg(file, error)};
}

SaveError SaveError::changedOnDisk(const QString &file) {
    return {Kind::changedOnDisk,
            QStringLiteral("Save aborted: %1 was changed by another program after it was last read "
                           "or saved here. It was not overwritten.")
                .arg(file)};
}

ProjectFileIO::ProjectFileIO() : m_executor(QStringLiteral("ProjectFileIO")) {}

QCoro::Task<Project> ProjectFileIO::load(QString file) {
    co_return co_await m_executor.run([file] { return loadNow(file); });
}

QCoro::Task<ProjectFileIO::OpenedProject> ProjectFileIO::open(QString file) {
    co_return co_await m_executor.run([file] { return openProjectFile(file); });
}

QCoro::Task<qint64> ProjectFileIO::save(Project project, QString file, bool allowDecrease,
                                        std::shared_ptr<FileBaseline> baseline) {
    co_return co_await m_executor.run(
        [this, project = std::move(project), file, allowDecrease, baseline] {
            return saveNow(project, file, allowDecrease, baseline.get());
        });
}

Project ProjectFileIO::loadNow(const QString &file) {
    return decodeProjectFile(file, readProjectFile(file));
}

std::optional<ProjectFileIO::Stamp> ProjectFileIO::readStamp(const QString &file) {
    const auto status = fileSystem().targetStatus(file);
    return status ? std::optional(Stamp{status->inode, status->modified}) : std::nullopt;
}

qint64 ProjectFileIO::saveNow(Project project, const QString &file, bool allowDecrease,
                              FileBaseline *baseline) {
    project.filePath = file;
    project.schemaVersion = kCurrentSchemaVersion;
    if (baseline) {
        requireUnchanged(file, *baseline);
    }
    if (!allowDecrease) {
        guardDisk(project, file);
    }
    try {
        const QByteArray bytes = encodeJSON(project);
        if (bytes.size() > kFileLimit) {
            throw SaveError::writeFailed(
                file,
                QStringLiteral("The document would be %1 bytes, past the %2 limit beyond which "
                               "it could not be opened again.")
                    .arg(bytes.size())
                    .arg(megabytes(kFileLimit)));
        }
        if (baseline) {
            baseline->setWriting(bytes);
        }
        // The stamp is that of the written file, not of the path: another program may have replaced
        // the file since.
        const FileStatus written = writeAtomically(file, bytes);
        m_diskGuardCache.insert(
            file,
            {{written.inode, written.modified}, project.videos.size(), project.subclipCount()});
        if (baseline) {
            baseline->setWritten(written);
        }
        return bytes.size();
    } catch (const SaveError &) {
        throw;
    } catch (const Failure &error) {
        throw SaveError::writeFailed(file, error.description());
    }
}

void ProjectFileIO::guardDisk(const Project &project, const QString &file) {
    const auto onDisk = existsOnDisk(file) ? contentsOnDisk(file) : std::nullopt;
    if (!onDisk) {
        return;
    }
    if (project.videos.size() < onDisk->videos) {
        throw SaveError::diskGuardTripped(project.videos.size(), onDisk->videos);
    }
    if (project.subclipCount() < onDisk->subclips) {
        throw SaveError::diskGuardTrippedSubclips(project.subclipCount(), onDisk->subclips);
    }
}

/// Reads the file unless its current version is cached. Returns nullopt if it no longer exists.
std::optional<ProjectFileIO::DiskGuardStamp> ProjectFileIO::contentsOnDisk(const QString &file) {
    const auto stamp = readStamp(file);
    const auto known = m_diskGuardCache.constFind(file);
    if (stamp && known != m_diskGuardCache.cend() && known->isSameVersion(*stamp)) {
        return *known;
    }
    ++m_fullReloads;
    try {
        const Project project = loadNow(file);
        const DiskGuardStamp found{stamp.value_or(Stamp()), project.videos.size(),
                                   project.subclipCount()};
        if (stamp) {
            m_diskGuardCache.insert(file, found);
        }
        return found;
    } catch (const LoadError &error) {
        if (error.isMissingFile()) {
            return std::nullopt;
        }
        throw SaveError::diskCorruptAbort(file, error);
    }
}

} // namespace corvane

#include "platform/AtomicWrite.h"

#include "platform/Paths.h"

#include <QUuid>

#include <cerrno>

namespace corvane {

namespace {

/// Bytes between two write-back hints. They keep the disk busy while a large file is written and
/// the sync at the end short.
constexpr qint64 kWriteBackStep = qint64(8) << 20;

/// Sets the permissions if the file system supports them; some network and FUSE mounts don't.
void keepPermissions(const Descriptor &file, quint32 permissions) {
    try {
        if (fileSystem().status(file).permissions != permissions) {
            fileSystem().setPermissions(file, permissions);
        }
    } catch (const FileError &error) {
        if (error.code() != EPERM && error.code() != ENOTSUP && error.code() != ENOSYS) {
            throw;
        }
    }
}

} // namespace

TemporaryFile::TemporaryFile(QString path, quint32 permissions, Durability durability)
    : m_path(std::move(path)),
      m_durability(durability),
      m_file(fileSystem().createForWriting(m_path, permissions)) {}

TemporaryFile::~TemporaryFile() {
    if (m_isCommitted) {
        return;
    }
    m_file = Descriptor();
    try {
        fileSystem().remove(m_path);
    } catch (const FileError &) {
        // A leftover hidden file does no harm, and a destructor can't report.
    }
}

void TemporaryFile::write(const char *bytes, qint64 count) {
    fileSystem().write(m_file, bytes, count);
    m_written += count;
    if (m_written - m_handedToDisk >= kWriteBackStep) {
        fileSystem().startWriteBack(m_file, m_handedToDisk, m_written - m_handedToDisk);
        m_handedToDisk = m_written;
    }
}

FileStatus TemporaryFile::finish() {
    if (m_durability == Durability::Synced) {
        fileSystem().sync(m_file);
    }
    const FileStatus status = fileSystem().status(m_file);
    fileSystem().close(m_file);
    return status;
}

void TemporaryFile::commit(const QString &target) {
    const auto existing = fileSystem().linkStatus(target);
    if (existing && existing->type != FileType::Regular) {
        throw FileError(target, EEXIST);
    }
    if (existing) {
        fileSystem().rename(m_path, target);
    } else {
        fileSystem().renameToFreeName(m_path, target);
    }
    m_isCommitted = true;
    if (m_durability == Durability::Synced) {
        fileSystem().syncFolder(paths::parentFolder(target));
    }
}

FileStatus writeAtomically(const QString &path, const QByteArray &bytes) {
    const auto link = fileSystem().linkStatus(path);
    const bool isLink = link && link->type == FileType::SymbolicLink;
    const QString target = isLink ? fileSystem().realPath(path) : path;
    const auto existing = isLink ? fileSystem().linkStatus(target) : link;
    const QString name =
        QStringLiteral(".tmp-") + QUuid::createUuid().toString(QUuid::WithoutBraces);
    TemporaryFile file(paths::joined(paths::parentFolder(target), name));
    if (existing && existing->type == FileType::Regular) {
        keepPermissions(file.descriptor(), existing->permissions);
    }
    file.write(bytes.constData(), bytes.size());
    const FileStatus written = file.finish();
    file.commit(target);
    return written;
}

} // namespace corvane

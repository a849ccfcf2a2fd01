#include "platform/AtomicWrite.h"

#include "platform/Paths.h"

#include <QUuid>

#include <cerrno>

namespace corvane {

namespace {

/// So much is written before the system is asked to begin storing it. It keeps the sync at the end
/// of a large file short, and the disk busy meanwhile.
constexpr qint64 kWriteBackStep = qint64(8) << 20;

/// Network and FUSE mounts that know no permissions refuse to set them; the file is as good there.
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
        // The name is hidden and holds nothing that anyone needs; there is nobody to tell.
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

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

QString temporaryName() {
    return QStringLiteral(".tmp-") + QUuid::createUuid().toString(QUuid::WithoutBraces);
}

FileStatus fillAndCommit(TemporaryFile &file, const QByteArray &bytes, const QString &name,
                         Placing placing) {
    file.write(bytes.constData(), bytes.size());
    const FileStatus written = file.finish();
    file.commit(name, placing);
    return written;
}

} // namespace

TemporaryFile::TemporaryFile(OpenFolder folder, QString name, quint32 permissions,
                             Durability durability)
    : m_folder(std::move(folder)),
      m_name(std::move(name)),
      m_durability(durability),
      m_file(fileSystem().createFileAt(m_folder.descriptor(), m_name, permissions)) {}

TemporaryFile::~TemporaryFile() {
    if (m_isCommitted) {
        return;
    }
    m_file = Descriptor();
    try {
        fileSystem().removeAt(m_folder.descriptor(), m_name);
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

void TemporaryFile::commit(const QString &target, Placing placing) {
    fileSystem().renameAt(m_folder.descriptor(), m_name, target, placing);
    m_isCommitted = true;
    if (m_durability == Durability::Synced) {
        fileSystem().syncFolder(m_folder.descriptor());
    }
}

FileStatus writeAtomically(const QString &path, const QByteArray &bytes) {
    const auto link = fileSystem().linkStatus(path);
    const bool isLink = link && link->type == FileType::SymbolicLink;
    const QString target = isLink ? fileSystem().realPath(path) : path;
    const auto existing = isLink ? fileSystem().linkStatus(target) : link;
    TemporaryFile file(OpenFolder::at(paths::parentFolder(target)), temporaryName());
    if (existing && existing->type == FileType::Regular) {
        keepPermissions(file.descriptor(), existing->permissions);
    }
    return fillAndCommit(file, bytes, paths::lastComponent(target), Placing::mayReplaceRegular);
}

FileStatus writeAtomically(const OpenFolder &folder, const QString &name, const QByteArray &bytes,
                           Placing placing) {
    TemporaryFile file(folder, temporaryName());
    return fillAndCommit(file, bytes, name, placing);
}

} // namespace corvane

#include "trust/HashedFile.h"

#include "trust/ContentHasher.h"

namespace corvane {

using ContentHasher::HashError;

namespace {

Descriptor openedForHashing(const QString &path) {
    try {
        return fileSystem().openForReading(path, FileSystem::Links::Refuse);
    } catch (const FileError &error) {
        throw HashError::readFailed(path, error.description());
    }
}

FileStatus statusForHashing(const Descriptor &file) {
    try {
        return fileSystem().status(file);
    } catch (const FileError &error) {
        throw HashError::statFailed(file.path(), error.description());
    }
}

} // namespace

HashedFile::HashedFile(const QString &path) : m_file(openedForHashing(path)) {
    const FileStatus status = statusForHashing(m_file);
    if (status.type != FileType::Regular) {
        throw HashError::notARegularFile(path);
    }
    m_size = status.size;
}

QByteArray HashedFile::readAt(qint64 offset, qint64 most) const {
    QByteArray bytes(most, Qt::Uninitialized);
    qint64 filled = 0;
    try {
        while (filled < most) {
            const qint64 got =
                fileSystem().readAt(m_file, offset + filled, bytes.data() + filled, most - filled);
            if (got == 0) {
                break;
            }
            filled += got;
        }
    } catch (const FileError &error) {
        throw HashError::readFailed(m_file.path(), error.description());
    }
    bytes.truncate(filled);
    return bytes;
}

qint64 HashedFile::read(char *into, qint64 most) const {
    try {
        return fileSystem().read(m_file, into, most);
    } catch (const FileError &error) {
        throw HashError::readFailed(m_file.path(), error.description());
    }
}

} // namespace corvane

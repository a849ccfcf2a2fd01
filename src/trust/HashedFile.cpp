#include "trust/HashedFile.h"

#include "trust/ContentHasher.h"

namespace corvane {

using ContentHasher::HashError;

namespace {

Descriptor openForHashing(const QString &path) {
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

HashedFile::HashedFile(const QString &path) : m_file(openForHashing(path)) {
    const FileStatus status = statusForHashing(m_file);
    if (status.type != FileType::Regular) {
        throw HashError::notARegularFile(path);
    }
    m_size = status.size;
}

QByteArray HashedFile::readAt(qint64 offset, qint64 length) const {
    QByteArray bytes(length, Qt::Uninitialized);
    qint64 bytesRead = 0;
    try {
        while (bytesRead < length) {
            const qint64 count = fileSystem().readAt(m_file, offset + bytesRead,
                                                     bytes.data() + bytesRead, length - bytesRead);
            if (count == 0) {
                break;
            }
            bytesRead += count;
        }
    } catch (const FileError &error) {
        throw HashError::readFailed(m_file.path(), error.description());
    }
    bytes.truncate(bytesRead);
    return bytes;
}

qint64 HashedFile::read(char *buffer, qint64 capacity) const {
    try {
        return fileSystem().read(m_file, buffer, capacity);
    } catch (const FileError &error) {
        throw HashError::readFailed(m_file.path(), error.description());
    }
}

} // namespace corvane

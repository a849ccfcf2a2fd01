#include "trust/HashedFile.h"

#include "trust/ContentHasher.h"

namespace corvane {

using ContentHasher::HashError;

namespace {

/// Calls a function that reads from a file. Converts its `FileError` to `HashError::readFailed`.
template <typename Call> auto reading(const QString &path, Call call) {
    try {
        return call();
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

HashedFile::HashedFile(const QString &path)
    : m_file(reading(
          path, [&path] { return fileSystem().openForReading(path, FileSystem::Links::Refuse); })) {
    const FileStatus status = statusForHashing(m_file);
    if (status.type != FileType::Regular) {
        throw HashError::notARegularFile(path);
    }
    m_size = status.size;
}

QByteArray HashedFile::readAt(qint64 offset, qint64 length) const {
    QByteArray bytes(length, Qt::Uninitialized);
    qint64 bytesRead = 0;
    while (bytesRead < length) {
        const qint64 count = reading(m_file.path(), [&] {
            return fileSystem().readAt(m_file, offset + bytesRead, bytes.data() + bytesRead,
                                       length - bytesRead);
        });
        if (count == 0) {
            break;
        }
        bytesRead += count;
    }
    bytes.truncate(bytesRead);
    return bytes;
}

qint64 HashedFile::read(char *buffer, qint64 capacity) const {
    return reading(m_file.path(), [&] { return fileSystem().read(m_file, buffer, capacity); });
}

} // namespace corvane

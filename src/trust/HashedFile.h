#pragma once

#include "platform/ApplicationEnd.h"
#include "platform/BlockBuffer.h"
#include "platform/FileSystem.h"

namespace corvane {

/// A regular file opened for hashing. The type check and all reads use one descriptor, and a
/// symbolic link in the last component is refused. All functions throw
/// `ContentHasher::HashError`.
class HashedFile {
  public:
    explicit HashedFile(const QString &path);

    qint64 size() const { return m_size; } ///< bytes, as of opening

    /// Calls `each(bytes, count)` for consecutive blocks of the entire file, of at most 1 MiB each.
    /// Call it only once: it moves the read position. Throws `Cancelled` when the application ends.
    template <typename Each> void forEachBlock(Each each) const {
        const BlockBuffer block;
        while (const qint64 count = read(block.data(), BlockBuffer::kSize)) {
            if (applicationEnd::isRequested()) {
                throw Cancelled();
            }
            each(block.data(), count);
        }
    }
    /// Returns `length` bytes from `offset`, or fewer at the end of the file.
    QByteArray readAt(qint64 offset, qint64 length) const;

  private:
    qint64 read(char *buffer, qint64 capacity) const;

    Descriptor m_file;
    qint64 m_size = 0;
};

} // namespace corvane

#pragma once

#include "platform/BlockBuffer.h"
#include "platform/FileSystem.h"

namespace corvane {

/// A regular file that is being hashed, open on one descriptor: what was tested is what is read. A
/// link in the last component isn't followed. Everything throws `ContentHasher::HashError`.
class HashedFile {
  public:
    explicit HashedFile(const QString &path);

    /// As it was when the file was opened.
    qint64 size() const { return m_size; }

    /// Calls `each(bytes, count)` for the file from its start to its end, in blocks of at most 1
    /// MiB. Once for each file.
    template <typename Each> void forEachBlock(Each each) const {
        const BlockBuffer block;
        while (const qint64 count = read(block.data(), BlockBuffer::kSize)) {
            each(block.data(), count);
        }
    }
    /// Up to `most` bytes from there; fewer only where the file ends.
    QByteArray readAt(qint64 offset, qint64 most) const;

  private:
    qint64 read(char *into, qint64 most) const;

    Descriptor m_file;
    qint64 m_size = 0;
};

} // namespace corvane

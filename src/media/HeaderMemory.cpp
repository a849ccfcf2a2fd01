#include "media/HeaderMemory.h"

#include "media/HeaderMemoryEstimator.h"
#include "platform/FileSystem.h"

#include <algorithm>
#include <array>

namespace corvane::media {

namespace {

/// Allowance for small tables in any file, plus bytes of memory per byte of the file: an index
/// entry takes some 60 bytes with all its tables and stands for more than two bytes of a valid
/// file. The maximum covers thirty million samples, which is twenty hours of video with six audio
/// tracks.
constexpr qint64 kBaseAllowance = qint64(16) << 20;
constexpr qint64 kMemoryPerByte = 32;
constexpr qint64 kMaxAllowance = qint64(2) << 30;

/// Buffers small reads at offsets close to each other.
class BufferedFile {
  public:
    explicit BufferedFile(const QString &path)
        : m_file(fileSystem().openForReading(path, FileSystem::Links::Follow)) {}

    qint64 size() const { return fileSystem().status(m_file).size; }

    qint64 read(qint64 offset, char *buffer, qint64 size) {
        if (size > qint64(m_bytes.size())) {
            return fileSystem().readAt(m_file, offset, buffer, size);
        }
        if (offset < m_begin || offset + size > m_begin + m_count) {
            m_begin = offset;
            m_count = fileSystem().readAt(m_file, offset, m_bytes.data(), qint64(m_bytes.size()));
        }
        const qint64 count = std::min(size, m_begin + m_count - offset);
        std::copy_n(m_bytes.data() + (offset - m_begin), count, buffer);
        return count;
    }

  private:
    Descriptor m_file;
    std::array<char, 512> m_bytes{};
    qint64 m_begin = 0;
    qint64 m_count = 0;
};

} // namespace

qint64 estimatedHeaderMemory(const QString &path, const std::stop_token &stop) {
    BufferedFile file(path);
    HeaderMemoryEstimator estimator(
        [&file](qint64 offset, char *buffer, qint64 size) {
            return file.read(offset, buffer, size);
        },
        stop);
    estimator.parse(file.size());
    return estimator.total();
}

qint64 allowedHeaderMemory(qint64 fileSize) {
    return std::min(kBaseAllowance + std::min(fileSize, kMaxAllowance) * kMemoryPerByte,
                    kMaxAllowance);
}

} // namespace corvane::media

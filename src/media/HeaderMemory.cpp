#include "media/HeaderMemory.h"

#include "media/HeaderMemoryEstimator.h"
#include "platform/FileSystem.h"

#include <algorithm>
#include <array>

namespace corvane::media {

namespace {

/// What little tables take in any file, then so much for each byte of it: an entry of the index is
/// some 60 bytes with all tables, and an honest one stands for more than two bytes of the file. At
/// most as much as thirty million samples take: twenty hours of film with sound in six tracks.
constexpr qint64 kFreeClaim = qint64(16) << 20;
constexpr qint64 kClaimPerByte = 32;
constexpr qint64 kLargestClaim = qint64(2) << 30;

/// Reads little pieces that mostly lie beside each other.
class Window {
  public:
    explicit Window(const QString &path)
        : m_file(fileSystem().openForReading(path, FileSystem::Links::Follow)) {}

    qint64 size() const { return fileSystem().status(m_file).size; }

    qint64 read(qint64 offset, char *into, qint64 most) {
        if (most > qint64(m_bytes.size())) {
            return fileSystem().readAt(m_file, offset, into, most);
        }
        if (offset < m_begin || offset + most > m_begin + m_count) {
            m_begin = offset;
            m_count = fileSystem().readAt(m_file, offset, m_bytes.data(), qint64(m_bytes.size()));
        }
        const qint64 given = std::min(most, m_begin + m_count - offset);
        std::copy_n(m_bytes.data() + (offset - m_begin), given, into);
        return given;
    }

  private:
    Descriptor m_file;
    std::array<char, 512> m_bytes{};
    qint64 m_begin = 0;
    qint64 m_count = 0;
};

} // namespace

qint64 estimatedHeaderMemory(const QString &path, const std::stop_token &stop) {
    Window window(path);
    HeaderMemoryEstimator survey([&window](qint64 offset, char *into,
                                           qint64 most) { return window.read(offset, into, most); },
                                 stop);
    survey.add(window.size());
    return survey.total();
}

qint64 allowedHeaderMemory(qint64 fileSize) {
    return std::min(kFreeClaim + std::min(fileSize, kLargestClaim) * kClaimPerByte, kLargestClaim);
}

} // namespace corvane::media

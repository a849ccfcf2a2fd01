#pragma once

#include "platform/Sha256.h"
#include "trust/HashedFile.h"

#include <QList>

namespace corvane {

/// The digest of the two older anchor forms: SHA-256 over the salt (none in the bare form), the
/// sampled bytes and the file's size. A file of up to 2 MiB is taken whole. Of a larger one the
/// first MiB is taken, then 64 KiB at each of three places, then the last MiB; any of them may
/// overlap. The places follow from the salt, and lie at the quarters where there is none.

/// The places of a large file that the digest covers, in its order.
struct SampledRange {
    qint64 offset = 0;
    qint64 length = 0;

    bool operator==(const SampledRange &) const = default;
};
QList<SampledRange> sampledRanges(qint64 size, const QByteArray &salt);

/// Reads no more of the file than the digest covers. Throws `ContentHasher::HashError`.
QString sampledDigest(const HashedFile &file, const QByteArray &salt);

/// Takes the same digest from a file that passes by once from start to end. What it holds meanwhile
/// is the sampled bytes, however large the file.
class PassingSampledDigest {
  public:
    PassingSampledDigest(qint64 size, const QByteArray &salt);

    void update(const char *bytes, qint64 count);
    /// The 64 hex digits. The digest is used up.
    QString finalizeDigest();

  private:
    qint64 m_size;
    qint64 m_passed = 0;
    Sha256 m_hasher;
    QList<SampledRange> m_ranges; ///< empty for a small file, which is hashed as it passes
    QList<QByteArray> m_held;     ///< what has passed of each range
};

/// What every form ends in: the length as 8 bytes, little-endian. Gives the 64 hex digits.
QString digestWithLength(Sha256 &hasher, quint64 length);

} // namespace corvane

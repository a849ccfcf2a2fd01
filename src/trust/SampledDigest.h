#pragma once

#include "platform/Sha256.h"
#include "trust/HashedFile.h"

#include <QList>

namespace corvane {

/// A range of bytes in a file.
struct SampledRange {
    qint64 offset = 0;
    qint64 length = 0;
};

/// Returns the digest of the two older anchor formats: the SHA-256 of the salt, the sampled bytes
/// and the file's length, as hex digits. The salt is empty in the bare format. Throws
/// `ContentHasher::HashError`.
///
/// A file of up to 2 MiB is covered entirely. The samples of a larger file are its first MiB,
/// 64 KiB at each of three offsets, and its last MiB, and may overlap. The three offsets are at
/// fractions of the length: derived from the salt, or 0.25, 0.5 and 0.75 without one. Only the
/// samples are read.
QString sampledDigest(const HashedFile &file, const QByteArray &salt);

/// Computes the same digest from the bytes of an entire file, supplied in order. Buffers only the
/// samples.
class StreamingSampledDigest {
  public:
    StreamingSampledDigest(qint64 size, const QByteArray &salt);

    void update(const char *bytes, qint64 count);
    /// Returns the 64 hex digits. Call it once, last.
    QString finalizeDigest();

  private:
    qint64 m_size;
    qint64 m_position = 0;
    Sha256 m_hasher;
    QList<SampledRange> m_ranges; ///< empty for a small file, which is hashed entirely
    QList<QByteArray> m_samples;  ///< the bytes received so far, by range
};

/// Appends the length, as 8 bytes in little-endian order, and returns the 64 hex digits. Every
/// anchor's digest ends this way.
QString digestWithLength(Sha256 &hasher, quint64 length);

} // namespace corvane

#include "trust/SampledDigest.h"

#include <QtEndian>

#include <algorithm>
#include <array>

namespace corvane {

namespace {

constexpr qint64 kEndLength = qint64(1) << 20; ///< of the first and the last sample
constexpr qint64 kMiddleLength = qint64(64) << 10;
constexpr qint64 kMaxUnsampledSize = 2 * kEndLength;

/// Returns a fraction from 0.05 to 0.95. Stored anchors depend on its exact value, so the product
/// and the sum are rounded separately even if the processor has a fused multiply-add.
double derivedFraction(const QByteArray &salt, char index) {
#pragma STDC FP_CONTRACT OFF
    Sha256 hasher;
    hasher.update(salt);
    hasher.update(&index, 1);
    const auto number = qFromBigEndian<quint64>(hasher.finish().constData());
    return double(number) * 0x1p-64 * 0.9 + 0.05;
}

std::array<double, 3> fractions(const QByteArray &salt) {
    if (salt.isEmpty()) {
        return {0.25, 0.5, 0.75};
    }
    return {derivedFraction(salt, 0), derivedFraction(salt, 1), derivedFraction(salt, 2)};
}

/// The ranges of a large file in the order of the digest.
QList<SampledRange> sampledRanges(qint64 size, const QByteArray &salt) {
    QList<SampledRange> ranges{{0, kEndLength}};
    for (const double fraction : fractions(salt)) {
        const qint64 offset = std::min(qint64(fraction * double(size)), size - kMiddleLength);
        ranges.append({offset, kMiddleLength});
    }
    ranges.append({size - kEndLength, kEndLength});
    return ranges;
}

} // namespace

QString sampledDigest(const HashedFile &file, const QByteArray &salt) {
    Sha256 hasher;
    hasher.update(salt);
    if (file.size() <= kMaxUnsampledSize) {
        file.forEachBlock([&](const char *bytes, qint64 count) { hasher.update(bytes, count); });
    } else {
        const QList<SampledRange> ranges = sampledRanges(file.size(), salt);
        for (const SampledRange &range : ranges) {
            hasher.update(file.readAt(range.offset, range.length));
        }
    }
    return digestWithLength(hasher, quint64(file.size()));
}

StreamingSampledDigest::StreamingSampledDigest(qint64 size, const QByteArray &salt) : m_size(size) {
    m_hasher.update(salt);
    if (size > kMaxUnsampledSize) {
        m_ranges = sampledRanges(size, salt);
        m_samples.resize(m_ranges.size());
    }
}

void StreamingSampledDigest::update(const char *bytes, qint64 count) {
    if (m_ranges.isEmpty()) {
        m_hasher.update(bytes, count);
    }
    for (qsizetype index = 0; index < m_ranges.size(); ++index) {
        const SampledRange &range = m_ranges.at(index);
        const qint64 begin = std::max(range.offset, m_position);
        const qint64 end = std::min(range.offset + range.length, m_position + count);
        if (begin < end) {
            m_samples[index].append(bytes + (begin - m_position), end - begin);
        }
    }
    m_position += count;
}

QString StreamingSampledDigest::finalizeDigest() {
    for (const QByteArray &sample : std::as_const(m_samples)) {
        m_hasher.update(sample);
    }
    return digestWithLength(m_hasher, quint64(m_size));
}

QString digestWithLength(Sha256 &hasher, quint64 length) {
    std::array<char, sizeof length> bytes{};
    qToLittleEndian(length, bytes.data());
    hasher.update(bytes.data(), bytes.size());
    return QString::fromLatin1(hasher.finish().toHex());
}

} // namespace corvane

#include "trust/SampledDigest.h"

#include <QtEndian>

#include <algorithm>
#include <array>

namespace corvane {

namespace {

constexpr qint64 kEnd = qint64(1) << 20; ///< the head's and the tail's length
constexpr qint64 kMiddle = qint64(64) << 10;
constexpr qint64 kLargestWhole = 2 * kEnd;

/// Between 0.05 and 0.95. Stored anchors depend on every bit of it, so that the product and the sum
/// are each rounded, on processors that could do both in one step too.
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

} // namespace

QList<SampledRange> sampledRanges(qint64 size, const QByteArray &salt) {
    QList<SampledRange> ranges{{0, kEnd}};
    for (const double fraction : fractions(salt)) {
        ranges.append({std::min(qint64(fraction * double(size)), size - kMiddle), kMiddle});
    }
    ranges.append({size - kEnd, kEnd});
    return ranges;
}

QString sampledDigest(const HashedFile &file, const QByteArray &salt) {
    Sha256 hasher;
    hasher.update(salt);
    if (file.size() <= kLargestWhole) {
        file.forEachBlock([&](const char *bytes, qint64 count) { hasher.update(bytes, count); });
    } else {
        const QList<SampledRange> ranges = sampledRanges(file.size(), salt);
        for (const SampledRange &range : ranges) {
            hasher.update(file.readAt(range.offset, range.length));
        }
    }
    return digestWithLength(hasher, quint64(file.size()));
}

PassingSampledDigest::PassingSampledDigest(qint64 size, const QByteArray &salt) : m_size(size) {
    m_hasher.update(salt);
    if (size > kLargestWhole) {
        m_ranges = sampledRanges(size, salt);
        m_held.resize(m_ranges.size());
    }
}

void PassingSampledDigest::update(const char *bytes, qint64 count) {
    if (m_ranges.isEmpty()) {
        m_hasher.update(bytes, count);
    }
    for (qsizetype index = 0; index < m_ranges.size(); ++index) {
        const SampledRange &range = m_ranges.at(index);
        const qint64 begin = std::max(range.offset, m_passed);
        const qint64 end = std::min(range.offset + range.length, m_passed + count);
        if (begin < end) {
            m_held[index].append(bytes + (begin - m_passed), end - begin);
        }
    }
    m_passed += count;
}

QString PassingSampledDigest::finalizeDigest() {
    for (const QByteArray &held : std::as_const(m_held)) {
        m_hasher.update(held);
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

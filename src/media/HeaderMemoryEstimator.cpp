#include "media/HeaderMemoryEstimator.h"

#include "platform/Failure.h"

#include <QtEndian>

#include <algorithm>
#include <array>
#include <utility>

namespace corvane::media {

namespace {

/// As the library nests them.
constexpr int kDeepest = 12;
constexpr qint64 kLargestDescription = qint64(1) << 20;
constexpr qint64 kLargestInflated = qint64(16) << 20;

/// What one of each takes while a file is being opened.
constexpr qint64 kSampleBytes = 40;
constexpr qint64 kEditedSampleBytes = 32;
constexpr qint64 kEncryptedSampleBytes = 256;
constexpr qint64 kFragmentBytes = 64; ///< and as much for every track
constexpr qint64 kChapterBytes = qint64(128) << 10;
/// Of samples of sound that are a tick long so many make an entry of the index.
constexpr qint64 kSamplesTogether = 1024;

constexpr quint32 fourCC(const char (&name)[5]) {
    return quint32(uchar(name[0])) << 24 | quint32(uchar(name[1])) << 16 |
           quint32(uchar(name[2])) << 8 | uchar(name[3]);
}

constexpr quint32 kHolders[] = {
    fourCC("moov"), fourCC("trak"), fourCC("mdia"), fourCC("minf"), fourCC("stbl"), fourCC("edts"),
    fourCC("mvex"), fourCC("moof"), fourCC("traf"), fourCC("udta"), fourCC("wave"), fourCC("ilst"),
    fourCC("tref"), fourCC("dinf"), fourCC("sinf"), fourCC("schi"),
};

/// Tables whose number of entries follows their version and flags.
struct Table {
    quint32 type;
    qint64 entryBytes; ///< in memory
    qint64 countAt = 4;
};
constexpr Table kTables[] = {
    {fourCC("stts"), 8},
    {fourCC("ctts"), 8},
    {fourCC("stsc"), 12},
    {fourCC("stco"), 8},
    {fourCC("co64"), 8},
    {fourCC("stss"), 4},
    {fourCC("stps"), 4},
    {fourCC("keys"), 8},
    {fourCC("sbgp"), 8, 8},
    {fourCC("trun"), kSampleBytes},
    {fourCC("senc"), kEncryptedSampleBytes},
};

/// What tables can't be told apart from elsewhere, so a description that holds one isn't honest.
constexpr std::array<const char *, 12> kNotInDescriptions = {
    "stsz", "stz2", "stsc", "stco", "co64", "stts", "ctts", "elst", "trun", "senc", "moof", "cmov"};

} // namespace

/// Sound whose samples are a tick long is indexed by pieces of its chunks.
qint64 HeaderMemoryEstimator::Track::entries() const {
    if (!isTickLong || !hasSound || hasOther) {
        return samples;
    }
    const __int128 last = __int128(std::max<qint64>(chunks - lastRun + 1, 0)) * piecesEach;
    return qint64(std::min<__int128>(pieces + last, kBeyondBounds));
}

template <typename Number>
Number HeaderMemoryEstimator::number(const Box &box, qint64 offset) const {
    std::array<char, sizeof(Number)> bytes{};
    const qint64 count = sizeof(Number);
    if (offset < 0 || box.begin + offset + count > box.end ||
        m_read(box.begin + offset, bytes.data(), count) != count) {
        return 0;
    }
    return qFromBigEndian<Number>(bytes.data());
}

void HeaderMemoryEstimator::claim(qint64 count, qint64 bytes) {
    m_claim = qint64(std::min<__int128>(__int128(count) * bytes + m_claim, kBeyondBounds));
}

void HeaderMemoryEstimator::holder(const Box &holder, int depth) {
    if (depth > kDeepest) {
        return;
    }
    for (qint64 at = holder.begin; at + 8 <= holder.end;) {
        if (m_stop.stop_requested()) {
            throw Cancelled();
        }
        Box inner{.begin = at + 8, .end = holder.end};
        qint64 size = number<quint32>(holder, at - holder.begin);
        inner.type = number<quint32>(holder, at - holder.begin + 4);
        if (size == 1) {
            size = number<qint64>(holder, at - holder.begin + 8);
            inner.begin += 8;
        }
        if (size != 0) { // else it goes to the end
            if (size < inner.begin - at) {
                return;
            }
            inner.end = std::min(holder.end - at, size) + at;
        }
        box(inner, depth);
        at = inner.end;
    }
}

/// The library takes a movie for one that lies in a place left free.
bool HeaderMemoryEstimator::isMovie(const Box &box) const {
    const auto first = number<quint32>(box, 4);
    return (box.type == fourCC("free") || box.type == fourCC("hoov")) &&
           (first == fourCC("mvhd") || first == fourCC("cmov"));
}

void HeaderMemoryEstimator::box(const Box &box, int depth) {
    if (box.type == fourCC("trak")) {
        m_tracks.emplace_back();
    } else if (box.type == fourCC("moof")) {
        claim(qint64(m_tracks.size()), kFragmentBytes);
    }
    if (std::ranges::find(kHolders, box.type) != std::end(kHolders) || isMovie(box)) {
        holder(box, depth + 1);
    } else if (box.type == fourCC("meta")) {
        metadata(box, depth);
    } else if (box.type == fourCC("cmov")) {
        compressed(box, depth);
    } else if (box.type == fourCC("stsd")) {
        description(box);
    } else {
        table(box);
        trackFact(box);
    }
}

void HeaderMemoryEstimator::table(const Box &box) {
    for (const Table &table : kTables) {
        if (table.type == box.type) {
            const bool isLater = table.countAt != 4 && number<quint8>(box, 0) == 1;
            claim(number<quint32>(box, table.countAt + (isLater ? 4 : 0)), table.entryBytes);
        }
    }
    if (box.type == fourCC("sidx") || box.type == fourCC("tfra")) {
        claim((box.end - box.begin) / 8, kFragmentBytes * qint64(m_tracks.size()));
    }
}

void HeaderMemoryEstimator::trackFact(const Box &box) {
    Track &track = m_tracks.back();
    const auto count = number<quint32>(box, 4);
    if (box.type == fourCC("tkhd")) {
        track.id = number<quint32>(box, number<quint8>(box, 0) == 1 ? 20 : 12);
    } else if (box.type == fourCC("hdlr")) {
        const auto kind = number<quint32>(box, 8);
        track.hasSound |= kind == fourCC("soun");
        track.hasOther |= kind == fourCC("vide");
    } else if (box.type == fourCC("stts")) {
        track.isTickLong = count == 1 && number<quint32>(box, 12) == 1;
    } else if (box.type == fourCC("stsz") || box.type == fourCC("stz2")) {
        sampleSizes(box);
    } else if (box.type == fourCC("stsc")) {
        runsOf(box);
    } else if (box.type == fourCC("stco") || box.type == fourCC("co64")) {
        track.chunks = std::max<qint64>(track.chunks, count);
    } else if (box.type == fourCC("elst")) {
        track.edits += count;
    } else if (box.type == fourCC("chap")) {
        for (qint64 at = 0; at + 4 <= std::min<qint64>(box.end - box.begin, 1024); at += 4) {
            m_chapterTracks.push_back(number<quint32>(box, at));
        }
    }
}

void HeaderMemoryEstimator::sampleSizes(const Box &box) {
    const auto samples = number<quint32>(box, 8);
    const bool isTable = box.type == fourCC("stz2") || number<quint32>(box, 4) == 0;
    claim(isTable ? samples : 0, 8);
    m_tracks.back().samples = std::max<qint64>(m_tracks.back().samples, samples);
}

void HeaderMemoryEstimator::runsOf(const Box &box) {
    constexpr qint64 kRun = 12;
    Track &track = m_tracks.back();
    track.pieces = track.piecesEach = 0;
    const qint64 count =
        std::min<qint64>(number<quint32>(box, 4), (box.end - box.begin - 8) / kRun);
    for (qint64 index = 0; index < count; ++index) {
        const qint64 at = 8 + index * kRun;
        const auto first = number<quint32>(box, at);
        const __int128 before =
            std::max<qint64>(first - track.lastRun, 0) * __int128(track.piecesEach);
        track.pieces = qint64(std::min<__int128>(track.pieces + before, kBeyondBounds));
        track.lastRun = first;
        track.piecesEach =
            (qint64(number<quint32>(box, at + 4)) + kSamplesTogether - 1) / kSamplesTogether;
    }
}

/// Where the samples are described there may be boxes after fields whose length depends on the
/// codec. None of them is a table.
void HeaderMemoryEstimator::description(const Box &box) {
    const qint64 size = box.end - box.begin;
    QByteArray bytes(qsizetype(std::min(size, kLargestDescription)), Qt::Uninitialized);
    bytes.truncate(qsizetype(m_read(box.begin, bytes.data(), bytes.size())));
    const bool isHonest =
        size <= kLargestDescription &&
        std::ranges::none_of(kNotInDescriptions, [&](auto name) { return bytes.contains(name); });
    claim(isHonest ? 0 : 1, kBeyondBounds);
}

/// Its boxes begin with the one that names their kind, after a version or at once.
void HeaderMemoryEstimator::metadata(const Box &box, int depth) {
    for (qint64 at = 4; at <= 16; at += 4) {
        if (number<quint32>(box, at) == fourCC("hdlr")) {
            holder({box.type, box.begin + at - 4, box.end}, depth + 1);
            return;
        }
    }
}

void HeaderMemoryEstimator::compressed(const Box &box, int depth) {
    constexpr qint64 kBegin = 20; // what follows has its length before it
    const qint64 size = box.end - box.begin - kBegin;
    if (size < 4 || size > kLargestInflated || number<quint32>(box, kBegin) > kLargestInflated) {
        claim(1, kBeyondBounds);
        return;
    }
    QByteArray bytes(qsizetype(size), Qt::Uninitialized);
    bytes.truncate(qsizetype(m_read(box.begin + kBegin, bytes.data(), size)));
    const QByteArray inflated = qUncompress(bytes);
    const Read outside = std::exchange(m_read, [&](qint64 offset, char *into, qint64 most) {
        const qint64 given = std::clamp<qint64>(inflated.size() - offset, 0, most);
        std::copy_n(inflated.constData() + std::min<qint64>(offset, inflated.size()), given, into);
        return given;
    });
    holder({0, 0, inflated.size()}, depth + 1);
    m_read = outside;
}

qint64 HeaderMemoryEstimator::total() const {
    __int128 sum = m_claim;
    for (const Track &track : m_tracks) {
        const __int128 entries = track.entries();
        sum += entries * kSampleBytes;
        sum += entries * std::max<qint64>(track.edits - 1, 0) * kEditedSampleBytes;
        if (std::ranges::find(m_chapterTracks, track.id) != m_chapterTracks.end()) {
            sum += entries * kChapterBytes;
        }
    }
    return qint64(std::min<__int128>(sum, kBeyondBounds));
}

} // namespace corvane::media

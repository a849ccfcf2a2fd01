#include "media/HeaderMemory.h"

#include "media/MediaSubType.h"
#include "platform/Cancellation.h"
#include "platform/FileSystem.h"

#include <QtEndian>

#include <algorithm>
#include <array>
#include <functional>
#include <utility>
#include <vector>

namespace corvane::media {

namespace {

/// Allowance for small tables in any file, plus bytes of memory per byte of the file: an index
/// entry takes some 60 bytes with all its tables and describes more than two bytes of a valid
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

constexpr int kMaxDepth = 12; ///< of nested boxes; no less than FFmpeg's own limit
constexpr qint64 kMaxDescription = qint64(1) << 20;
constexpr qint64 kMaxInflated = qint64(16) << 20;

/// Bytes of memory that FFmpeg takes for each of these while it opens a file.
constexpr qint64 kSampleBytes = 40;
constexpr qint64 kEditedSampleBytes = 32;
constexpr qint64 kEncryptedSampleBytes = 256;
constexpr qint64 kFragmentBytes = 64; ///< and the same again for each track
constexpr qint64 kChapterBytes = qint64(128) << 10;
/// Number of audio samples of one tick that share an index entry.
constexpr qint64 kSamplesPerEntry = 1024;

constexpr quint32 kParents[] = {
    fourCC("moov"), fourCC("trak"), fourCC("mdia"), fourCC("minf"), fourCC("stbl"), fourCC("edts"),
    fourCC("mvex"), fourCC("moof"), fourCC("traf"), fourCC("udta"), fourCC("wave"), fourCC("ilst"),
    fourCC("tref"), fourCC("dinf"), fourCC("sinf"), fourCC("schi"),
};

/// A table whose number of entries comes after its version and flags.
struct Table {
    quint32 type;
    qint64 entryBytes; ///< in memory
    qint64 countOffset = 4;
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

/// Tables that no valid sample description contains. A file that hides one there is refused.
constexpr std::array<const char *, 12> kNotInDescriptions = {
    "stsz", "stz2", "stsc", "stco", "co64", "stts", "ctts", "elst", "trun", "senc", "moof", "cmov"};

/// Parses the boxes of a QuickTime or MPEG-4 file in the way FFmpeg does and adds up the memory
/// that FFmpeg would allocate for their tables. Not thread-safe.
class HeaderMemoryEstimator {
  public:
    /// Reads up to `size` bytes at `offset`. Returns how many; fewer only at the end of the file.
    using Read = std::function<qint64(qint64 offset, char *buffer, qint64 size)>;

    /// Upper limit of all results, so that sums stay within 64 bits.
    static constexpr qint64 kBeyondBounds = qint64(1) << 50;

    /// The token must outlive the object.
    HeaderMemoryEstimator(Read read, const std::stop_token &stop)
        : m_read(std::move(read)), m_stop(stop) {}

    /// Parses the file. Throws `Cancelled` and whatever `read` throws.
    void parse(qint64 fileSize) { parseChildren({0, 0, fileSize}, 0); }
    /// Bytes of memory for the boxes parsed.
    qint64 total() const;

  private:
    struct Box {
        quint32 type = 0;
        qint64 begin = 0; ///< of the content
        qint64 end = 0;
    };

    struct Track {
        quint32 id = 0;
        bool hasAudio = false;
        bool hasVideo = false;
        bool hasOneTickSamples = false; ///< every sample lasts one tick
        qint64 samples = 0;
        qint64 chunks = 0;
        qint64 edits = 0;
        /// Index entries of the chunks before the last run of equal chunks, which extends to the
        /// last chunk.
        qint64 entriesBeforeRun = 0;
        qint64 runFirstChunk = 1; ///< counted from 1
        qint64 entriesPerChunk = 0;

        qint64 indexEntries() const;
    };

    template <typename Number> Number number(const Box &box, qint64 offset) const;
    void add(qint64 count, qint64 bytes);
    void parseChildren(const Box &parent, int depth);
    bool isHiddenMovie(const Box &box) const;
    void parseBox(const Box &box, int depth);
    void addTable(const Box &box);
    void parseTrackFacts(const Box &box);
    void parseSampleSizes(const Box &box);
    void parseChunkRuns(const Box &box);
    void parseDescription(const Box &box);
    void parseMetadata(const Box &box, int depth);
    void parseCompressed(const Box &box, int depth);

    Read m_read;
    const std::stop_token &m_stop;
    std::vector<Track> m_tracks{1}; ///< the first one is for boxes outside of a track
    std::vector<quint32> m_chapterTracks;
    qint64 m_bytes = 0;
};

/// FFmpeg indexes audio samples of one tick by groups within their chunks.
qint64 HeaderMemoryEstimator::Track::indexEntries() const {
    if (!hasOneTickSamples || !hasAudio || hasVideo) {
        return samples;
    }
    const __int128 run =
        __int128(std::max<qint64>(chunks - runFirstChunk + 1, 0)) * entriesPerChunk;
    return qint64(std::min<__int128>(entriesBeforeRun + run, kBeyondBounds));
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

void HeaderMemoryEstimator::add(qint64 count, qint64 bytes) {
    m_bytes = qint64(std::min<__int128>(__int128(count) * bytes + m_bytes, kBeyondBounds));
}

void HeaderMemoryEstimator::parseChildren(const Box &parent, int depth) {
    if (depth > kMaxDepth) {
        return;
    }
    for (qint64 offset = parent.begin; offset + 8 <= parent.end;) {
        throwIfStopRequested(m_stop);
        Box child{.begin = offset + 8, .end = parent.end};
        qint64 size = number<quint32>(parent, offset - parent.begin);
        child.type = number<quint32>(parent, offset - parent.begin + 4);
        if (size == 1) {
            size = number<qint64>(parent, offset - parent.begin + 8);
            child.begin += 8;
        }
        if (size != 0) { // 0 extends to the end
            if (size < child.begin - offset) {
                return;
            }
            child.end = std::min(parent.end - offset, size) + offset;
        }
        parseBox(child, depth);
        offset = child.end;
    }
}

/// FFmpeg also accepts a movie box that is marked as free space.
bool HeaderMemoryEstimator::isHiddenMovie(const Box &box) const {
    const auto first = number<quint32>(box, 4);
    return (box.type == fourCC("free") || box.type == fourCC("hoov")) &&
           (first == fourCC("mvhd") || first == fourCC("cmov"));
}

void HeaderMemoryEstimator::parseBox(const Box &box, int depth) {
    if (box.type == fourCC("trak")) {
        m_tracks.emplace_back();
    } else if (box.type == fourCC("moof")) {
        add(qint64(m_tracks.size()), kFragmentBytes);
    }
    if (std::ranges::find(kParents, box.type) != std::end(kParents) || isHiddenMovie(box)) {
        parseChildren(box, depth + 1);
    } else if (box.type == fourCC("meta")) {
        parseMetadata(box, depth);
    } else if (box.type == fourCC("cmov")) {
        parseCompressed(box, depth);
    } else if (box.type == fourCC("stsd")) {
        parseDescription(box);
    } else {
        addTable(box);
        parseTrackFacts(box);
    }
}

void HeaderMemoryEstimator::addTable(const Box &box) {
    for (const Table &table : kTables) {
        if (table.type == box.type) {
            const bool isVersion1 = table.countOffset != 4 && number<quint8>(box, 0) == 1;
            add(number<quint32>(box, table.countOffset + (isVersion1 ? 4 : 0)), table.entryBytes);
        }
    }
    if (box.type == fourCC("sidx") || box.type == fourCC("tfra")) {
        add((box.end - box.begin) / 8, kFragmentBytes * qint64(m_tracks.size()));
    }
}

void HeaderMemoryEstimator::parseTrackFacts(const Box &box) {
    Track &track = m_tracks.back();
    const auto count = number<quint32>(box, 4);
    if (box.type == fourCC("tkhd")) {
        track.id = number<quint32>(box, number<quint8>(box, 0) == 1 ? 20 : 12);
    } else if (box.type == fourCC("hdlr")) {
        const auto handler = number<quint32>(box, 8);
        track.hasAudio |= handler == fourCC("soun");
        track.hasVideo |= handler == fourCC("vide");
    } else if (box.type == fourCC("stts")) {
        track.hasOneTickSamples = count == 1 && number<quint32>(box, 12) == 1;
    } else if (box.type == fourCC("stsz") || box.type == fourCC("stz2")) {
        parseSampleSizes(box);
    } else if (box.type == fourCC("stsc")) {
        parseChunkRuns(box);
    } else if (box.type == fourCC("stco") || box.type == fourCC("co64")) {
        track.chunks = std::max<qint64>(track.chunks, count);
    } else if (box.type == fourCC("elst")) {
        track.edits += count;
    } else if (box.type == fourCC("chap")) {
        const qint64 size = std::min<qint64>(box.end - box.begin, 1024);
        for (qint64 offset = 0; offset + 4 <= size; offset += 4) {
            m_chapterTracks.push_back(number<quint32>(box, offset));
        }
    }
}

void HeaderMemoryEstimator::parseSampleSizes(const Box &box) {
    const auto samples = number<quint32>(box, 8);
    const bool isTable = box.type == fourCC("stz2") || number<quint32>(box, 4) == 0;
    add(isTable ? samples : 0, 8);
    m_tracks.back().samples = std::max<qint64>(m_tracks.back().samples, samples);
}

void HeaderMemoryEstimator::parseChunkRuns(const Box &box) {
    constexpr qint64 kRunBytes = 12;
    Track &track = m_tracks.back();
    track.entriesBeforeRun = track.entriesPerChunk = 0;
    const qint64 count =
        std::min<qint64>(number<quint32>(box, 4), (box.end - box.begin - 8) / kRunBytes);
    for (qint64 index = 0; index < count; ++index) {
        const qint64 offset = 8 + index * kRunBytes;
        const auto firstChunk = number<quint32>(box, offset);
        const __int128 entries =
            std::max<qint64>(firstChunk - track.runFirstChunk, 0) * __int128(track.entriesPerChunk);
        track.entriesBeforeRun =
            qint64(std::min<__int128>(track.entriesBeforeRun + entries, kBeyondBounds));
        track.runFirstChunk = firstChunk;
        track.entriesPerChunk =
            (qint64(number<quint32>(box, offset + 4)) + kSamplesPerEntry - 1) / kSamplesPerEntry;
    }
}

/// A sample description can contain boxes after fields whose length depends on the codec. It is
/// searched for the names of tables instead of parsed.
void HeaderMemoryEstimator::parseDescription(const Box &box) {
    const qint64 size = box.end - box.begin;
    QByteArray bytes(qsizetype(std::min(size, kMaxDescription)), Qt::Uninitialized);
    bytes.truncate(qsizetype(m_read(box.begin, bytes.data(), bytes.size())));
    const bool isValid =
        size <= kMaxDescription &&
        std::ranges::none_of(kNotInDescriptions, [&](auto name) { return bytes.contains(name); });
    add(isValid ? 0 : 1, kBeyondBounds);
}

/// The boxes in `meta` begin with `hdlr`, either directly or after a version.
void HeaderMemoryEstimator::parseMetadata(const Box &box, int depth) {
    for (qint64 offset = 4; offset <= 16; offset += 4) {
        if (number<quint32>(box, offset) == fourCC("hdlr")) {
            parseChildren({box.type, box.begin + offset - 4, box.end}, depth + 1);
            return;
        }
    }
}

void HeaderMemoryEstimator::parseCompressed(const Box &box, int depth) {
    constexpr qint64 kDataOffset = 20; // of the inflated length, followed by the data
    const qint64 dataSize = box.end - box.begin - kDataOffset;
    if (dataSize < 4 || dataSize > kMaxInflated ||
        number<quint32>(box, kDataOffset) > kMaxInflated) {
        add(1, kBeyondBounds);
        return;
    }
    QByteArray bytes(qsizetype(dataSize), Qt::Uninitialized);
    bytes.truncate(qsizetype(m_read(box.begin + kDataOffset, bytes.data(), dataSize)));
    const QByteArray inflated = qUncompress(bytes);
    const Read readFile = std::exchange(m_read, [&](qint64 offset, char *buffer, qint64 size) {
        const qint64 count = std::clamp<qint64>(inflated.size() - offset, 0, size);
        std::copy_n(inflated.constData() + std::min<qint64>(offset, inflated.size()), count,
                    buffer);
        return count;
    });
    parseChildren({0, 0, inflated.size()}, depth + 1);
    m_read = readFile;
}

qint64 HeaderMemoryEstimator::total() const {
    __int128 sum = m_bytes;
    for (const Track &track : m_tracks) {
        const __int128 entries = track.indexEntries();
        sum += entries * kSampleBytes;
        sum += entries * std::max<qint64>(track.edits - 1, 0) * kEditedSampleBytes;
        if (std::ranges::find(m_chapterTracks, track.id) != m_chapterTracks.end()) {
            sum += entries * kChapterBytes;
        }
    }
    return qint64(std::min<__int128>(sum, kBeyondBounds));
}

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

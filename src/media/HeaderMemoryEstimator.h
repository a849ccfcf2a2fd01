#pragma once

// Internal to src/media.

#include <QtGlobal>

#include <functional>
#include <stop_token>
#include <vector>

namespace corvane::media {

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

} // namespace corvane::media

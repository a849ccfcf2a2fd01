#pragma once

// For the source files of this floor only.

#include <QtGlobal>

#include <functional>
#include <stop_token>
#include <vector>

namespace corvane::media {

/// Goes through the boxes of a QuickTime or MPEG-4 file as the library will and reckons what it
/// would take for the tables, without taking it. One thread.
class HeaderMemoryEstimator {
  public:
    /// Gives as many of the bytes from `offset` on as there are, at most `most`.
    using Read = std::function<qint64(qint64 offset, char *into, qint64 most)>;

    /// Of what is beyond any bound; sums of it stay within 64 bits.
    static constexpr qint64 kBeyondBounds = qint64(1) << 50;

    /// The token outlives this.
    HeaderMemoryEstimator(Read read, const std::stop_token &stop)
        : m_read(std::move(read)), m_stop(stop) {}

    /// Throws `Cancelled`, and what `read` throws.
    void add(qint64 fileSize) { holder({0, 0, fileSize}, 0); }
    /// In bytes of memory.
    qint64 total() const;

  private:
    struct Box {
        quint32 type = 0;
        qint64 begin = 0; ///< of its content
        qint64 end = 0;
    };

    struct Track {
        quint32 id = 0;
        bool hasSound = false;
        bool hasOther = false;
        bool isTickLong = false; ///< every sample
        qint64 samples = 0;
        qint64 chunks = 0;
        qint64 edits = 0;
        /// Of the chunks before the last run of alike ones, which goes on to the last chunk.
        qint64 pieces = 0;
        qint64 lastRun = 1; ///< its first chunk, counted from 1
        qint64 piecesEach = 0;

        qint64 entries() const;
    };

    template <typename Number> Number number(const Box &box, qint64 offset) const;
    void claim(qint64 count, qint64 bytes);
    void holder(const Box &holder, int depth);
    bool isMovie(const Box &box) const;
    void box(const Box &box, int depth);
    void table(const Box &box);
    void trackFact(const Box &box);
    void sampleSizes(const Box &box);
    void runsOf(const Box &box);
    void description(const Box &box);
    void metadata(const Box &box, int depth);
    void compressed(const Box &box, int depth);

    Read m_read;
    const std::stop_token &m_stop;
    std::vector<Track> m_tracks{1}; ///< what comes before any counts as one, too
    std::vector<quint32> m_chapterTracks;
    qint64 m_claim = 0;
};

} // namespace corvane::media

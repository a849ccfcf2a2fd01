#pragma once

// Internal to src/media.

#include "media/VideoReader.h"

#include <map>

namespace corvane::media {

/// Decoded frames around the playhead, ordered by time and limited in bytes. Each entry records
/// whether the frame before it in the cache is also the previous frame of the file. Not
/// thread-safe.
class FrameCache {
  public:
    enum class Direction { forward, backward };

    static constexpr double kDefaultBehindCost = 2;

    /// One frame is kept even if it exceeds the limit.
    explicit FrameCache(qsizetype byteLimit) : m_byteLimit(byteLimit) {}

    /// `previous`: time of the previous frame of the file, if known.
    void insert(const VideoFrame &frame, std::optional<MediaTime> previous);
    /// Records that the frame at `time` directly follows the one at `previous` in the file.
    void setAdjacent(MediaTime previous, MediaTime time);

    /// The frame that `time` names, or nullopt if the cached frames don't determine it.
    std::optional<VideoFrame> frameAt(MediaTime time) const;
    /// The adjacent frames of the file, if they are cached and known to be adjacent.
    std::optional<VideoFrame> next(MediaTime time) const;
    std::optional<VideoFrame> previous(MediaTime time) const;

    /// The last cached frame before `time`, whether or not frames are missing in between.
    std::optional<VideoFrame> nearestBefore(MediaTime time) const;
    /// The cached frame nearest to `time` and at most `tolerance` seconds from it.
    std::optional<VideoFrame> nearest(MediaTime time, double tolerance) const;
    /// Size of the frames with times in [from, to).
    qsizetype bytesBetween(MediaTime from, MediaTime to) const;

    /// The end of the run of adjacent frames around `time`, or nullopt if the run extends beyond
    /// `frames` frames or `bytes` bytes.
    std::optional<MediaTime> runEnd(MediaTime time, Direction direction, int frames,
                                    qsizetype bytes) const;

    /// The playhead and its direction. The most distant frames are evicted first.
    void setFocus(MediaTime time, Direction direction);

    /// The factor by which frames behind the playhead count as more distant than those ahead.
    void setBehindCost(double cost) { m_behindCost = cost; }

    qsizetype byteCount() const { return m_bytes; }
    qsizetype byteLimit() const { return m_byteLimit; }

  private:
    struct Entry {
        VideoFrame frame;
        bool isAdjacent = false; ///< to the entry before it
    };
    using Entries = std::map<MediaTime, Entry>;

    void evict();
    double evictionCost(MediaTime time) const;
    void remove(Entries::iterator entry);

    qsizetype m_byteLimit;
    qsizetype m_bytes = 0;
    Entries m_entries;
    MediaTime m_focus;
    Direction m_direction = Direction::forward;
    double m_behindCost = kDefaultBehindCost;
};

} // namespace corvane::media

#pragma once

// For the source files of this floor only.

#include "media/VideoReader.h"

#include <map>

namespace corvane::media {

/// Decoded frames around the playhead, in order of their times, in a bounded number of bytes. It
/// knows of each frame whether the one before it in the file is the one before it here. One thread.
class FrameCache {
  public:
    enum class Direction { forward, backward };

    static constexpr double kUsualBehindCost = 2;

    /// At least one frame is kept, however large.
    explicit FrameCache(qsizetype byteLimit) : m_byteLimit(byteLimit) {}

    /// Keeps a frame; `predecessor` is the time of the frame directly before it, where known.
    void insert(const VideoFrame &frame, std::optional<MediaTime> predecessor);
    /// Says that `time`'s frame directly follows `predecessor`'s.
    void join(MediaTime predecessor, MediaTime time);

    /// The frame that `time` names, where that is certain from what is kept.
    std::optional<VideoFrame> naming(MediaTime time) const;
    std::optional<VideoFrame> after(MediaTime time) const;
    std::optional<VideoFrame> before(MediaTime time) const;

    /// The nearest frame before `time`, and the nearest to it no further than `tolerance` seconds,
    /// of those kept, whatever lies between.
    std::optional<VideoFrame> nearestBefore(MediaTime time) const;
    std::optional<VideoFrame> nearest(MediaTime time, double tolerance) const;
    /// Of the frames from `from` to the one before `to`.
    qsizetype bytesBetween(MediaTime from, MediaTime to) const;

    /// The end of the unbroken run that `time`'s frame is in; at most `frames` away and `bytes`
    /// large, nothing where it goes on beyond that.
    std::optional<MediaTime> runEnd(MediaTime time, Direction direction, int frames,
                                    qsizetype bytes) const;

    /// Where the playhead is and where it goes: what is far from there is dropped first.
    void setFocus(MediaTime time, Direction direction);

    /// How much less a frame that lies behind is needed than one as far ahead.
    void setBehindCost(double cost) { m_behindCost = cost; }

    qsizetype byteCount() const { return m_bytes; }
    qsizetype byteLimit() const { return m_byteLimit; }

  private:
    struct Entry {
        VideoFrame frame;
        bool follows = false; ///< directly, the entry before it
    };
    using Entries = std::map<MediaTime, Entry>;

    void trim();
    double cost(MediaTime time) const;
    void remove(Entries::iterator entry);

    qsizetype m_byteLimit;
    qsizetype m_bytes = 0;
    Entries m_entries;
    MediaTime m_focus;
    Direction m_direction = Direction::forward;
    double m_behindCost = kUsualBehindCost;
};

} // namespace corvane::media

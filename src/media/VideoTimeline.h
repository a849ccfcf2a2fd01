#pragma once

// Internal to src/media.

#include "media/MediaInput.h"

namespace corvane::media {

/// Converts between the asset's times and the ticks of a video stream, and finds keyframes in the
/// container's index. Ticks are in the stream's time base, on the container's timeline. Both
/// constructor arguments must outlive the object. Not thread-safe.
class VideoTimeline {
  public:
    VideoTimeline(const MediaInput &input, AVStream &stream);

    /// The asset's time 0.
    qint64 start() const { return m_start; }
    /// The asset's duration; nullopt if unknown.
    std::optional<qint64> end() const;

    MediaTime timeAt(qint64 ticks) const;
    /// The last tick that a lookup of `time` covers: `time` plus `kHalfTick`, rounded down.
    qint64 lookupTicks(MediaTime time) const;
    qint64 ticksFromSeconds(qint64 seconds) const;
    double secondsFromTicks(qint64 ticks) const;

    /// Last keyframe before `time` in the index, or nullopt if the index has none.
    std::optional<MediaTime> keyframeBefore(MediaTime time) const;
    /// Index entry of the last keyframe at or before `ticks`; nullptr if the index has none. Its
    /// timestamp is a PTS or a DTS, depending on the container.
    const AVIndexEntry *keyframeAt(qint64 ticks) const;
    /// Whether the index lists keyframes around `ticks` that are at most a second apart.
    bool hasCloseKeyframes(qint64 ticks) const;

  private:
    qint64 ticksAt(MediaTime time) const;

    const MediaInput &m_input;
    AVStream &m_stream;
    qint64 m_start;
};

} // namespace corvane::media

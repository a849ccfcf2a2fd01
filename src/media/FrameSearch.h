#pragma once

// Internal to src/media.

#include "media/FrameDecoder.h"
#include "media/NonReferenceDetector.h"
#include "media/VideoPacketQueue.h"
#include "media/VideoTimeline.h"

#include <functional>

namespace corvane::media {

/// Finds frames of a video stream by time: chooses between decoding forward and seeking, picks the
/// keyframe to start from, and skips packets that the wanted frame doesn't depend on. Times are
/// ticks of the stream's time base, on the container's timeline.
///
/// Not thread-safe. If a read throws, the next one seeks first.
class FrameSearch {
  public:
    /// The last frame that starts at or before `target`, or, if `earliest` is less than `latest`,
    /// any frame that starts between these two.
    struct Goal {
        qint64 target = 0;
        qint64 earliest = 0;
        qint64 latest = 0;

        bool isWithinTolerance(qint64 time) const {
            return earliest < latest && time >= earliest && time <= latest;
        }
    };

    /// The references must outlive the object.
    FrameSearch(MediaInput &input, AVStream &stream, const VideoTimeline &timeline,
                const FrameDecoder::Options &options);

    /// Returns the frame of the goal, the first or last frame if the goal is out of range, or
    /// nullopt if no frame can be decoded.
    std::optional<DecodedFrame> find(const Goal &goal);
    /// Returns the frame after the current one, or nullopt at the end.
    std::optional<DecodedFrame> next();

    /// End of the current frame, which is the last one returned.
    qint64 currentEnd() const { return m_currentEnd; }
    /// Seconds from the current frame to the goal, or nullopt if a seek is faster than decoding
    /// forward.
    std::optional<double> secondsToDecode(const Goal &goal) const;
    void setSingleFrameRead(bool isSingle) { m_isSingleFrameRead = isSingle; }

  private:
    using Frame = std::optional<DecodedFrame>;

    Frame read(const std::function<Frame()> &source);
    bool isCurrent(const Goal &goal) const;
    bool canDecodeForward(const Goal &goal) const;
    Frame search(const Goal &goal);
    Frame findAfterCurrent();
    void seekBefore(const Goal &goal, qint64 stepBack, qint64 latestKeyframe);
    bool isStartBefore(const Goal &goal) const;
    Frame decodeTo(const Goal &goal, Frame previous);
    Frame takeNext(const Goal *goal = nullptr);
    Frame decodeNext(const Goal *goal);
    void sendNext(const Goal *goal);
    bool canSkip(const AVPacket &packet, const Goal &goal);
    bool isGoalPacket(const AVPacket &packet, const Goal &goal);
    bool isSeekNeeded(const Frame &frame, const Goal &goal) const;
    qint64 endOf(const DecodedFrame &frame);

    MediaInput &m_input;
    const VideoTimeline &m_timeline;
    VideoPacketQueue m_packets;
    FrameDecoder m_decoder;
    NonReferenceDetector m_nonReference;
    bool m_isSingleFrameRead;
    bool m_isInterrupted = false; ///< decoding can't continue at the current position

    Frame m_current; ///< the last one returned
    qint64 m_currentEnd = 0;
    Frame m_pending;   ///< decoded, but not returned yet
    qint64 m_lastTime; ///< of the last decoded frame since a seek
};

} // namespace corvane::media

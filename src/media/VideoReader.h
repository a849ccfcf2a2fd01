#pragma once

// Internal to src/media.

#include "media/FrameSearch.h"
#include "media/VideoFormat.h"

#include <QString>

namespace corvane::media {

/// A decoded frame and its position on the asset's timeline. Copies share the frame's buffers.
struct VideoFrame {
    std::shared_ptr<const AVFrame> avFrame;
    MediaTime time; ///< exact, in the stream's timescale; the asset starts at 0
    MediaTime end;  ///< start of the next frame; derived from the frame duration if unknown

    /// Size of the frame's buffers.
    qsizetype byteCount() const;
};

/// Decodes the first video stream of a file in presentation order, from any time.
///
/// Not thread-safe. The constructor and all reads throw `MediaError`, and `Cancelled` soon after
/// the stop token is triggered; reading can continue afterwards. Damaged packets are skipped.
/// Frames that refer to data before the keyframe of a seek are never returned.
class VideoReader {
  public:
    using Options = FrameDecoder::Options;

    explicit VideoReader(const QString &path, Options options, std::stop_token stop = {});
    Q_DISABLE_COPY_MOVE(VideoReader)

    std::optional<MediaTime> duration() const { return m_input.duration(); }
    /// Frames per second; 0 if unknown.
    double nominalFrameRate() const { return av_q2d(nominalRate(m_stream)); }
    int quarterTurns() const { return clockwiseQuarterTurns(m_stream); }

    /// Returns the last frame that starts at or before `time` (see `kHalfTick`), or the first or
    /// last frame if `time` is out of range. With a tolerance in seconds, returns the frame within
    /// it that is fastest to reach. Returns nullopt only if no frame can be decoded.
    std::optional<VideoFrame> frameAt(MediaTime time, double tolerance = 0);

    /// Returns the frame after the last one returned, or the first frame of the stream if there is
    /// none. Returns nullopt at the end.
    std::optional<VideoFrame> next();

    /// Last keyframe before `time` in the container's index, or nullopt if the index has none.
    std::optional<MediaTime> keyframeBefore(MediaTime time) const {
        return m_timeline.keyframeBefore(time);
    }

    /// Seconds to decode to reach `time` from the current position, or nullopt if a seek is faster.
    std::optional<double> secondsToDecode(MediaTime time) const;
    /// Whether seeks around `time` are fast: the index lists keyframes close to each other there.
    bool hasCloseKeyframes(MediaTime time) const {
        return m_timeline.hasCloseKeyframes(m_timeline.lookupTicks(time));
    }
    /// Sets `Options::isSingleFrameRead` for the following reads. The threading doesn't change.
    void setSingleFrameRead(bool isSingle) { m_search.setSingleFrameRead(isSingle); }

    void setStop(std::stop_token stop) { m_input.setStop(std::move(stop)); }

  private:
    FrameSearch::Goal goalFor(MediaTime time, double tolerance) const;
    std::optional<VideoFrame> toVideoFrame(const std::optional<DecodedFrame> &frame) const;

    MediaInput m_input;
    AVStream &m_stream;
    VideoTimeline m_timeline;
    FrameSearch m_search;
};

} // namespace corvane::media

#pragma once

// Internal to src/media.

#include "media/FrameCache.h"

namespace corvane::media {

/// Reads the frames of one file through a cache around the playhead. The same frame has the same
/// pixels no matter how it was reached.
///
/// Not thread-safe. Functions that decode throw `MediaError`, and `Cancelled` soon after the token
/// of `setStop` requests it; both leave the source usable.
class FrameSource {
  public:
    using Direction = FrameCache::Direction;

    FrameSource(const QString &path, qsizetype byteLimit, std::stop_token stop);

    void setStop(const std::stop_token &stop);
    int quarterTurns() const { return m_reader->quarterTurns(); }
    std::optional<MediaTime> duration() const { return m_reader->duration(); }

    /// The frame that `time` names; nullopt only if no frame can be decoded.
    std::optional<VideoFrame> at(MediaTime time);
    /// The frame that is fastest to read among those within `tolerance` seconds of `time`.
    std::optional<VideoFrame> near(MediaTime time, double tolerance);
    /// nullopt after the last frame.
    std::optional<VideoFrame> next(const VideoFrame &frame);
    /// nullopt before the first frame.
    std::optional<VideoFrame> previous(const VideoFrame &frame);

    /// The frame to show before `frame` in backward playback: the previous one, or an earlier one
    /// if a GOP doesn't fit in the cache and only every n-th of its frames is kept. nullopt before
    /// the first frame.
    std::optional<VideoFrame> previousToPlay(const VideoFrame &frame);

    /// Sets the frame shown and the direction in which the playhead leaves it.
    void setFocus(const VideoFrame &frame, Direction direction);
    /// Decodes about one frame that may be needed next: for playback in the direction of the focus
    /// only, for a paused player in both. Returns false if there is nothing more to read ahead.
    bool readAhead(bool inBothDirections);

    qsizetype cachedBytes() const { return m_cache.byteCount(); }

  private:
    /// A run of frames before `goal` that is decoded forward up to it.
    struct BackwardRun {
        MediaTime goal;
        VideoFrame reached;
        bool isDone = false; ///< `reached` is the frame before the goal
    };

    /// A GOP, or its part before `goal`, of which every n-th frame is kept.
    struct SparseRun {
        MediaTime keyframe;
        MediaTime goal;
        int keepEvery = 1;
        int decoded = 0;
        std::optional<VideoFrame> reached;
        bool isDone = false;
    };

    double frameRate() const;
    VideoReader &seekReader();
    std::optional<VideoFrame> read(MediaTime time, double tolerance);
    std::optional<VideoFrame> readInLongGop(MediaTime time);
    std::optional<VideoFrame> readNext(MediaTime time);
    bool readAheadInRun(Direction direction);
    bool readAheadFrom(MediaTime time);
    bool readBackward(MediaTime goal);
    bool startBackwardRun(MediaTime goal);
    double backwardRunSeconds() const;

    std::optional<MediaTime> distantKeyframe(MediaTime goal) const;
    bool isInSparseRun(MediaTime time) const;
    void startSparseRun(MediaTime keyframe, MediaTime goal);
    bool readSparsely();
    bool readAheadSparsely();

    const QString m_path;
    std::stop_token m_stop;
    std::unique_ptr<VideoReader> m_reader; ///< for consecutive frames
    /// For single frames, which it decodes with less latency. Opened by the first long seek. The
    /// two readers are swapped inside long GOPs, see `readInLongGop`.
    std::unique_ptr<VideoReader> m_seekReader;
    FrameCache m_cache;
    std::optional<MediaTime> m_lastRead;  ///< the frame after which `m_reader` continues
    std::optional<MediaTime> m_firstTime; ///< of the file's first frame, once known
    std::optional<MediaTime> m_lastTime;  ///< of the file's last frame, once known
    std::optional<BackwardRun> m_backwardRun;
    std::optional<SparseRun> m_sparseRun; ///< the latest one, which is the earliest in the file
    MediaTime m_sparseEnd;                ///< of the consecutive sparse runs
    std::optional<VideoFrame> m_focus;
    Direction m_direction = Direction::forward;
    /// Bounds the reading ahead around one focus if the cache is too small to hold it.
    int m_readsLeft = 0;
};

} // namespace corvane::media

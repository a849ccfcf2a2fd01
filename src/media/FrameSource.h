#pragma once

// For the source files of this floor only.

#include "media/FrameCache.h"

namespace corvane::media {

/// The frames of one file with those around the playhead at hand. Every frame it gives is exact,
/// and of the same memory whichever way it was come by.
///
/// One thread. Everything that may decode throws `Cancelled` soon after the token of `setStop` asks
/// for it, and can be called again afterwards; and `MediaError`.
class FrameSource {
  public:
    using Direction = FrameCache::Direction;

    FrameSource(const QString &path, qsizetype byteLimit, std::stop_token stop);

    void setStop(const std::stop_token &stop);
    int quarterTurns() const { return m_reader->quarterTurns(); }
    std::optional<MediaTime> duration() const { return m_reader->duration(); }

    /// The frame that `time` names. Nothing only where no frame can be decoded.
    std::optional<VideoFrame> at(MediaTime time);
    /// Any frame no further than `tolerance` seconds from `time`, whichever is quickest to have.
    std::optional<VideoFrame> near(MediaTime time, double tolerance);
    /// The next frame; nothing after the last one.
    std::optional<VideoFrame> after(const VideoFrame &frame);
    /// The frame before; nothing before the first one.
    std::optional<VideoFrame> before(const VideoFrame &frame);

    /// While playing backward: the frame before, or where more frames lie between key frames than
    /// can be kept, the nearest before of as many as can, evenly spread. Nothing before the first.
    std::optional<VideoFrame> behind(const VideoFrame &frame);

    /// The frame shown and where it goes from there.
    void setFocus(const VideoFrame &frame, Direction direction);
    /// One small piece of decoding ahead of need, from the focus in its direction and then, with
    /// `bothWays`, in the other; false when all is there. Without it the frames are played.
    bool fill(bool bothWays);

    qsizetype cachedBytes() const { return m_cache.byteCount(); }

  private:
    /// Frames behind `goal` being read forward, up to it.
    struct Filling {
        MediaTime goal;
        VideoFrame reached;
        bool isDone = false; ///< `reached` is the frame before the goal
    };

    /// Frames from a key frame up to `goal` being read, some of which are kept.
    struct Thinning {
        MediaTime key;
        MediaTime goal;
        int keepEvery = 1;
        int given = 0;
        std::optional<VideoFrame> reached;
        bool isDone = false;
    };

    std::optional<MediaTime> farKey(MediaTime goal) const;
    bool isThinned(MediaTime time) const;
    void thinOut(MediaTime key, MediaTime goal);
    bool thinFurther();
    bool fillThinly();
    std::optional<VideoFrame> read(MediaTime time, double tolerance);
    VideoReader &seeker();
    std::optional<VideoFrame> readFar(MediaTime time);
    std::optional<VideoFrame> readAfter(MediaTime time);
    bool fillBehind(MediaTime goal);
    bool beginBehind(MediaTime goal);
    bool fillAhead(MediaTime from);
    bool fillTowards(Direction direction);
    double chunkSeconds() const;

    const QString m_path;
    std::stop_token m_stop;
    std::unique_ptr<VideoReader> m_reader; ///< goes on from frame to frame
    /// Finds single frames quicker than what can go on from them. Opened at the first long jump.
    /// The two change places where key frames are far apart.
    std::unique_ptr<VideoReader> m_seeker;
    FrameCache m_cache;
    std::optional<MediaTime> m_given; ///< the frame that the reader stands after
    std::optional<MediaTime> m_first; ///< of the file's first frame, once known
    std::optional<MediaTime> m_last;  ///< of its last, once known
    std::optional<Filling> m_filling;
    std::optional<Thinning> m_thinning; ///< the last one, furthest back
    MediaTime m_thinnedUpTo;            ///< by it and by those that it went on from
    std::optional<VideoFrame> m_focus;
    Direction m_direction = Direction::forward;
    int m_fillsLeft = 0; ///< that one focus is worth, should the cache be too small to settle
};

} // namespace corvane::media

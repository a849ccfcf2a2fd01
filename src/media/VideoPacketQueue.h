#pragma once

// Internal to src/media.

#include "media/MediaInput.h"

#include <deque>
#include <optional>
#include <set>

namespace corvane::media {

/// The packets of one video stream in file order. Reads ahead, within limits, as far as needed to
/// know the PTS of frames before they are decoded. Timestamps are the stream's own. Not
/// thread-safe.
class VideoPacketQueue {
  public:
    /// Discards the packets of all other streams. The references must outlive the queue.
    VideoPacketQueue(MediaInput &input, AVStream &stream);

    /// Seeks to the last keyframe at or before `timestamp`, as precisely as the container allows.
    /// Returns false if the container can't seek.
    bool seek(qint64 timestamp);
    /// Seeks to the first packet. Returns false if the container can't.
    bool rewind();
    /// Whether the queue was read from the first packet on.
    bool isFromStart() const { return m_isFromStart; }
    /// Whether packets were dropped since the last seek.
    bool hasDropped() const { return m_hasDropped; }

    /// Drops packets so that the queue begins with a keyframe: the last one at or before `latest`
    /// that is read ahead, else the first one. Call after a seek. Keeps the packets from the start
    /// of a stream that doesn't begin with a keyframe.
    void skipToKeyframe(qint64 latest);
    /// Time of the keyframe that was skipped to; nullopt if none was found. Earlier frames refer to
    /// packets that weren't read.
    const std::optional<qint64> &firstKeyframe() const { return m_firstKeyframe; }

    /// Removes and returns the next packet; nullptr at the end.
    PacketHandle take();
    qint64 lastTakenDts() const { return m_lastTakenDts; }

    /// PTS of the last frame at or before `target`, as far as packets are read ahead; nullopt if
    /// none is known.
    std::optional<qint64> lastPts(qint64 target);
    /// Whether `pts` is certain to be that of the last frame at or before `target`.
    bool isLastPts(qint64 pts, qint64 target);
    /// PTS of the first frame after `pts`; nullopt if none is known.
    std::optional<qint64> nextPts(qint64 pts);
    /// Forgets the PTS before this one.
    void forgetBefore(qint64 pts);

  private:
    bool readOne();
    void addTimestamps(const AVPacket &packet);
    void dropFirst(size_t count);
    std::optional<size_t> findKeyframe(qint64 latest);
    void readAhead(qint64 target);
    bool isReadPast(qint64 target) const;
    bool isFull() const;
    void clear();

    MediaInput &m_input;
    AVStream &m_stream;
    std::deque<PacketHandle> m_queue;
    size_t m_queuedBytes = 0;
    std::set<qint64> m_pts; ///< of the packets read since the last seek
    std::optional<qint64> m_firstKeyframe;
    qint64 m_lastReadDts = AV_NOPTS_VALUE;
    qint64 m_lastTakenDts = AV_NOPTS_VALUE;
    bool m_isFromStart = true;
    bool m_hasDropped = false;
    bool m_isAtEnd = false;
    bool m_hasAllPts = true; ///< every packet since the last seek had a PTS
};

} // namespace corvane::media

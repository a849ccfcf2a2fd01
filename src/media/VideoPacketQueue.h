#pragma once

// For the source files of this floor only.

#include "media/MediaInput.h"

#include <deque>
#include <optional>
#include <set>

namespace corvane::media {

/// The packets of one stream in file order, read ahead as far as is needed to know which pictures
/// they hold before any is decoded. Timestamps are the stream's own. One thread at a time.
class VideoPacketQueue {
  public:
    /// Both are the reader's and outlive this. Other streams' packets are no longer read.
    VideoPacketQueue(MediaInput &input, AVStream &stream);

    AVStream &stream() const { return m_stream; }

    /// To the last key frame no later than `timestamp`, as far as the container finds it.
    bool seek(qint64 timestamp);
    /// To the first packet.
    bool rewind();
    /// True since a rewind: there is nothing before what is read.
    bool isFromStart() const { return m_isFromStart; }
    /// Whether packets were left out since the last jump to begin at a key frame.
    bool hasDropped() const { return m_hasDropped; }

    /// Makes a key frame the next packet: the last one no later than `latest` of those ahead, or
    /// else the first one. Gives its presentation time; nothing where no key frame comes up to
    /// `latest`. Packets read from the start that don't begin with a key frame stay as they are.
    std::optional<qint64> beginAtKeyFrame(qint64 latest);
    /// The time of the key frame that was begun at. Pictures that are shown before it refer to what
    /// wasn't read.
    const std::optional<qint64> &firstKey() const { return m_firstKey; }

    /// The next packet, or null at the end.
    PacketHandle take();
    /// The decoding time of the last one taken.
    qint64 lastTaken() const { return m_lastTaken; }

    /// The last presentation time no later than `target` among the pictures read, or nothing.
    std::optional<qint64> lastPresentation(qint64 target) const;
    /// The first one later than `time` among the pictures read.
    std::optional<qint64> presentationAfter(qint64 time) const;
    /// Reads ahead until no further packet can hold a picture of `target` or before. False where
    /// that is too far ahead, or the packets don't tell.
    bool readPast(qint64 target);
    /// The times before this one are no longer asked for.
    void forgetBefore(qint64 time);

  private:
    bool readOne();
    void note(const AVPacket &packet);
    void dropBefore(size_t index);
    std::optional<size_t> firstKeyIndex(qint64 latest);
    void clear();

    MediaInput &m_input;
    AVStream &m_stream;
    std::deque<PacketHandle> m_queue;
    size_t m_queuedBytes = 0;
    std::set<qint64> m_presentations; ///< of the packets read since the last jump
    std::optional<qint64> m_firstKey;
    qint64 m_lastDecodingTime = AV_NOPTS_VALUE;
    qint64 m_lastTaken = AV_NOPTS_VALUE;
    bool m_isFromStart = true;
    bool m_hasDropped = false;
    bool m_isAtEnd = false;
    bool m_isTimed = true; ///< every packet so far had a presentation time
};

} // namespace corvane::media

#include "media/VideoPacketQueue.h"

namespace corvane::media {

namespace {

/// No codec reorders a frame by more than this many others.
constexpr int kMaxReorder = 17;
/// Limits of reading ahead: packets, and bytes beyond the deepest reorder.
constexpr size_t kMaxQueuedPackets = 64;
constexpr size_t kMaxQueuedBytes = size_t(16) << 20;
/// Limit of bytes at any depth: a file can list the same bytes as many large packets.
constexpr size_t kMaxBytesInReorder = size_t(512) << 20;

} // namespace

VideoPacketQueue::VideoPacketQueue(MediaInput &input, AVStream &stream)
    : m_input(input), m_stream(stream) {
    for (AVStream *other : allStreams(*input.context())) {
        other->discard = other == &stream ? AVDISCARD_DEFAULT : AVDISCARD_ALL;
    }
}

bool VideoPacketQueue::seek(qint64 timestamp) {
    if (!m_input.seek(m_stream, timestamp)) {
        return false;
    }
    clear();
    return true;
}

bool VideoPacketQueue::rewind() {
    if (!m_input.rewind(m_stream)) {
        return false;
    }
    clear();
    m_isFromStart = true;
    return true;
}

void VideoPacketQueue::clear() {
    m_queue.clear();
    m_queuedBytes = 0;
    m_pts.clear();
    m_firstKeyframe.reset();
    m_lastReadDts = AV_NOPTS_VALUE;
    m_lastTakenDts = AV_NOPTS_VALUE;
    m_isFromStart = false;
    m_hasDropped = false;
    m_isAtEnd = false;
    m_hasAllPts = true;
}

bool VideoPacketQueue::readOne() {
    PacketHandle packet = makePacket();
    do {
        if (m_isAtEnd || !m_input.read(*packet)) {
            m_isAtEnd = true;
            return false;
        }
    } while (packet->stream_index != m_stream.index);
    m_queuedBytes += size_t(packet->size);
    addTimestamps(*packet);
    m_queue.push_back(std::move(packet));
    return true;
}

void VideoPacketQueue::addTimestamps(const AVPacket &packet) {
    m_lastReadDts = packet.dts;
    if (packet.pts == AV_NOPTS_VALUE) {
        m_hasAllPts = false;
    } else if ((packet.flags & AV_PKT_FLAG_DISCARD) == 0) {
        m_pts.insert(packet.pts);
    }
}

PacketHandle VideoPacketQueue::take() {
    if (m_queue.empty() && !readOne()) {
        return nullptr;
    }
    PacketHandle packet = std::move(m_queue.front());
    m_queue.pop_front();
    m_queuedBytes -= size_t(packet->size);
    m_lastTakenDts = packet->dts;
    return packet;
}

void VideoPacketQueue::dropFirst(size_t count) {
    m_hasDropped = m_hasDropped || count > 0;
    for (size_t dropped = 0; dropped < count; ++dropped) {
        m_queuedBytes -= size_t(m_queue.front()->size);
        m_queue.pop_front();
    }
    const qint64 lastReadDts = m_lastReadDts;
    m_pts.clear();
    for (const PacketHandle &packet : m_queue) {
        addTimestamps(*packet);
    }
    m_lastReadDts = lastReadDts;
}

/// Index of the first keyframe in the queue, reading up to `latest`. Packets far before it are
/// dropped on the way.
std::optional<size_t> VideoPacketQueue::findKeyframe(qint64 latest) {
    for (size_t index = 0;; ++index) {
        if (index == m_queue.size()) {
            const bool isPast = m_lastReadDts != AV_NOPTS_VALUE && m_lastReadDts > latest;
            if (isPast || !readOne()) {
                return std::nullopt;
            }
        }
        if (isKeyframe(*m_queue[index])) {
            return index;
        }
        if (index == kMaxQueuedPackets || m_queuedBytes > kMaxBytesInReorder) {
            dropFirst(index);
            index = 0;
        }
    }
}

void VideoPacketQueue::skipToKeyframe(qint64 latest) {
    if (m_isFromStart && (!m_queue.empty() || readOne()) && !isKeyframe(*m_queue.front())) {
        return;
    }
    std::optional<size_t> keyframe = findKeyframe(latest);
    if (!keyframe) {
        return;
    }
    readAhead(latest);
    for (size_t index = *keyframe + 1; index < m_queue.size(); ++index) {
        const AVPacket &packet = *m_queue[index];
        if (isKeyframe(packet) && packet.pts != AV_NOPTS_VALUE && packet.pts <= latest) {
            keyframe = index;
        }
    }
    dropFirst(*keyframe);
    m_firstKeyframe = timestampOf(*m_queue.front());
}

std::optional<qint64> VideoPacketQueue::lastPts(qint64 target) {
    readAhead(target);
    const auto after = m_pts.upper_bound(target);
    if (after == m_pts.begin() || (m_firstKeyframe && *std::prev(after) < *m_firstKeyframe)) {
        return std::nullopt;
    }
    return *std::prev(after);
}

bool VideoPacketQueue::isLastPts(qint64 pts, qint64 target) {
    const auto last = lastPts(target);
    return isReadPast(target) && m_hasAllPts && last == pts;
}

std::optional<qint64> VideoPacketQueue::nextPts(qint64 pts) {
    readAhead(pts);
    const auto after = m_pts.upper_bound(pts);
    return after == m_pts.end() ? std::nullopt : std::optional(*after);
}

void VideoPacketQueue::readAhead(qint64 target) {
    while (!isReadPast(target) && !isFull() && readOne()) {
    }
}

/// Whether no further packet can hold a frame at or before `target`.
bool VideoPacketQueue::isReadPast(qint64 target) const {
    const auto later = std::distance(m_pts.upper_bound(target), m_pts.end());
    return m_isAtEnd || (m_lastReadDts != AV_NOPTS_VALUE && m_lastReadDts > target) ||
           later > kMaxReorder;
}

bool VideoPacketQueue::isFull() const {
    return m_queue.size() >= kMaxQueuedPackets || m_queuedBytes > kMaxBytesInReorder ||
           (m_queuedBytes > kMaxQueuedBytes && m_queue.size() > kMaxReorder);
}

void VideoPacketQueue::forgetBefore(qint64 pts) {
    m_pts.erase(m_pts.begin(), m_pts.lower_bound(pts));
}

} // namespace corvane::media

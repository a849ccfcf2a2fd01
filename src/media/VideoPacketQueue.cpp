#include "media/VideoPacketQueue.h"

#include <algorithm>

namespace corvane::media {

namespace {

/// No codec shows a picture later than this many others that were stored after it.
constexpr int kDeepestReorder = 17;
/// How far is read ahead: as many packets, and beyond the deepest reorder no more bytes than these.
constexpr size_t kMostAhead = 64;
constexpr size_t kMostBytesAhead = size_t(16) << 20;
/// However deep the reorder: a file can tell of many large packets in the same bytes.
constexpr size_t kMostBytesEver = size_t(512) << 20;

bool isKey(const AVPacket &packet) {
    return (packet.flags & AV_PKT_FLAG_KEY) != 0;
}

qint64 timeOf(const AVPacket &packet) {
    return packet.pts == AV_NOPTS_VALUE ? packet.dts : packet.pts;
}

} // namespace

VideoPacketQueue::VideoPacketQueue(MediaInput &input, AVStream &stream)
    : m_input(input), m_stream(stream) {
    for (unsigned index = 0; index < input.context()->nb_streams; ++index) {
        AVStream *other = input.context()->streams[index];
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
    m_presentations.clear();
    m_firstKey.reset();
    m_lastDecodingTime = AV_NOPTS_VALUE;
    m_lastTaken = AV_NOPTS_VALUE;
    m_isFromStart = false;
    m_hasDropped = false;
    m_isAtEnd = false;
    m_isTimed = true;
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
    note(*packet);
    m_queue.push_back(std::move(packet));
    return true;
}

void VideoPacketQueue::note(const AVPacket &packet) {
    m_lastDecodingTime = packet.dts;
    if (packet.pts == AV_NOPTS_VALUE) {
        m_isTimed = false;
    } else if ((packet.flags & AV_PKT_FLAG_DISCARD) == 0) {
        m_presentations.insert(packet.pts);
    }
}

PacketHandle VideoPacketQueue::take() {
    if (m_queue.empty() && !readOne()) {
        return nullptr;
    }
    PacketHandle packet = std::move(m_queue.front());
    m_queue.pop_front();
    m_queuedBytes -= size_t(packet->size);
    m_lastTaken = packet->dts;
    return packet;
}

void VideoPacketQueue::dropBefore(size_t index) {
    m_hasDropped = m_hasDropped || index > 0;
    for (size_t dropped = 0; dropped < index; ++dropped) {
        m_queuedBytes -= size_t(m_queue.front()->size);
        m_queue.pop_front();
    }
    const qint64 lastDecodingTime = m_lastDecodingTime;
    m_presentations.clear();
    for (const PacketHandle &packet : m_queue) {
        note(*packet);
    }
    m_lastDecodingTime = lastDecodingTime;
}

std::optional<size_t> VideoPacketQueue::firstKeyIndex(qint64 latest) {
    for (size_t index = 0;; ++index) {
        if (index == m_queue.size()) {
            const bool isPast = m_lastDecodingTime != AV_NOPTS_VALUE && m_lastDecodingTime > latest;
            if (isPast || !readOne()) {
                return std::nullopt;
            }
        }
        if (isKey(*m_queue[index])) {
            return index;
        }
        if (index == kMostAhead ||
            m_queuedBytes > kMostBytesEver) { // far from any: what was passed needn't be kept
            dropBefore(index);
            index = 0;
        }
    }
}

std::optional<qint64> VideoPacketQueue::beginAtKeyFrame(qint64 latest) {
    if (m_isFromStart && (!m_queue.empty() || readOne()) && !isKey(*m_queue.front())) {
        return std::nullopt;
    }
    std::optional<size_t> begin = firstKeyIndex(latest);
    if (!begin) {
        return std::nullopt;
    }
    (void)readPast(latest);
    for (size_t index = *begin + 1; index < m_queue.size(); ++index) {
        const AVPacket &packet = *m_queue[index];
        if (isKey(packet) && packet.pts != AV_NOPTS_VALUE && packet.pts <= latest) {
            begin = index;
        }
    }
    dropBefore(*begin);
    m_firstKey = timeOf(*m_queue.front());
    return m_firstKey;
}

std::optional<qint64> VideoPacketQueue::lastPresentation(qint64 target) const {
    const auto after = m_presentations.upper_bound(target);
    if (after == m_presentations.begin() || (m_firstKey && *std::prev(after) < *m_firstKey)) {
        return std::nullopt;
    }
    return *std::prev(after);
}

std::optional<qint64> VideoPacketQueue::presentationAfter(qint64 time) const {
    const auto after = m_presentations.upper_bound(time);
    return after == m_presentations.end() ? std::nullopt : std::optional(*after);
}

bool VideoPacketQueue::readPast(qint64 target) {
    while (!m_isAtEnd) {
        const auto later =
            std::distance(m_presentations.upper_bound(target), m_presentations.end());
        if ((m_lastDecodingTime != AV_NOPTS_VALUE && m_lastDecodingTime > target) ||
            later > kDeepestReorder) {
            break;
        }
        const bool isFull = m_queue.size() >= kMostAhead || m_queuedBytes > kMostBytesEver ||
                            (m_queuedBytes > kMostBytesAhead && m_queue.size() > kDeepestReorder);
        if (isFull) {
            return false;
        }
        (void)readOne();
    }
    return m_isTimed;
}

void VideoPacketQueue::forgetBefore(qint64 time) {
    m_presentations.erase(m_presentations.begin(), m_presentations.lower_bound(time));
}

} // namespace corvane::media

#include "media/FrameSearch.h"

#include <algorithm>
#include <limits>

namespace corvane::media {

namespace {

/// A decoder that returns no frame for this many packets counts as finished.
constexpr int kMaxPacketsWithoutFrame = 2000;
constexpr qint64 kMaxStepBackSeconds = qint64(1) << 24; ///< beyond any clip's duration
constexpr qint64 kNoTime = std::numeric_limits<qint64>::min();

} // namespace

FrameSearch::FrameSearch(MediaInput &input, AVStream &stream, const VideoTimeline &timeline,
                         const FrameDecoder::Options &options)
    : m_input(input),
      m_timeline(timeline),
      m_packets(input, stream),
      m_decoder(stream, options),
      m_nonReference(*stream.codecpar),
      m_isSingleFrameRead(options.isSingleFrameRead),
      m_lastTime(kNoTime) {}

std::optional<DecodedFrame> FrameSearch::find(const Goal &goal) {
    return read([&] { return isCurrent(goal) ? m_current : search(goal); });
}

std::optional<DecodedFrame> FrameSearch::next() {
    return read([this] { return m_isInterrupted ? findAfterCurrent() : takeNext(); });
}

/// Makes the frame from `source` the current one. Packets may be lost if `source` throws, so
/// decoding can't continue then.
std::optional<DecodedFrame> FrameSearch::read(const std::function<Frame()> &source) {
    try {
        Frame frame = source();
        if (frame) {
            m_currentEnd = endOf(*frame);
            m_packets.forgetBefore(frame->time);
            m_current = frame;
        }
        return frame;
    } catch (...) {
        m_isInterrupted = true;
        m_pending.reset();
        throw;
    }
}

qint64 FrameSearch::endOf(const DecodedFrame &frame) {
    if (m_pending) {
        return m_pending->time;
    }
    return m_packets.nextPts(frame.time).value_or(frame.time + std::max<qint64>(frame.duration, 1));
}

bool FrameSearch::isCurrent(const Goal &goal) const {
    return m_current && ((m_current->time <= goal.target && goal.target < m_currentEnd) ||
                         goal.isWithinTolerance(m_current->time));
}

std::optional<double> FrameSearch::secondsToDecode(const Goal &goal) const {
    return canDecodeForward(goal)
               ? std::optional(m_timeline.secondsFromTicks(goal.target - m_current->time))
               : std::nullopt;
}

/// Whether decoding from the current position reaches the goal sooner than a seek would.
bool FrameSearch::canDecodeForward(const Goal &goal) const {
    if (!m_current || m_current->time > goal.target || m_decoder.isDrained() || m_isInterrupted) {
        return false;
    }
    const AVIndexEntry *keyframe = m_timeline.keyframeAt(goal.latest);
    return keyframe ? keyframe->timestamp <= m_packets.lastTakenDts()
                    : m_timeline.secondsFromTicks(goal.target - m_current->time) < 1;
}

std::optional<DecodedFrame> FrameSearch::search(const Goal &goal) {
    if (canDecodeForward(goal)) {
        Frame frame = decodeTo(goal, m_current);
        if (frame && !isSeekNeeded(frame, goal)) {
            return frame;
        }
    }
    // As long as the first frame after the keyframe is past the goal, the step back doubles.
    bool hasMissed = false;
    for (qint64 seconds = 0; seconds < kMaxStepBackSeconds;
         seconds = seconds == 0 ? 1 : seconds * 2) {
        const qint64 stepBack = m_timeline.ticksFromSeconds(seconds);
        const qint64 latestKeyframe = hasMissed ? goal.latest - stepBack : goal.latest;
        seekBefore(goal, stepBack, latestKeyframe);
        if (!isStartBefore(goal)) {
            continue;
        }
        Frame frame = decodeTo(goal, {});
        if (isSeekNeeded(frame, goal)) {
            m_isSingleFrameRead = false;
            seekBefore(goal, stepBack, latestKeyframe);
            frame = decodeTo(goal, {});
        }
        const bool isFromFirstPacket = m_packets.isFromStart() && !m_packets.hasDropped();
        if (isFromFirstPacket || (frame && frame->time <= goal.latest)) {
            return frame;
        }
        hasMissed = true;
    }
    return std::nullopt;
}

std::optional<DecodedFrame> FrameSearch::findAfterCurrent() {
    const qint64 time = m_current ? m_current->time : m_timeline.start();
    m_isSingleFrameRead = false;
    Frame frame = search({time, time, time});
    while (frame && m_current && frame->time <= time) {
        frame = takeNext();
    }
    return frame;
}

/// Seeks to `stepBack` before the goal and from there to the last keyframe up to `latestKeyframe`
/// that is read ahead, or to the start.
void FrameSearch::seekBefore(const Goal &goal, qint64 stepBack, qint64 latestKeyframe) {
    const qint64 from = std::min(goal.latest, m_timeline.end().value_or(goal.latest));
    m_decoder.flush();
    m_isInterrupted = false;
    m_pending.reset();
    m_lastTime = kNoTime;
    if (from - stepBack <= m_timeline.start() || !m_packets.seek(from - stepBack)) {
        if (!m_packets.rewind()) {
            throw MediaError(QStringLiteral("The file can't be read from its start again."));
        }
    }
    m_packets.skipToKeyframe(latestKeyframe);
}

bool FrameSearch::isStartBefore(const Goal &goal) const {
    const auto &keyframe = m_packets.firstKeyframe();
    return m_packets.isFromStart() || (keyframe && *keyframe <= goal.latest);
}

/// Decodes up to the goal. Returns `previous`, the frame before the next one, if the next one is
/// past the goal, and the next one if there is no previous one.
std::optional<DecodedFrame> FrameSearch::decodeTo(const Goal &goal, Frame previous) {
    for (;;) {
        Frame frame = takeNext(&goal);
        if (!frame) {
            return previous;
        }
        if (frame->time > goal.latest) {
            if (!previous) {
                return frame;
            }
            m_pending = std::move(frame);
            return previous;
        }
        if (m_packets.isLastPts(frame->time, goal.target) || goal.isWithinTolerance(frame->time)) {
            return frame;
        }
        previous = std::move(frame);
    }
}

std::optional<DecodedFrame> FrameSearch::takeNext(const Goal *goal) {
    return m_pending ? std::exchange(m_pending, {}) : decodeNext(goal);
}

std::optional<DecodedFrame> FrameSearch::decodeNext(const Goal *goal) {
    for (int sent = 0; sent < kMaxPacketsWithoutFrame;) {
        if (Frame frame = m_decoder.receive()) {
            const auto &keyframe = m_packets.firstKeyframe();
            const bool isIncomplete = keyframe && frame->time < *keyframe;
            if (!isIncomplete && frame->time > m_lastTime) {
                m_lastTime = frame->time;
                return frame;
            }
        } else if (m_decoder.isDrained()) {
            break;
        } else {
            sendNext(goal);
            ++sent;
        }
    }
    return std::nullopt;
}

/// Sends the next packet to the decoder, unless the goal doesn't depend on it.
void FrameSearch::sendNext(const Goal *goal) {
    m_input.throwIfStopped();
    const PacketHandle packet = m_packets.take();
    const bool isSkippable = packet && goal && canSkip(*packet, *goal);
    if (isSkippable && m_nonReference.isNonReference(*packet)) {
        return;
    }
    m_decoder.send(packet.get(), isSkippable);
    if (packet && goal && m_isSingleFrameRead && isGoalPacket(*packet, *goal)) {
        m_decoder.send(nullptr);
        m_isInterrupted = true;
    }
}

/// Whether the packet is needed only if other frames refer to it, because its frame comes before
/// the goal. A packet can hold a single field, so the last one before the goal is kept.
bool FrameSearch::canSkip(const AVPacket &packet, const Goal &goal) {
    const qint64 frameDuration = m_decoder.nominalDuration();
    if (packet.pts == AV_NOPTS_VALUE || frameDuration <= 0) {
        return false;
    }
    const auto last = m_packets.lastPts(goal.target);
    return last && packet.pts < std::min(goal.earliest, *last) - frameDuration;
}

/// Whether the packet holds the goal's frame, so that draining the decoder returns it without
/// waiting for later packets. As the next read must seek then, keyframes have to be close.
bool FrameSearch::isGoalPacket(const AVPacket &packet, const Goal &goal) {
    const bool isGoal =
        m_packets.isLastPts(packet.pts, goal.target) || goal.isWithinTolerance(packet.pts);
    return packet.pts != AV_NOPTS_VALUE && isGoal && m_timeline.hasCloseKeyframes(goal.latest);
}

/// Whether the decoder was drained at a goal packet that turned out to be damaged, so that an
/// adjacent frame has to be decoded after another seek.
bool FrameSearch::isSeekNeeded(const Frame &frame, const Goal &goal) const {
    return m_isInterrupted && (!frame || frame->time < goal.earliest - m_decoder.nominalDuration());
}

} // namespace corvane::media

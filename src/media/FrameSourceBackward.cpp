// Playing backward where more frames lie between two key frames than the cache holds. Each of them
// must be decoded from the key frame on, so they are decoded once and the spread ones are kept.

#include "media/FrameSource.h"

#include <algorithm>
#include <cmath>

namespace corvane::media {

namespace {

constexpr double kAssumedRate = 25;
/// Of the cache, for the frames of one thinning: the one being shown, the next, and what is behind.
constexpr int kThinShare = 3;
constexpr int kThinnedRun = 150; ///< as many exact ones are enough
/// What was shown makes room before anything that is still to be shown.
constexpr double kThinBehindCost = 1000;

} // namespace

/// The key frame that the frames before `goal` are decoded from, where that is far.
std::optional<MediaTime> FrameSource::farKey(MediaTime goal) const {
    if (!m_focus) {
        return std::nullopt;
    }
    const auto key = m_reader->keyframeBefore(goal);
    const double rate = m_reader->nominalFrameRate();
    const double frames =
        key ? (goal.seconds() - key->seconds()) * (rate > 0 ? rate : kAssumedRate) : 0;
    const bool isFar = frames * double(m_focus->byteCount()) > double(m_cache.byteLimit()) / 2;
    return isFar ? key : std::nullopt;
}

bool FrameSource::isThinned(MediaTime time) const {
    return m_thinning && time <= m_thinnedUpTo && time > m_thinning->key;
}

std::optional<VideoFrame> FrameSource::behind(const VideoFrame &frame) {
    if (const auto previous = m_cache.before(frame.time)) {
        return previous;
    }
    if (!isThinned(frame.time)) {
        const auto key = farKey(frame.time);
        if (!key) {
            return before(frame);
        }
        thinOut(*key, frame.time);
    }
    while (frame.time <= m_thinning->goal && thinFurther()) {
    }
    const auto found = m_cache.nearestBefore(frame.time);
    return found && found->time >= m_thinning->key ? found : before(frame);
}

void FrameSource::thinOut(MediaTime key, MediaTime goal) {
    const double rate = m_reader->nominalFrameRate();
    const double frames = (goal.seconds() - key.seconds()) * (rate > 0 ? rate : kAssumedRate);
    const auto bytes = double(std::max<qsizetype>(m_focus->byteCount(), 1));
    const double room = std::max(double(m_cache.byteLimit()) / kThinShare / bytes, 1.0);
    const bool goesOn = m_thinning && m_thinning->key == goal;
    m_thinnedUpTo = goesOn ? m_thinnedUpTo : goal;
    m_cache.setBehindCost(kThinBehindCost);
    m_thinning = {
        .key = key, .goal = goal, .keepEvery = std::max(int(std::ceil(frames / room)), 1)};
}

/// Reads one frame of the thinning; false where it is done.
bool FrameSource::thinFurther() {
    Thinning &thinning = *m_thinning;
    if (thinning.isDone) {
        return false;
    }
    std::optional<VideoFrame> frame;
    if (!thinning.reached || m_given != thinning.reached->time) {
        m_given.reset();
        frame = m_reader->frameAt(thinning.reached ? thinning.reached->time : thinning.key);
    } else {
        m_given.reset();
        frame = m_reader->next();
    }
    if (!frame || frame->time >= thinning.goal) {
        thinning.isDone = true;
        return false;
    }
    m_given = frame->time;
    thinning.reached = frame;
    if (thinning.given++ % thinning.keepEvery == 0) {
        m_cache.insert(*frame, std::nullopt);
    }
    return true;
}

/// Ahead of need: what is begun, and then as much again further back.
bool FrameSource::fillThinly() {
    const auto edge =
        m_cache.runEnd(m_focus->time, Direction::backward, kThinnedRun, m_cache.byteLimit() / 2);
    if (!edge) {
        return false;
    }
    if (!isThinned(*edge)) {
        const auto key = farKey(*edge);
        if (!key) {
            return fillBehind(*edge);
        }
        thinOut(*key, *edge);
        return true;
    }
    if (thinFurther()) {
        return true;
    }
    const auto key = farKey(m_thinning->key);
    const qsizetype waiting = m_cache.bytesBetween(m_thinning->key, m_focus->time);
    if (!key || waiting > m_cache.byteLimit() / kThinShare) {
        return false;
    }
    thinOut(*key, m_thinning->key);
    return true;
}

} // namespace corvane::media

// Backward playback of GOPs that don't fit in the cache. Every frame must be decoded from the
// keyframe on, so each GOP is decoded once and evenly spaced frames of it are kept.

#include "media/FrameSource.h"

#include <algorithm>
#include <cmath>

namespace corvane::media {

namespace {

/// The cache is divided between the run being shown, the next one and the frames behind.
constexpr int kCacheShares = 3;
constexpr int kAdjacentFrames = 150; ///< enough frames behind the playhead without gaps
/// Evicts frames that were shown before any that are still to be shown.
constexpr double kSparseBehindCost = 1000;

} // namespace

/// The keyframe before `goal` if the frames in between take up much of the cache, else nullopt.
std::optional<MediaTime> FrameSource::distantKeyframe(MediaTime goal) const {
    if (!m_focus) {
        return std::nullopt;
    }
    const auto keyframe = m_reader->keyframeBefore(goal);
    const double frames = keyframe ? (goal.seconds() - keyframe->seconds()) * frameRate() : 0;
    const bool isDistant = frames * double(m_focus->byteCount()) > double(m_cache.byteLimit()) / 2;
    return isDistant ? keyframe : std::nullopt;
}

bool FrameSource::isInSparseRun(MediaTime time) const {
    return m_sparseRun && time <= m_sparseEnd && time > m_sparseRun->keyframe;
}

std::optional<VideoFrame> FrameSource::previousToPlay(const VideoFrame &frame) {
    if (const auto previous = m_cache.previous(frame.time)) {
        return previous;
    }
    if (!isInSparseRun(frame.time)) {
        const auto keyframe = distantKeyframe(frame.time);
        if (!keyframe) {
            return previous(frame);
        }
        startSparseRun(*keyframe, frame.time);
    }
    while (frame.time <= m_sparseRun->goal && readSparsely()) {
    }
    const auto found = m_cache.nearestBefore(frame.time);
    return found && found->time >= m_sparseRun->keyframe ? found : previous(frame);
}

void FrameSource::startSparseRun(MediaTime keyframe, MediaTime goal) {
    const double frames = (goal.seconds() - keyframe.seconds()) * frameRate();
    const auto bytes = double(std::max<qsizetype>(m_focus->byteCount(), 1));
    const double capacity = std::max(double(m_cache.byteLimit()) / kCacheShares / bytes, 1.0);
    const bool isContinued = m_sparseRun && m_sparseRun->keyframe == goal;
    m_sparseEnd = isContinued ? m_sparseEnd : goal;
    m_cache.setBehindCost(kSparseBehindCost);
    m_sparseRun = {.keyframe = keyframe,
                   .goal = goal,
                   .keepEvery = std::max(int(std::ceil(frames / capacity)), 1)};
}

/// Decodes one frame of the sparse run. Returns false if the run is complete.
bool FrameSource::readSparsely() {
    SparseRun &run = *m_sparseRun;
    if (run.isDone) {
        return false;
    }
    const bool canContinue = run.reached && m_lastRead == run.reached->time;
    m_lastRead.reset();
    const auto frame = canContinue
                           ? m_reader->next()
                           : m_reader->frameAt(run.reached ? run.reached->time : run.keyframe);
    if (!frame || frame->time >= run.goal) {
        run.isDone = true;
        return false;
    }
    m_lastRead = frame->time;
    run.reached = frame;
    if (run.decoded++ % run.keepEvery == 0) {
        m_cache.insert(*frame, std::nullopt);
    }
    return true;
}

/// Completes the current sparse run, then starts the one before it if the cache has room.
bool FrameSource::readAheadSparsely() {
    const auto end = m_cache.runEnd(m_focus->time, Direction::backward, kAdjacentFrames,
                                    m_cache.byteLimit() / 2);
    if (!end) {
        return false;
    }
    if (!isInSparseRun(*end)) {
        const auto keyframe = distantKeyframe(*end);
        if (!keyframe) {
            return readBackward(*end);
        }
        startSparseRun(*keyframe, *end);
        return true;
    }
    if (readSparsely()) {
        return true;
    }
    const auto keyframe = distantKeyframe(m_sparseRun->keyframe);
    const qsizetype bytesToShow = m_cache.bytesBetween(m_sparseRun->keyframe, m_focus->time);
    if (!keyframe || bytesToShow > m_cache.byteLimit() / kCacheShares) {
        return false;
    }
    startSparseRun(*keyframe, m_sparseRun->keyframe);
    return true;
}

} // namespace corvane::media

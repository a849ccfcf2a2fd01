#include "media/FrameSource.h"

#include <algorithm>

namespace corvane::media {

namespace {

constexpr int kFramesAhead = 30;
constexpr int kFramesBehind = 150;
constexpr int kBackwardRunFrames = 24;
constexpr int kReadsPerFocus = kFramesAhead + kFramesBehind + 2 * kBackwardRunFrames;
constexpr double kDefaultFrameRate = 25;
/// Up to this many seconds ahead, decoding the frames in between may be faster than a seek.
constexpr double kShortSeek = 2;
constexpr double kMinBackwardRun = 4.0 / MediaTime::kTimescale; ///< seconds; above rounding errors

} // namespace

FrameSource::FrameSource(const QString &path, qsizetype byteLimit, std::stop_token stop)
    : m_path(path),
      m_stop(stop),
      m_reader(std::make_unique<VideoReader>(path, VideoReader::Options(), std::move(stop))),
      m_cache(byteLimit) {}

void FrameSource::setStop(const std::stop_token &stop) {
    m_stop = stop;
    m_reader->setStop(stop);
    if (m_seekReader) {
        m_seekReader->setStop(stop);
    }
}

double FrameSource::frameRate() const {
    const double rate = m_reader->nominalFrameRate();
    return rate > 0 ? rate : kDefaultFrameRate;
}

VideoReader &FrameSource::seekReader() {
    if (!m_seekReader) {
        m_seekReader = std::make_unique<VideoReader>(
            m_path, VideoReader::Options{.isSingleFrameRead = true}, m_stop);
    }
    return *m_seekReader;
}

/// A read that throws leaves the reader's position unknown, so `m_lastRead` is set only on success.
std::optional<VideoFrame> FrameSource::read(MediaTime time, double tolerance) {
    m_lastRead.reset();
    const auto frame = m_reader->frameAt(time, tolerance);
    if (frame) {
        m_cache.insert(*frame, std::nullopt);
        m_lastRead = frame->time;
    }
    return frame;
}

std::optional<VideoFrame> FrameSource::readNext(MediaTime time) {
    if (m_lastRead != time) {
        const auto frame = read(time, 0);
        if (!frame || frame->time != time) {
            return std::nullopt;
        }
    }
    m_lastRead.reset();
    auto frame = m_reader->next();
    if (!frame) {
        m_lastTime = time;
        return std::nullopt;
    }
    m_cache.insert(*frame, time);
    m_lastRead = frame->time;
    return frame;
}

std::optional<VideoFrame> FrameSource::at(MediaTime time) {
    if (const auto frame = m_cache.frameAt(time)) {
        return frame;
    }
    const double distance = m_focus ? time.seconds() - m_focus->time.seconds() : 0;
    if (distance >= 0 && distance < kShortSeek) {
        return read(time, 0);
    }
    if (!m_reader->hasCloseKeyframes(time)) {
        return readInLongGop(time);
    }
    const auto frame = seekReader().frameAt(time);
    if (frame) {
        m_cache.insert(*frame, std::nullopt);
    }
    return frame;
}

/// Reads with the reader that needs the least decoding, or with the less recently used one if both
/// have to seek: alternating seeks often go to two positions. That reader then continues from
/// there.
std::optional<VideoFrame> FrameSource::readInLongGop(MediaTime time) {
    const auto fromReader = m_reader->secondsToDecode(time);
    const auto fromSeekReader = seekReader().secondsToDecode(time);
    if (!fromReader || (fromSeekReader && *fromSeekReader < *fromReader)) {
        std::swap(m_reader, m_seekReader);
        m_reader->setSingleFrameRead(false);
        m_seekReader->setSingleFrameRead(true);
    }
    return read(time, 0);
}

std::optional<VideoFrame> FrameSource::near(MediaTime time, double tolerance) {
    if (const auto frame = m_cache.frameAt(time)) {
        return frame;
    }
    if (const auto frame = m_cache.nearest(time, tolerance)) {
        return frame;
    }
    return read(time, tolerance);
}

std::optional<VideoFrame> FrameSource::next(const VideoFrame &frame) {
    if (const auto next = m_cache.next(frame.time)) {
        return next;
    }
    if (m_lastTime && frame.time >= *m_lastTime) {
        return std::nullopt;
    }
    return readNext(frame.time);
}

std::optional<VideoFrame> FrameSource::previous(const VideoFrame &frame) {
    for (;;) {
        if (const auto previous = m_cache.previous(frame.time)) {
            return previous;
        }
        if (!readBackward(frame.time)) {
            const bool isFound =
                m_backwardRun && m_backwardRun->isDone && m_backwardRun->goal == frame.time;
            return isFound ? std::optional(m_backwardRun->reached) : std::nullopt;
        }
    }
}

void FrameSource::setFocus(const VideoFrame &frame, Direction direction) {
    if (!m_focus || m_focus->time != frame.time || m_direction != direction) {
        m_readsLeft = kReadsPerFocus;
    }
    m_focus = frame;
    m_direction = direction;
    if (direction == Direction::forward) {
        m_cache.setBehindCost(FrameCache::kDefaultBehindCost);
    }
    m_cache.setFocus(frame.time, direction);
    m_cache.insert(frame, std::nullopt);
}

bool FrameSource::readAhead(bool inBothDirections) {
    if (!m_focus || m_readsLeft <= 0) {
        return false;
    }
    --m_readsLeft;
    if (m_direction == Direction::backward && !inBothDirections) {
        return readAheadSparsely();
    }
    const auto other = m_direction == Direction::forward ? Direction::backward : Direction::forward;
    return readAheadInRun(m_direction) || (inBothDirections && readAheadInRun(other));
}

bool FrameSource::readAheadInRun(Direction direction) {
    const bool isForward = direction == Direction::forward;
    const auto end =
        m_cache.runEnd(m_focus->time, direction, isForward ? kFramesAhead : kFramesBehind,
                       m_cache.byteLimit() / (isForward ? 4 : 2));
    return end && (isForward ? readAheadFrom(*end) : readBackward(*end));
}

bool FrameSource::readAheadFrom(MediaTime time) {
    return !(m_lastTime && time >= *m_lastTime) && readNext(time).has_value();
}

/// Reads one frame of a run that starts before `goal` and is decoded forward up to it. Returns
/// false if the run is complete.
bool FrameSource::readBackward(MediaTime goal) {
    if (m_firstTime && goal <= *m_firstTime) {
        return false;
    }
    if (m_backwardRun && m_backwardRun->goal == goal && m_backwardRun->isDone) {
        return false;
    }
    if (!m_backwardRun || m_backwardRun->goal != goal ||
        m_lastRead != m_backwardRun->reached.time) {
        return startBackwardRun(goal);
    }
    const auto frame = readNext(m_backwardRun->reached.time);
    if (frame && frame->time < goal) {
        m_backwardRun->reached = *frame;
        return true;
    }
    m_cache.setAdjacent(m_backwardRun->reached.time, goal);
    m_backwardRun->isDone = true;
    return true;
}

bool FrameSource::startBackwardRun(MediaTime goal) {
    m_backwardRun.reset();
    const auto start = std::max(goal.seconds() - backwardRunSeconds(), 0.0);
    const auto frame = read(MediaTime::fromSeconds(start), 0);
    if (!frame || frame->time >= goal) {
        m_firstTime = goal;
        return false;
    }
    m_backwardRun = {goal, *frame};
    return true;
}

double FrameSource::backwardRunSeconds() const {
    const auto bytes = m_focus ? std::max<qsizetype>(m_focus->byteCount(), 1) : 1;
    const auto frames =
        std::clamp<qsizetype>(m_cache.byteLimit() / 4 / bytes, 1, kBackwardRunFrames);
    return std::max(double(frames) / frameRate(), kMinBackwardRun);
}

} // namespace corvane::media

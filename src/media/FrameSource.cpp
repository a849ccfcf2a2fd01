#include "media/FrameSource.h"

#include <algorithm>

namespace corvane::media {

namespace {

constexpr int kFramesAhead = 30;
constexpr int kFramesBehind = 150;
constexpr int kFramesAtOnce = 24; ///< that are read in one go on the way back
constexpr int kFillsPerFocus = kFramesAhead + kFramesBehind + 2 * kFramesAtOnce;
constexpr double kUsualFrameRate = 25;
constexpr double kShortJump = 2; ///< seconds ahead, to which decoding on may be quickest
constexpr double kLeastChunk = 4.0 / MediaTime::kTimescale; ///< safe from rounding

} // namespace

FrameSource::FrameSource(const QString &path, qsizetype byteLimit, std::stop_token stop)
    : m_path(path),
      m_stop(stop),
      m_reader(std::make_unique<VideoReader>(path, VideoReader::Options(), std::move(stop))),
      m_cache(byteLimit) {}

void FrameSource::setStop(const std::stop_token &stop) {
    m_stop = stop;
    m_reader->setStop(stop);
    if (m_seeker) {
        m_seeker->setStop(stop);
    }
}

VideoReader &FrameSource::seeker() {
    if (!m_seeker) {
        m_seeker = std::make_unique<VideoReader>(
            m_path, VideoReader::Options{.isSingleFrameRead = true}, m_stop);
    }
    return *m_seeker;
}

/// A cancelled read leaves the reader somewhere: `m_given` is set only by one that came through.
std::optional<VideoFrame> FrameSource::read(MediaTime time, double tolerance) {
    m_given.reset();
    const auto frame = m_reader->frameAt(time, tolerance);
    if (frame) {
        m_cache.insert(*frame, std::nullopt);
        m_given = frame->time;
    }
    return frame;
}

std::optional<VideoFrame> FrameSource::readAfter(MediaTime time) {
    if (m_given != time) {
        const auto frame = read(time, 0);
        if (!frame || frame->time != time) {
            return std::nullopt;
        }
    }
    m_given.reset();
    auto frame = m_reader->next();
    if (!frame) {
        m_last = time;
        return std::nullopt;
    }
    m_cache.insert(*frame, time);
    m_given = frame->time;
    return frame;
}

std::optional<VideoFrame> FrameSource::at(MediaTime time) {
    if (const auto frame = m_cache.naming(time)) {
        return frame;
    }
    const double jump = m_focus ? time.seconds() - m_focus->time.seconds() : 0;
    if (jump >= 0 && jump < kShortJump) {
        return read(time, 0);
    }
    if (!m_reader->hasCloseKeyframes(time)) {
        return readFar(time);
    }
    const auto frame = seeker().frameAt(time);
    if (frame) {
        m_cache.insert(*frame, std::nullopt);
    }
    return frame;
}

/// Between distant key frames the way to a frame is long, so it is read by the one of the two that
/// stands nearest before it, or else by the one that has stood for longer: the frames that are
/// looked for in turn often lie around two places. Whichever it was goes on from there.
std::optional<VideoFrame> FrameSource::readFar(MediaTime time) {
    const auto own = m_reader->secondsToDecode(time);
    const auto other = seeker().secondsToDecode(time);
    if (!own || (other && *other < *own)) {
        std::swap(m_reader, m_seeker);
        m_reader->setSingleFrameRead(false);
        m_seeker->setSingleFrameRead(true);
    }
    return read(time, 0);
}

std::optional<VideoFrame> FrameSource::near(MediaTime time, double tolerance) {
    if (const auto frame = m_cache.naming(time)) {
        return frame;
    }
    if (const auto frame = m_cache.nearest(time, tolerance)) {
        return frame;
    }
    return read(time, tolerance);
}

std::optional<VideoFrame> FrameSource::after(const VideoFrame &frame) {
    if (const auto next = m_cache.after(frame.time)) {
        return next;
    }
    if (m_last && frame.time >= *m_last) {
        return std::nullopt;
    }
    return readAfter(frame.time);
}

std::optional<VideoFrame> FrameSource::before(const VideoFrame &frame) {
    for (;;) {
        if (const auto previous = m_cache.before(frame.time)) {
            return previous;
        }
        if (!fillBehind(frame.time)) {
            const bool isFound = m_filling && m_filling->isDone && m_filling->goal == frame.time;
            return isFound ? std::optional(m_filling->reached) : std::nullopt;
        }
    }
}

void FrameSource::setFocus(const VideoFrame &frame, Direction direction) {
    if (!m_focus || m_focus->time != frame.time || m_direction != direction) {
        m_fillsLeft = kFillsPerFocus;
    }
    m_focus = frame;
    m_direction = direction;
    if (direction == Direction::forward) {
        m_cache.setBehindCost(FrameCache::kUsualBehindCost);
    }
    m_cache.setFocus(frame.time, direction);
    m_cache.insert(frame, std::nullopt);
}

bool FrameSource::fill(bool bothWays) {
    if (!m_focus || m_fillsLeft <= 0) {
        return false;
    }
    --m_fillsLeft;
    if (m_direction == Direction::backward && !bothWays) {
        return fillThinly();
    }
    const auto other = m_direction == Direction::forward ? Direction::backward : Direction::forward;
    return fillTowards(m_direction) || (bothWays && fillTowards(other));
}

bool FrameSource::fillTowards(Direction direction) {
    const bool isForward = direction == Direction::forward;
    const auto edge =
        m_cache.runEnd(m_focus->time, direction, isForward ? kFramesAhead : kFramesBehind,
                       m_cache.byteLimit() / (isForward ? 4 : 2));
    return edge && (isForward ? fillAhead(*edge) : fillBehind(*edge));
}

bool FrameSource::fillAhead(MediaTime from) {
    return !(m_last && from >= *m_last) && readAfter(from).has_value();
}

/// Back there is no way but to begin further back and read up to the goal. Each call reads one
/// frame; false where nothing is left to read.
bool FrameSource::fillBehind(MediaTime goal) {
    if (m_first && goal <= *m_first) {
        return false;
    }
    if (m_filling && m_filling->goal == goal && m_filling->isDone) {
        return false;
    }
    if (!m_filling || m_filling->goal != goal || m_given != m_filling->reached.time) {
        return beginBehind(goal);
    }
    const auto frame = readAfter(m_filling->reached.time);
    if (frame && frame->time < goal) {
        m_filling->reached = *frame;
        return true;
    }
    m_cache.join(m_filling->reached.time, goal);
    m_filling->isDone = true;
    return true;
}

bool FrameSource::beginBehind(MediaTime goal) {
    m_filling.reset();
    const auto start = std::max(goal.seconds() - chunkSeconds(), 0.0);
    const auto frame = read(MediaTime::fromSeconds(start), 0);
    if (!frame || frame->time >= goal) {
        m_first = goal;
        return false;
    }
    m_filling = {goal, *frame};
    return true;
}

double FrameSource::chunkSeconds() const {
    const auto bytes = m_focus ? std::max<qsizetype>(m_focus->byteCount(), 1) : 1;
    const auto frames = std::clamp<qsizetype>(m_cache.byteLimit() / 4 / bytes, 1, kFramesAtOnce);
    const double rate = m_reader->nominalFrameRate();
    return std::max(double(frames) / (rate > 0 ? rate : kUsualFrameRate), kLeastChunk);
}

} // namespace corvane::media

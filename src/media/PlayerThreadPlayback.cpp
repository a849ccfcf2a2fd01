// Playback: the states of `PlaybackState.h`, and the motion of the playhead while it runs.

#include "media/PlayerThread.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace corvane::media {

namespace {

using namespace playback;
using namespace std::chrono_literals;

/// Seconds. Times closer than this are equal but for rounding.
constexpr double kEpsilon = 1e-6;
/// Faster audio isn't intelligible.
constexpr float kFastestAudioRate = 2;
constexpr auto kAudioStartTimeout = 500ms;
constexpr auto kAudioSyncPeriod = 250ms;
/// Seconds. Larger deviations from the audio are corrected at once, smaller ones by a share.
constexpr double kLargeDeviation = 0.15;
constexpr double kCorrectedShare = 0.25;
/// If decoding up to the playhead takes longer than this, frames are skipped.
constexpr auto kMaxDecodeTime = 150ms;
/// The least time before the next frame is due for which reading ahead is worthwhile.
constexpr auto kMinReadAheadTime = 4ms;

} // namespace

void PlayerThread::enter(State state) {
    m_state = state;
    if (!m_audioOutput || std::holds_alternative<Starting>(m_state)) {
        return; // audio that plays continues until it seeks or pauses in the next state
    }
    const auto *running = std::get_if<Running>(&m_state);
    if (const auto *awaiting = std::get_if<AwaitingAudio>(&m_state)) {
        m_audioOutput->play(awaiting->position, m_rate.value);
    } else if (!running || !running->nextAudioSync) {
        m_audioOutput->pause();
    }
}

/// Starts playback from the current time, or pauses if the rate is 0.
void PlayerThread::restart() {
    if (m_rate.value != 0) {
        enter(Starting());
    } else if (!std::holds_alternative<Paused>(m_state)) {
        enter(Paused());
    }
}

/// Pauses where playback in this direction ends. The shown frame stays.
void PlayerThread::stopPlayback() {
    m_time = timeAfterEnd();
    m_rate.value = 0;
    enter(Paused());
    report(true);
    m_reports.add([this](PlayerReport &report) { report.endedRate = m_rate.serial; });
}

void PlayerThread::endPlayback() {
    stopPlayback();
    if (m_range) {
        showFrameAt(m_time, PlayerRequests::Task::seek);
    }
}

MediaTime PlayerThread::timeAfterEnd() const {
    if (m_range) {
        return m_range->in;
    }
    if (m_rate.value < 0) {
        return {};
    }
    return m_duration && m_duration->seconds() >= endSeconds()
               ? *m_duration
               : MediaTime::fromSeconds(endSeconds());
}

/// Continues in the current state. Returns the current time if another turn is needed at once.
PlayerThread::Due PlayerThread::advance() {
    return std::visit([this](auto &state) { return this->advance(state); }, m_state);
}

PlayerThread::Due PlayerThread::advance(Paused &) {
    if (!m_source) {
        return std::nullopt;
    }
    if (m_clock.now() < m_readAheadFrom) {
        return m_readAheadFrom;
    }
    startTask(PlayerRequests::Task::readAhead);
    return m_source->readAhead(true) ? Due(m_clock.now()) : std::nullopt;
}

PlayerThread::Due PlayerThread::advance(Starting &) {
    const auto now = m_clock.now();
    const double position = m_time.seconds();
    if (isRangeOver(position)) {
        endPlayback();
        return now;
    }
    if (m_audioOutput && m_rate.value > 0 && m_rate.value <= kFastestAudioRate) {
        enter(AwaitingAudio{position, now + kAudioStartTimeout});
    } else {
        enter(Running{.position = position, .motion = {position, m_rate.value, now}});
    }
    return now;
}

PlayerThread::Due PlayerThread::advance(AwaitingAudio &awaiting) {
    const auto now = m_clock.now();
    if (m_audioOutput->state() == AudioOutput::State::starting && now < awaiting.deadline) {
        return awaiting.deadline;
    }
    enter(Running{.position = awaiting.position,
                  .motion = {awaiting.position, m_rate.value, now},
                  .nextAudioSync = now});
    return now;
}

PlayerThread::Due PlayerThread::advance(Running &running) {
    startTask(PlayerRequests::Task::play);
    const auto now = m_clock.now();
    syncToAudio(running, now);
    const double from = running.position;
    const double reached = running.motion.position(now);
    const double to = isForward() ? std::max(from, std::min(reached, limit()))
                                  : std::min(from, std::max(reached, limit()));
    moveTo(running, to);
    show();
    if (isAtEnd(running)) {
        endPlayback();
        return now;
    }
    m_time = shownTime(running);
    const bool isFirst = !running.nextReport;
    if (isFirst || (m_observers.period && now >= *running.nextReport)) {
        report(isFirst);
        running.nextReport = now + m_observers.period.value_or(0s);
    }
    const auto due = nextDue(running);
    const bool canReadAhead = m_source && due - m_clock.now() > kMinReadAheadTime;
    return canReadAhead && m_source->readAhead(false) ? now : due;
}

void PlayerThread::syncToAudio(Running &running, Duration now) {
    if (!running.nextAudioSync || now < *running.nextAudioSync) {
        return;
    }
    running.nextAudioSync = now + kAudioSyncPeriod;
    if (const auto heard = m_audioOutput->position()) {
        const double deviation = *heard - running.motion.position(now);
        const bool isLarge = std::abs(deviation) > kLargeDeviation;
        running.motion.shift(isLarge ? deviation : deviation * kCorrectedShare);
    }
}

std::optional<VideoFrame> PlayerThread::nextToPlay() {
    return isForward() ? m_source->next(*m_frame) : m_source->previousToPlay(*m_frame);
}

/// Moves the playhead and `m_frame` to the position, decoding the frames on the way.
void PlayerThread::moveTo(Running &running, double seconds) {
    const auto start = m_clock.now();
    while (m_frame && (isForward() || m_frame->time.seconds() > seconds + kEpsilon)) {
        const auto next = nextToPlay();
        if (!next || (isForward() && next->time.seconds() > seconds + kEpsilon)) {
            break;
        }
        setFrame(*next);
        if (m_clock.now() - start > kMaxDecodeTime) {
            skipTo(running.motion.position(m_clock.now()));
            break;
        }
    }
    running.position = seconds;
}

/// If the playhead is far ahead of the frame, continues from a frame near it that is fast to
/// decode.
void PlayerThread::skipTo(double seconds) {
    const double rate = m_rate.value;
    const double lag = (seconds - m_frame->time.seconds()) / rate;
    if (lag < std::chrono::duration<double>(kMaxDecodeTime).count()) {
        return;
    }
    const auto frame =
        m_source->near(MediaTime::fromSeconds(std::max(seconds, 0.0)), std::abs(rate) / 2);
    const auto isBetween = [](double time, double from, double to) {
        return time > from && time <= to + kHalfTick;
    };
    const double from = m_frame->time.seconds();
    const double time = frame ? frame->time.seconds() : from;
    if (rate > 0 ? isBetween(time, from, limit()) : isBetween(-time, -from, -limit())) {
        setFrame(*frame);
    }
}

double PlayerThread::endSeconds() const {
    const double last = m_frame ? m_frame->time.seconds() : 0;
    const double duration = m_duration ? m_duration->seconds() : 0;
    if (duration > last) {
        return duration;
    }
    return m_frame ? std::max(last, m_frame->end.seconds()) : 0;
}

/// The position at which playback in this direction has to stop, in seconds; may be infinite.
double PlayerThread::limit() const {
    if (m_range) {
        return (isForward() ? m_range->out : m_range->in).seconds();
    }
    return isForward() ? std::numeric_limits<double>::infinity() : 0;
}

/// True if there is a range and playback in this direction can't continue in it.
bool PlayerThread::isRangeOver(double position) const {
    return m_range &&
           (isForward() ? position + kEpsilon >= limit() : position - kEpsilon <= limit());
}

bool PlayerThread::isAtEnd(const Running &running) {
    if (isRangeOver(running.position)) {
        return true;
    }
    const bool isTimeOver =
        isForward() ? running.position + kEpsilon >= endSeconds() : running.position <= 0;
    return isTimeOver && !(m_frame && nextToPlay());
}

/// The playhead on the 1/600 grid, rounded so that it names the frame that is shown.
MediaTime PlayerThread::shownTime(const Running &running) {
    MediaTime time{qint64(std::floor(running.position * MediaTime::kTimescale + kEpsilon)),
                   MediaTime::kTimescale};
    if (!m_frame) {
        return time;
    }
    const auto next = isForward() ? nextToPlay() : std::nullopt;
    const MediaTime end = next ? next->time : m_frame->end;
    if ((next || !isForward()) && end.seconds() <= time.seconds() + kHalfTick) {
        --time.value;
    }
    return time.seconds() + kHalfTick < m_frame->time.seconds() ? m_frame->time : time;
}

/// When the next frame, the end of the range or the next report is due.
PlayerThread::Duration PlayerThread::nextDue(const Running &running) {
    double next = isForward() ? endSeconds() : 0;
    if (m_frame) {
        if (const auto frame = nextToPlay()) {
            next = isForward() ? frame->time.seconds() : m_frame->time.seconds() - 2 * kEpsilon;
        }
    }
    next = isForward() ? std::min(next, limit()) : std::max(next, limit());
    const auto due = running.motion.timeOf(next);
    return m_observers.period ? std::min(due, running.nextReport.value_or(due)) : due;
}

} // namespace corvane::media

#include "media/PlayerThread.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace corvane::media {

namespace {

using namespace std::chrono_literals;

/// Times closer than this are one, whatever the arithmetic made of them.
constexpr double kSameTime = 1e-6;
/// From here on the sound is too fast to be of use.
constexpr float kFastestSound = 2;
constexpr auto kLongestSoundStart = 500ms;
constexpr auto kSoundCheckPeriod = 250ms;
constexpr double kSoundJump = 0.15; ///< seconds that are set right at once, not little by little
constexpr double kSoundShare = 0.25;
/// Decoding that takes longer than this on the way to one picture can't keep up.
constexpr auto kPatience = 150ms;
/// Before a picture is due there is this much time at least for reading ahead.
constexpr auto kTimeToFill = 4ms;

} // namespace

PlayerThread::Due PlayerThread::play() {
    begin(PlayerRequests::Work::play);
    const auto now = m_clock.now();
    if (!m_isClockSet) {
        startClock(now);
    }
    if (m_isHeld) {
        return std::nullopt;
    }
    if (waitsForSound(now)) {
        return m_soundDeadline;
    }
    followSound(now);
    const double from = m_position;
    const double reached = m_motion.position(now);
    const double to = m_rate.value > 0 ? std::max(from, reached) : std::clamp(reached, 0.0, from);
    if (holdAtBoundary(from, to)) {
        return std::nullopt;
    }
    moveTo(to);
    show();
    if (isAtEnd()) {
        endPlayback();
        return now;
    }
    m_time = timeShown();
    if (m_isStarting || (m_observers.period && now >= m_nextReport)) {
        report(std::exchange(m_isStarting, false));
        m_nextReport = now + m_observers.period.value_or(0s);
    }
    const auto due = nextDue(now);
    return m_source && due - m_clock.now() > kTimeToFill && m_source->fill(false) ? now : due;
}

void PlayerThread::startClock(Duration now) {
    m_isClockSet = true;
    m_position = m_time.seconds();
    m_motion.start(m_position, m_rate.value, now);
    m_isStarting = true;
    m_soundDeadline.reset();
    if (!m_sound) {
        return;
    }
    if (m_rate.value > 0 && m_rate.value <= kFastestSound) {
        m_sound->play(m_position, m_rate.value);
        m_soundDeadline = now + kLongestSoundStart;
        m_soundCheck = now;
    } else {
        m_sound->pause();
    }
}

/// Pictures start with the sound, or without it if it takes too long.
bool PlayerThread::waitsForSound(Duration now) {
    if (!m_soundDeadline) {
        return false;
    }
    if (m_sound->state() == AudioOutput::State::starting && now < *m_soundDeadline) {
        return true;
    }
    m_soundDeadline.reset();
    m_motion.start(m_position, m_rate.value, now);
    return false;
}

void PlayerThread::followSound(Duration now) {
    if (!m_sound || now < m_soundCheck) {
        return;
    }
    m_soundCheck = now + kSoundCheckPeriod;
    if (const auto heard = m_sound->position()) {
        const double ahead = *heard - m_motion.position(now);
        m_motion.shift(std::abs(ahead) > kSoundJump ? ahead : ahead * kSoundShare);
    }
}

/// At a boundary the playhead stands exactly on it until the main thread has answered.
bool PlayerThread::holdAtBoundary(double from, double to) {
    std::optional<MediaTime> first;
    for (const auto &boundary : m_observers.boundaries) {
        const double at = boundary.time.seconds();
        const bool isForward = m_rate.value > 0;
        const bool isMet =
            isForward ? from < at && at <= to + kSameTime : from > at && at >= to - kSameTime;
        if (isMet && (!first || (isForward ? boundary.time < *first : boundary.time > *first))) {
            first = boundary.time;
        }
    }
    if (!first) {
        return false;
    }
    moveTo(first->seconds());
    show();
    m_time = *first;
    m_isHeld = true;
    if (m_sound) {
        m_sound->pause();
    }
    report(false);
    m_reports.add([this, first](PlayerReport &report) {
        for (const auto &boundary : m_observers.boundaries) {
            if (boundary.time == *first) {
                report.boundaries.append(boundary.token);
            }
        }
    });
    return true;
}

std::optional<VideoFrame> PlayerThread::neighbour(bool isForward) {
    return isForward ? m_source->after(*m_frame) : m_source->behind(*m_frame);
}

/// Takes the frame that stands at this time of the playback. The frames on the way are decoded and
/// passed over.
void PlayerThread::moveTo(double seconds) {
    m_position = seconds;
    if (!m_frame) {
        return;
    }
    const bool isForward = m_rate.value > 0;
    const auto began = m_clock.now();
    for (;;) {
        if (!isForward && m_frame->time.seconds() <= seconds + kSameTime) {
            return;
        }
        const auto next = neighbour(isForward);
        if (!next || (isForward && next->time.seconds() > seconds + kSameTime)) {
            return;
        }
        take(*next);
        if (m_clock.now() - began > kPatience) {
            catchUp();
            return;
        }
    }
}

/// Decoding every frame takes too long: goes on from one that is quick to have, about where the
/// playhead is by now.
void PlayerThread::catchUp() {
    const double now = m_motion.position(m_clock.now());
    const double rate = m_rate.value;
    const double lag = (now - m_frame->time.seconds()) / rate;
    if (lag < std::chrono::duration<double>(kPatience).count()) {
        return;
    }
    const auto frame =
        m_source->near(MediaTime::fromSeconds(std::max(now, 0.0)), std::abs(rate) / 2);
    if (frame && (rate > 0 ? frame->time > m_frame->time : frame->time < m_frame->time)) {
        take(*frame);
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

bool PlayerThread::isAtEnd() {
    if (m_rate.value < 0) {
        return m_position <= 0 && !(m_frame && neighbour(false));
    }
    return m_position + kSameTime >= endSeconds() && !(m_frame && neighbour(true));
}

void PlayerThread::endPlayback() {
    if (m_rate.value > 0) {
        m_time = m_duration && m_duration->seconds() >= endSeconds()
                     ? *m_duration
                     : MediaTime::fromSeconds(endSeconds());
    } else {
        m_time = {};
    }
    const auto serial = m_rate.serial;
    m_rate.value = 0;
    if (m_sound) {
        m_sound->pause();
    }
    report(true);
    m_reports.add([serial](PlayerReport &report) { report.endedRate = serial; });
}

/// The playhead on the 1/600 grid, so that it names the frame that is shown.
MediaTime PlayerThread::timeShown() {
    MediaTime time{qint64(std::floor(m_position * MediaTime::kTimescale + kSameTime)),
                   MediaTime::kTimescale};
    if (!m_frame) {
        return time;
    }
    const auto next = m_rate.value > 0 ? neighbour(true) : std::nullopt;
    const MediaTime end = next ? next->time : m_frame->end;
    if ((next || m_rate.value < 0) && end.seconds() <= time.seconds() + kHalfTick) {
        --time.value;
    }
    return time.seconds() + kHalfTick < m_frame->time.seconds() ? m_frame->time : time;
}

PlayerThread::Duration PlayerThread::nextDue(Duration now) {
    const bool isForward = m_rate.value > 0;
    double next = isForward ? endSeconds() : 0;
    if (m_frame) {
        const auto frame = neighbour(isForward);
        if (isForward && frame) {
            next = frame->time.seconds();
        } else if (!isForward && frame) {
            next = m_frame->time.seconds() - 2 * kSameTime;
        }
    }
    auto due = m_motion.due(next);
    for (const auto &boundary : m_observers.boundaries) {
        const auto met = m_motion.due(boundary.time.seconds());
        due = met > now ? std::min(due, met) : due;
    }
    return m_observers.period ? std::min(due, m_nextReport) : due;
}

} // namespace corvane::media

#pragma once

// Internal to src/media.

#include "media/MonotonicClock.h"

namespace corvane::media {

/// The playhead's position as a linear function of the clock, with small corrections.
class PlayheadMotion {
  public:
    using Duration = MonotonicClock::Duration;

    /// Passes `seconds` at `now`, moving at `rate`, which isn't 0.
    PlayheadMotion(double seconds, double rate, Duration now)
        : m_seconds(seconds), m_rate(rate), m_now(now) {}

    void shift(double seconds) { m_seconds += seconds; }

    double position(Duration now) const {
        return m_seconds + std::chrono::duration<double>(now - m_now).count() * m_rate;
    }
    /// When the playhead reaches `seconds`.
    Duration timeOf(double seconds) const {
        const std::chrono::duration<double> left((seconds - m_seconds) / m_rate);
        return m_now + std::chrono::ceil<Duration>(left);
    }

  private:
    double m_seconds;
    double m_rate;
    Duration m_now;
};

} // namespace corvane::media

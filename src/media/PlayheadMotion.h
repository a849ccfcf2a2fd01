#pragma once

// For the source files of this floor only.

#include "media/MonotonicClock.h"

namespace corvane::media {

/// Where the playhead of a running playback is at which time: it moves evenly from where it was
/// started, with small corrections. A plain value.
class PlayheadMotion {
  public:
    using Duration = MonotonicClock::Duration;

    void start(double seconds, double rate, Duration now) {
        m_seconds = seconds;
        m_rate = rate;
        m_now = now;
    }
    void shift(double seconds) { m_seconds += seconds; }

    double position(Duration now) const {
        return m_seconds + std::chrono::duration<double>(now - m_now).count() * m_rate;
    }
    /// When the playhead comes to `seconds`.
    Duration due(double seconds) const {
        const std::chrono::duration<double> left((seconds - m_seconds) / m_rate);
        return m_now + std::chrono::ceil<Duration>(left);
    }

  private:
    double m_seconds = 0;
    double m_rate = 1;
    Duration m_now{0};
};

} // namespace corvane::media

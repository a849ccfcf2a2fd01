#pragma once

#include "platform/Clock.h"

namespace corvane {

/// Calls something again and again, at once and then after each interval, as long as it lives. It
/// is how progress that another thread counts reaches the main thread at a bearable rate. Main
/// thread.
class ProgressPoll {
  public:
    ProgressPoll(Clock &clock, std::chrono::milliseconds interval, std::function<void()> look);
    Q_DISABLE_COPY_MOVE(ProgressPoll)

  private:
    void lookAndWait();

    Clock &m_clock;
    std::chrono::milliseconds m_interval;
    std::function<void()> m_look;
    std::unique_ptr<Clock::Timer> m_next;
};

} // namespace corvane

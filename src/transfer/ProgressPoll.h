#pragma once

#include "platform/Clock.h"

namespace corvane {

/// Calls `report` at once and then at each interval until destroyed, to poll progress that another
/// thread counts. Main thread.
class ProgressPoll {
  public:
    ProgressPoll(Clock &clock, std::chrono::milliseconds interval, std::function<void()> report);
    Q_DISABLE_COPY_MOVE(ProgressPoll)

  private:
    void reportAndWait();

    Clock &m_clock;
    std::chrono::milliseconds m_interval;
    std::function<void()> m_report;
    std::unique_ptr<Clock::Timer> m_next;
};

} // namespace corvane

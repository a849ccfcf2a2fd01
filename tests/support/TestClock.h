#pragma once

#include "platform/Clock.h"

#include <QList>

namespace corvane::test {

/// A clock that only advances on request. Starts at 2026-03-01T09:30:12.345Z.
class TestClock : public Clock {
  public:
    QDateTime now() const override;
    std::chrono::milliseconds monotonic() const override { return m_elapsed; }
    std::unique_ptr<Timer> after(std::chrono::milliseconds delay,
                                 std::function<void()> action) override;

    /// Advances the clock and runs the timers that become due, in order and each at its due time.
    void advance(std::chrono::milliseconds step);
    qsizetype pendingTimers() const { return m_timers.size(); }
    /// The time until the next timer is due. There must be one.
    std::chrono::milliseconds nextDelay() const;

  private:
    class TestTimer;

    std::chrono::milliseconds m_elapsed{0};
    QList<TestTimer *> m_timers;
};

} // namespace corvane::test

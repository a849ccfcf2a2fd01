#pragma once

#include "platform/Clock.h"

#include <QList>

namespace corvane::test {

/// A clock that stands until it is told to go on.
class TestClock : public Clock {
  public:
    QDateTime now() const override;
    std::chrono::milliseconds monotonic() const override { return m_elapsed; }
    std::unique_ptr<Timer> after(std::chrono::milliseconds delay,
                                 std::function<void()> action) override;

    /// Goes on by so much; timers that fall due run in order of their time, each at its time.
    void advance(std::chrono::milliseconds step);
    qsizetype pendingTimers() const { return m_timers.size(); }
    /// When the next timer falls due, counted from now.
    std::chrono::milliseconds nextDelay() const;

  private:
    class TestTimer;

    std::chrono::milliseconds m_elapsed{0};
    QList<TestTimer *> m_timers;
};

} // namespace corvane::test

#include "support/TestClock.h"

#include <algorithm>

namespace corvane::test {

class TestClock::TestTimer : public Clock::Timer {
  public:
    TestTimer(TestClock &clock, std::chrono::milliseconds due, std::function<void()> action)
        : due(due), action(std::move(action)), m_clock(clock) {
        m_clock.m_timers.append(this);
    }
    ~TestTimer() override { m_clock.m_timers.removeOne(this); }
    Q_DISABLE_COPY_MOVE(TestTimer)

    std::chrono::milliseconds due;
    std::function<void()> action;

  private:
    TestClock &m_clock;
};

QDateTime TestClock::now() const {
    constexpr qint64 kStart = 1772357412345; // 2026-03-01T09:30:12.345Z
    return QDateTime::fromMSecsSinceEpoch(kStart + m_elapsed.count(), Qt::UTC);
}

std::unique_ptr<Clock::Timer> TestClock::after(std::chrono::milliseconds delay,
                                               std::function<void()> action) {
    return std::make_unique<TestTimer>(*this, m_elapsed + delay, std::move(action));
}

void TestClock::advance(std::chrono::milliseconds step) {
    const auto end = m_elapsed + step;
    for (;;) {
        const auto next = std::ranges::min_element(m_timers, {}, &TestTimer::due);
        if (next == m_timers.end() || (*next)->due > end) {
            break;
        }
        m_elapsed = std::max(m_elapsed, (*next)->due);
        const auto action = std::move((*next)->action);
        m_timers.erase(next); // before the action, which may destroy the timer
        action();
    }
    m_elapsed = end;
}

std::chrono::milliseconds TestClock::nextDelay() const {
    return (*std::ranges::min_element(m_timers, {}, &TestTimer::due))->due - m_elapsed;
}

} // namespace corvane::test

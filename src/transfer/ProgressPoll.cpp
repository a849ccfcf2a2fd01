#include "transfer/ProgressPoll.h"

namespace corvane {

ProgressPoll::ProgressPoll(Clock &clock, std::chrono::milliseconds interval,
                           std::function<void()> report)
    : m_clock(clock), m_interval(interval), m_report(std::move(report)) {
    reportAndWait();
}

void ProgressPoll::reportAndWait() {
    m_report();
    m_next = m_clock.after(m_interval, [this] { reportAndWait(); });
}

} // namespace corvane

#include "transfer/ProgressPoll.h"

namespace corvane {

ProgressPoll::ProgressPoll(Clock &clock, std::chrono::milliseconds interval,
                           std::function<void()> look)
    : m_clock(clock), m_interval(interval), m_look(std::move(look)) {
    lookAndWait();
}

void ProgressPoll::lookAndWait() {
    m_look();
    m_next = m_clock.after(m_interval, [this] { lookAndWait(); });
}

} // namespace corvane

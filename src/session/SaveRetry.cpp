#include "session/SaveRetry.h"

#include <algorithm>

namespace corvane {

SaveRetry::SaveRetry(std::function<void()> action, Clock &clock)
    : m_action(std::move(action)), m_clock(clock) {}

void SaveRetry::schedule() {
    if (m_pending) {
        return;
    }
    m_pending = m_clock.after(m_wait, [this] {
        m_pending.reset();
        m_action();
    });
    m_wait = std::min<std::chrono::milliseconds>(2 * m_wait, kLongestWait);
}

void SaveRetry::reset() {
    m_pending.reset();
    m_wait = kFirstWait;
}

} // namespace corvane

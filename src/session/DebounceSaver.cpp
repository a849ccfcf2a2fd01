#include "session/DebounceSaver.h"

#include "platform/Tasks.h"

#include <algorithm>

namespace corvane {

DebounceSaver::DebounceSaver(Action action, Clock &clock)
    : m_action(std::move(action)), m_clock(clock) {}

void DebounceSaver::schedule() {
    const auto now = m_clock.monotonic();
    if (!m_firstPendingTime) {
        m_firstPendingTime = now;
    }
    const auto remaining = kMaxWait - (now - *m_firstPendingTime);
    const auto wait = std::clamp(remaining, std::chrono::milliseconds(0), kQuietWait);
    m_pending = m_clock.after(wait, [this] {
        m_firstPendingTime.reset();
        m_pending.reset();
        detach(m_action());
    });
}

QCoro::Task<> DebounceSaver::flush() {
    m_pending.reset();
    if (!m_firstPendingTime) {
        co_return;
    }
    m_firstPendingTime.reset();
    co_await m_action();
}

} // namespace corvane

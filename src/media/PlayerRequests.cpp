#include "media/PlayerRequests.h"

#include "platform/Failure.h"

#include <utility>

namespace corvane::media {

bool PlayerRequest::isEmpty() const {
    return !isQuit && !observers && !range && !rate && !item && !seek && steps.isEmpty() &&
           !isRedraw;
}

void PlayerRequests::add(const std::function<void(PlayerRequest &)> &change) {
    {
        const std::scoped_lock lock(m_mutex);
        change(m_pending);
        if (stops(m_pending, m_task)) {
            m_stop.request_stop();
        }
    }
    m_changed.notify_all();
}

void PlayerRequests::wake() {
    {
        const std::scoped_lock lock(m_mutex);
        m_isWoken = true;
    }
    m_changed.notify_all();
}

PlayerRequest PlayerRequests::take(std::optional<MonotonicClock::Duration> due) {
    std::unique_lock lock(m_mutex);
    while (m_pending.isEmpty() && !m_isWoken && !(due && m_clock.now() >= *due)) {
        m_clock.wait(lock, m_changed, due);
    }
    m_isWoken = false;
    const PlayerRequest next{.serial = m_pending.serial, .move = m_pending.move};
    return std::exchange(m_pending, next);
}

std::stop_token PlayerRequests::start(Task task) {
    const std::scoped_lock lock(m_mutex);
    if (stops(m_pending, task)) {
        throw Cancelled();
    }
    m_task = task;
    m_stop = std::stop_source();
    return m_stop.get_token();
}

bool PlayerRequests::stops(const PlayerRequest &request, Task task) {
    if (request.isQuit || request.item) {
        return true;
    }
    switch (task) {
    case Task::open:
    case Task::seekToShow:
        return false;
    case Task::seek:
    case Task::step:
        return request.seek.has_value();
    case Task::play:
    case Task::readAhead:
        break;
    }
    return !request.isEmpty();
}

} // namespace corvane::media

#include "media/PlayerRequests.h"

#include "platform/Failure.h"

#include <utility>

namespace corvane::media {

bool PlayerRequest::isEmpty() const {
    return !quit && !observers && !goOn && !rate && !item && !seek && steps.isEmpty() && !redraw;
}

void PlayerRequests::add(const std::function<void(PlayerRequest &)> &change) {
    {
        const std::scoped_lock lock(m_mutex);
        change(m_waiting);
        if (ends(m_waiting, m_work)) {
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
    while (m_waiting.isEmpty() && !m_isWoken && !(due && m_clock.now() >= *due)) {
        m_clock.wait(lock, m_changed, due);
    }
    m_isWoken = false;
    const auto serial = m_waiting.serial;
    return std::exchange(m_waiting, {.serial = serial});
}

std::stop_token PlayerRequests::begin(Work work) {
    const std::scoped_lock lock(m_mutex);
    if (ends(m_waiting, work)) {
        throw Cancelled();
    }
    m_work = work;
    m_stop = std::stop_source();
    return m_stop.get_token();
}

bool PlayerRequests::ends(const PlayerRequest &request, Work work) {
    if (request.quit || request.item) {
        return true;
    }
    switch (work) {
    case Work::open:
    case Work::seekToShow:
        return false;
    case Work::seek:
    case Work::step:
        return request.seek.has_value();
    case Work::play:
    case Work::fill:
        break;
    }
    return !request.isEmpty();
}

} // namespace corvane::media

#pragma once

// Internal to src/media.

#include "media/MediaPlayer.h"

#include <utility>

namespace corvane::media {

/// The player thread's pending reports to the main thread, merged.
struct PlayerReport {
    struct Time {
        MediaTime time;
        quint64 serial = 0; ///< of the latest request carried out before
        bool isJump = false;
    };

    std::optional<Time> time;
    std::optional<quint64> endedRate; ///< serial of the rate reset to 0 at an end
    std::optional<quint64> move;      ///< see `PlayerRequest::move`; carried out
};

/// Passes reports to the main thread; however many are pending, it is notified once. Any thread.
class PlayerReports {
  public:
    /// `notify` is called on the reporting thread and makes the main thread call `take`.
    explicit PlayerReports(std::function<void()> notify) : m_notify(std::move(notify)) {}

    template <typename Change> void add(Change change) {
        {
            const std::scoped_lock lock(m_mutex);
            change(m_pending);
            if (std::exchange(m_isNotified, true)) {
                return;
            }
        }
        m_notify();
    }

    PlayerReport take() {
        const std::scoped_lock lock(m_mutex);
        m_isNotified = false;
        return std::exchange(m_pending, {});
    }

  private:
    std::function<void()> m_notify;
    std::mutex m_mutex;
    PlayerReport m_pending;
    bool m_isNotified = false;
};

} // namespace corvane::media

#pragma once

// For the source files of this floor only.

#include "media/MediaPlayer.h"

#include <utility>

namespace corvane::media {

/// What has happened on the player's thread since the main thread last looked.
struct PlayerReport {
    struct Time {
        MediaTime time;
        quint64 serial = 0; ///< of the latest request that had been carried out
        bool isJump = false;
    };

    std::optional<Time> time;
    QList<MediaPlayer::Token> boundaries; ///< that playback has come to and waits at
    std::optional<quint64> endedRate;     ///< the serial of the rate that an end of the item ended
};

/// Carries reports to the main thread, however many, with one hop at a time. Any thread.
class PlayerReports {
  public:
    /// `announce` is called on the reporting thread; the main thread is to `take` soon after.
    explicit PlayerReports(std::function<void()> announce) : m_announce(std::move(announce)) {}

    template <typename Change> void add(Change change) {
        {
            const std::scoped_lock lock(m_mutex);
            change(m_waiting);
            if (std::exchange(m_isAnnounced, true)) {
                return;
            }
        }
        m_announce();
    }

    PlayerReport take() {
        const std::scoped_lock lock(m_mutex);
        m_isAnnounced = false;
        return std::exchange(m_waiting, {});
    }

  private:
    std::function<void()> m_announce;
    std::mutex m_mutex;
    PlayerReport m_waiting;
    bool m_isAnnounced = false;
};

} // namespace corvane::media

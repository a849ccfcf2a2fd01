#pragma once

// For the source files of this floor only.

#include "media/MediaPlayer.h"

#include <stop_token>

namespace corvane::media {

/// What the main thread has asked for since the player's thread last looked. What a newer request
/// makes pointless isn't in it any more. The parts are carried out in this order.
struct PlayerRequest {
    struct Item {
        quint64 number = 0;
        QString path;
    };
    struct Step {
        int frames = 0;
        std::optional<MediaTimeRange> range;
    };
    struct Rate {
        float value = 0;
        quint64 serial = 0;
    };
    struct Boundary {
        MediaPlayer::Token token = 0;
        MediaTime time;
    };
    struct Observers {
        QList<Boundary> boundaries;
        std::optional<MonotonicClock::Duration> period; ///< nothing while nobody observes
    };

    bool quit = false;
    std::optional<Observers> observers;
    bool goOn = false; ///< the calls at a boundary have been made
    std::optional<Rate> rate;
    std::optional<Item> item;
    std::optional<MediaTime> seek;
    QList<Step> steps;
    bool redraw = false;
    quint64 serial = 0; ///< of the latest request that moves the playhead, done or not

    bool isEmpty() const;
};

/// Carries requests to the player's thread, and stops what it is doing when a request makes that
/// pointless. Any thread.
class PlayerRequests {
  public:
    /// What the player's thread is at, as far as it matters to whether a request ends it.
    enum class Work {
        open,
        seek,
        seekToShow, ///< a seek that newer ones let come through, so that a drag shows something
        step,
        play,
        fill,
    };

    explicit PlayerRequests(MonotonicClock &clock) : m_clock(clock) {}

    /// Adds to the request that waits to be taken.
    void add(const std::function<void(PlayerRequest &)> &change);
    /// Makes `take` return without a request.
    void wake();

    /// Waits until there is a request, it is woken or the time is due; then takes what there is.
    PlayerRequest take(std::optional<MonotonicClock::Duration> due);
    /// The token that ends the work which begins now. Throws `Cancelled` where a request that
    /// waits already would end it.
    std::stop_token begin(Work work);

  private:
    static bool ends(const PlayerRequest &request, Work work);

    MonotonicClock &m_clock;
    std::mutex m_mutex;
    std::condition_variable m_changed;
    PlayerRequest m_waiting;
    bool m_isWoken = false;
    Work m_work = Work::fill;
    std::stop_source m_stop;
};

} // namespace corvane::media

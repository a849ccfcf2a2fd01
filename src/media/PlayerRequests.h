#pragma once

// Internal to src/media.

#include "media/MediaPlayer.h"

#include <stop_token>

namespace corvane::media {

/// The pending requests of the main thread, merged: a newer request drops those that it makes
/// obsolete. The members are carried out in the order of their declaration.
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
    struct Range {
        std::optional<MediaTimeRange> value; ///< nullopt removes the range
    };
    struct Observers {
        std::optional<MonotonicClock::Duration> period; ///< nullopt without periodic observers
    };

    bool isQuit = false;
    std::optional<Observers> observers;
    std::optional<Range> range;
    std::optional<Rate> rate;
    std::optional<Item> item;
    std::optional<MediaTime> seek;
    QList<Step> steps;
    bool isRedraw = false;
    quint64 serial = 0; ///< of the latest request that moves the playhead, pending or not
    /// Number of the latest request whose effect on the time only the player's thread knows,
    /// pending or not.
    quint64 move = 0;

    bool isEmpty() const;
};

/// Passes requests to the player's thread and stops its current task if a request makes that
/// obsolete. Any thread.
class PlayerRequests {
  public:
    /// Tasks of the player's thread; they differ in the requests that stop them.
    enum class Task {
        open,
        seek,
        seekToShow, ///< not stopped by newer seeks, so that a drag shows a frame now and then
        step,
        play,
        readAhead,
    };

    explicit PlayerRequests(MonotonicClock &clock) : m_clock(clock) {}

    /// Calls `change` on the pending request, under the lock.
    void add(const std::function<void(PlayerRequest &)> &change);
    /// Makes `take` return even if no request is pending.
    void wake();

    /// Blocks until a request is pending, `wake` is called or the clock reaches `due`. Returns the
    /// pending request, which may be empty.
    PlayerRequest take(std::optional<MonotonicClock::Duration> due);
    /// Returns the stop token of a task that starts now. Throws `Cancelled` if a pending request
    /// makes it obsolete.
    std::stop_token start(Task task);

  private:
    static bool stops(const PlayerRequest &request, Task task);

    MonotonicClock &m_clock;
    std::mutex m_mutex;
    std::condition_variable m_changed;
    PlayerRequest m_pending;
    bool m_isWoken = false;
    Task m_task = Task::readAhead;
    std::stop_source m_stop;
};

} // namespace corvane::media

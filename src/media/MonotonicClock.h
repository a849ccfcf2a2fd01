#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <optional>

namespace corvane::media {

/// The time that playback runs by, so that a test can set it. It goes only forward, evenly, from an
/// origin of its own. Any thread.
class MonotonicClock {
  public:
    using Duration = std::chrono::nanoseconds;

    virtual ~MonotonicClock();

    virtual Duration now() const = 0;
    /// Waits on `wake` until it is notified or `now` has come to `due`; it may return earlier.
    virtual void wait(std::unique_lock<std::mutex> &lock, std::condition_variable &wake,
                      std::optional<Duration> due) = 0;

    /// The real time.
    static MonotonicClock &system();
};

} // namespace corvane::media

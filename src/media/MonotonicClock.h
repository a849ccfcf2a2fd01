#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <optional>

namespace corvane::media {

/// A monotonic clock that a thread can wait on, from an unspecified origin. Playback runs by it, so
/// tests replace it. Unlike `Clock` it may be used on any thread and has no dates or timers.
class MonotonicClock {
  public:
    using Duration = std::chrono::nanoseconds;

    virtual ~MonotonicClock();

    virtual Duration now() const = 0;
    /// Waits on `wake` until it is notified or `now()` reaches `due`. May return earlier.
    virtual void wait(std::unique_lock<std::mutex> &lock, std::condition_variable &wake,
                      std::optional<Duration> due) = 0;

    static MonotonicClock &system();
};

} // namespace corvane::media

#pragma once

#include <QDateTime>

#include <chrono>
#include <functional>
#include <memory>

namespace corvane {

/// Where the program's time comes from, so that a test can set it. Main thread.
class Clock {
  public:
    /// A pending call; dropping it takes the call back.
    class Timer {
      public:
        virtual ~Timer();
    };

    virtual ~Clock();

    /// The date in UTC, to the millisecond, as the documents keep it.
    virtual QDateTime now() const = 0;
    /// A time that only goes forward, from an origin of its own.
    virtual std::chrono::milliseconds monotonic() const = 0;
    /// Calls `action` once from the event loop, after the delay, unless the timer is dropped first.
    virtual std::unique_ptr<Timer> after(std::chrono::milliseconds delay,
                                         std::function<void()> action) = 0;

    /// The real time.
    static Clock &system();
};

} // namespace corvane

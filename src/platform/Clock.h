#pragma once

#include <QDateTime>

#include <chrono>
#include <functional>
#include <memory>

namespace corvane {

/// The date, a monotonic time and timers. An interface, so that a test can set the time. Main
/// thread only.
class Clock {
  public:
    /// A pending call. Destroying it cancels the call.
    class Timer {
      public:
        virtual ~Timer();
    };

    virtual ~Clock();

    /// The current date in UTC, with milliseconds.
    virtual QDateTime now() const = 0;
    /// A time that never goes back. Its origin is unspecified.
    virtual std::chrono::milliseconds monotonic() const = 0;
    /// Calls `action` once from the event loop after the delay, unless the timer is destroyed
    /// first.
    virtual std::unique_ptr<Timer> after(std::chrono::milliseconds delay,
                                         std::function<void()> action) = 0;

    static Clock &system();
};

} // namespace corvane

#pragma once

#include "platform/Clock.h"

namespace corvane {

/// Retries a failed save after `kFirstWait`, and then after twice the previous wait, up to
/// `kLongestWait`. Main thread only.
class SaveRetry {
  public:
    static constexpr std::chrono::seconds kFirstWait{5};
    static constexpr std::chrono::minutes kLongestWait{5};

    /// `action` starts a save. Isn't called after this object's destruction.
    SaveRetry(std::function<void()> action, Clock &clock);

    /// Call after each failed save. No-op while a retry is pending.
    void schedule();
    /// Call after a successful save, or if there is nothing left to save.
    void reset();

  private:
    std::function<void()> m_action;
    Clock &m_clock;
    std::chrono::milliseconds m_wait = kFirstWait;
    std::unique_ptr<Clock::Timer> m_pending;
};

} // namespace corvane

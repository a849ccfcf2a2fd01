#pragma once

#include "platform/Clock.h"

#include <QCoroTask>

#include <functional>
#include <optional>

namespace corvane {

/// Decides when edits reach the disk: a quarter second after the last one, two seconds after the
/// first one at the latest. Main thread.
class DebounceSaver {
  public:
    using Action = std::function<QCoro::Task<>()>;

    static constexpr std::chrono::milliseconds kQuietWait{250};
    static constexpr std::chrono::milliseconds kMaxWait{2000};

    /// `action` is what saving means; it must not throw and must do nothing once its owner is gone.
    explicit DebounceSaver(Action action, Clock &clock = Clock::system());

    /// Called after each edit.
    void schedule();
    /// Runs the save now if anything is pending, and returns when it is done.
    QCoro::Task<> flush();
    bool hasPending() const { return m_firstPendingTime.has_value(); }

  private:
    Action m_action;
    Clock &m_clock;
    std::optional<std::chrono::milliseconds>
        m_firstPendingTime; ///< when the oldest unsaved edit was
    std::unique_ptr<Clock::Timer> m_pending;
};

} // namespace corvane

#pragma once

#include "platform/Clock.h"

#include <QCoroTask>

#include <functional>
#include <optional>

namespace corvane {

/// Schedules the save of edits: `kQuietWait` after the last edit, but at most `kMaxWait` after the
/// first. Main thread only.
class DebounceSaver {
  public:
    using Action = std::function<QCoro::Task<>()>;

    static constexpr std::chrono::milliseconds kQuietWait{250};
    static constexpr std::chrono::milliseconds kMaxWait{2000};

    /// `action` saves. It must not throw, and must be a no-op after its owner is destroyed.
    explicit DebounceSaver(Action action, Clock &clock = Clock::system());

    /// Call after each edit.
    void schedule();
    /// Saves now if an edit is pending, and completes when the save is done.
    QCoro::Task<> flush();
    bool hasPending() const { return m_firstPendingTime.has_value(); }

  private:
    Action m_action;
    Clock &m_clock;
    std::optional<std::chrono::milliseconds>
        m_firstPendingTime; ///< time of the oldest unsaved edit
    std::unique_ptr<Clock::Timer> m_pending;
};

} // namespace corvane

#pragma once

#include <QString>

#include <chrono>
#include <optional>

namespace corvane {

/// How long a run still takes, from how fast it went until now. It tells nothing before it can: in
/// the first seconds, and until a hundredth is done. Times come from `Clock::monotonic()`. Main
/// thread.
class RemainingTime {
  public:
    explicit RemainingTime(std::chrono::milliseconds start) : m_start(start) {}

    /// `fraction` is how much is done, from 0 to 1.
    std::optional<std::chrono::seconds> estimate(double fraction,
                                                 std::chrono::milliseconds now) const;
    /// "About 3 min left"; empty while it can't be told.
    QString text(double fraction, std::chrono::milliseconds now) const;

  private:
    std::chrono::milliseconds m_start;
};

} // namespace corvane

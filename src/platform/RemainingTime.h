#pragma once

#include <QString>

#include <chrono>
#include <optional>

namespace corvane {

/// Estimates the remaining time of a run from its average speed. There is no estimate in the first
/// 3 seconds and below 1 %. Times are those of `Clock::monotonic()`.
class RemainingTime {
  public:
    explicit RemainingTime(std::chrono::milliseconds start) : m_start(start) {}

    /// "About 3 min left"; empty if there is no estimate. `fraction` is the progress from 0 to 1.
    QString text(double fraction, std::chrono::milliseconds now) const;

  private:
    std::optional<std::chrono::seconds> estimate(double fraction,
                                                 std::chrono::milliseconds now) const;

    std::chrono::milliseconds m_start;
};

} // namespace corvane

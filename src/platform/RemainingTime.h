#pragma once

#include <QString>

#include <chrono>

namespace corvane {

/// Estimates the remaining time of a run from its average speed. There is no estimate in the first
/// 3 seconds, below 1 % and at 100 %. Times are those of `Clock::monotonic()`.
class RemainingTime {
  public:
    explicit RemainingTime(std::chrono::milliseconds start) : m_start(start) {}

    /// "About 3 min left"; empty if there is no estimate. `fraction` is the progress from 0 to 1.
    QString text(double fraction, std::chrono::milliseconds now) const;

  private:
    std::chrono::milliseconds m_start;
};

} // namespace corvane

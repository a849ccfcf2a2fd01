#include "platform/RemainingTime.h"

#include <cmath>

namespace corvane {

namespace {

constexpr std::chrono::seconds kEarliestEstimate{3};
constexpr double kMinFraction = 0.01;
constexpr qint64 kMinute = 60;
constexpr qint64 kHour = 60 * kMinute;

qint64 roundedUp(qint64 value, qint64 step) {
    return (value + step - 1) / step * step;
}

} // namespace

QString RemainingTime::text(double fraction, std::chrono::milliseconds now) const {
    const std::chrono::milliseconds elapsed = now - m_start;
    if (elapsed < kEarliestEstimate || !(fraction >= kMinFraction) || fraction >= 1) {
        return {};
    }
    const double left = static_cast<double>(elapsed.count()) / 1000 * (1 - fraction) / fraction;
    const qint64 seconds = std::llround(std::ceil(left));
    if (seconds < kMinute) { // in steps of 5 s, so that the text doesn't change every second
        return QStringLiteral("About %1 s left").arg(roundedUp(seconds, 5));
    }
    const qint64 minutes = roundedUp(seconds, kMinute) / kMinute;
    if (seconds < kHour) {
        return QStringLiteral("About %1 min left").arg(minutes);
    }
    return QStringLiteral("About %1 h %2 min left").arg(minutes / 60).arg(minutes % 60);
}

} // namespace corvane

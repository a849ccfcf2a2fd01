#include "review/ScrubberGeometry.h"

#include <algorithm>
#include <cmath>

namespace corvane::ScrubberGeometry {

double fraction(double x, double width) {
    const double part = width > 1 ? x / width : x;
    return std::isfinite(part) ? std::clamp(part, 0.0, 1.0) : 0.0;
}

double position(double seconds, double duration) {
    return duration > 0 ? fraction(seconds / duration, 1) : 0.0;
}

std::optional<QRectF> bar(double inSeconds, double outSeconds, double duration, double width) {
    if (!(duration > 0)) {
        return std::nullopt;
    }
    constexpr double kMinWidth = 2;
    return QRectF(inSeconds / duration * width, (kBarRowHeight - kBarHeight) / 2,
                  std::max((outSeconds - inSeconds) / duration * width, kMinWidth), kBarHeight);
}

std::optional<double> shownDraft(std::optional<double> draft,
                                 const std::optional<ClipRange> &range) {
    if (!draft || !range) {
        return draft;
    }
    if (*draft < range->inSeconds || *draft > range->outSeconds) {
        return std::nullopt;
    }
    return *draft - range->inSeconds;
}

} // namespace corvane::ScrubberGeometry

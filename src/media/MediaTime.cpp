#include "media/MediaTime.h"

#include <algorithm>
#include <cmath>

namespace corvane::media {

namespace {

/// Keeps the rounded value within 64 bits.
constexpr double kMaxValue = 9e18;

} // namespace

MediaTime MediaTime::fromSeconds(double seconds) {
    if (!std::isfinite(seconds)) {
        return {};
    }
    return {std::llround(std::clamp(seconds * kTimescale, -kMaxValue, kMaxValue)), kTimescale};
}

std::strong_ordering MediaTime::operator<=>(const MediaTime &other) const {
    using Wide = __int128;
    return Wide(value) * other.timescale <=> Wide(other.value) * timescale;
}

} // namespace corvane::media

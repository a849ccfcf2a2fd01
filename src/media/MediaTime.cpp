#include "media/MediaTime.h"

#include <algorithm>
#include <cmath>

namespace corvane::media {

namespace {

/// Times beyond this are no times of a file; the bound keeps the rounding within 64 bits.
constexpr double kLargestValue = 9e18;

} // namespace

MediaTime MediaTime::fromSeconds(double seconds) {
    if (!std::isfinite(seconds)) {
        return {};
    }
    return {std::llround(std::clamp(seconds * kTimescale, -kLargestValue, kLargestValue)),
            kTimescale};
}

std::strong_ordering MediaTime::operator<=>(const MediaTime &other) const {
    using Wide = __int128;
    return Wide(value) * other.timescale <=> Wide(other.value) * timescale;
}

} // namespace corvane::media

#pragma once

#include <QtGlobal>

#include <compare>

namespace corvane::media {

/// An exact time on an asset's timeline, in units of 1/timescale seconds. 0 is the asset's start.
struct MediaTime {
    /// Timescale of times converted from seconds.
    static constexpr qint32 kTimescale = 600;

    qint64 value = 0;
    qint32 timescale = kTimescale; ///< above 0

    /// Rounds to the nearest 1/600 s. Infinity and NaN become 0.
    static MediaTime fromSeconds(double seconds);

    double seconds() const { return double(value) / timescale; }

    /// Compares the value in seconds: 1/2 and 300/600 are equal.
    std::strong_ordering operator<=>(const MediaTime &other) const;
    bool operator==(const MediaTime &other) const { return (*this <=> other) == 0; }
};

/// An in point and an out point. Whether the frame at the out point is included depends on the
/// function that takes the range.
struct MediaTimeRange {
    MediaTime in;
    MediaTime out;

    /// Rounds each time like `MediaTime::fromSeconds`.
    static MediaTimeRange fromSeconds(double in, double out) {
        return {MediaTime::fromSeconds(in), MediaTime::fromSeconds(out)};
    }

    bool operator==(const MediaTimeRange &) const = default;
};

/// Largest rounding error of `MediaTime::fromSeconds`, in seconds. A lookup by time finds the last
/// frame that starts at most this much later, so a frame is found by its own rounded start time.
constexpr double kHalfTick = 0.5 / MediaTime::kTimescale;

} // namespace corvane::media

#pragma once

#include <QtGlobal>

#include <compare>

namespace corvane::media {

/// A time on a media file's own axis, whose 0 is the start of its presentation. It is a whole
/// number of 1/timescale seconds, so that a frame's time is kept exactly.
struct MediaTime {
    /// Of every time that is made from seconds.
    static constexpr qint32 kTimescale = 600;

    qint64 value = 0;
    qint32 timescale = kTimescale; ///< above 0

    /// Rounded to the nearest 1/600 second; what isn't finite counts as 0.
    static MediaTime fromSeconds(double seconds);

    double seconds() const { return double(value) / timescale; }

    /// By the instant: 1/2 and 300/600 are equal.
    std::strong_ordering operator<=>(const MediaTime &other) const;
    bool operator==(const MediaTime &other) const { return (*this <=> other) == 0; }
};

/// The in point and the out point of a part of a media file. Whether the frame at the out point
/// belongs to it is up to the function that takes the range.
struct MediaTimeRange {
    MediaTime in;
    MediaTime out;

    /// Each time as `MediaTime::fromSeconds` rounds it.
    static MediaTimeRange fromSeconds(double in, double out) {
        return {MediaTime::fromSeconds(in), MediaTime::fromSeconds(out)};
    }

    bool operator==(const MediaTimeRange &) const = default;
};

/// A time made from seconds is off by up to half of 1/600 second. It names the last frame that
/// begins no later than this much after it, so that a frame's own time, rounded, still names it.
constexpr double kHalfTick = 0.5 / MediaTime::kTimescale;

} // namespace corvane::media

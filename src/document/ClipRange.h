#pragma once

#include <algorithm>

namespace corvane {

/// A range of a clip, in seconds from the clip's start. The out point itself isn't part of it.
///
/// A plain value without an invariant: a document may hold an out point before the in point.
struct ClipRange {
    double inSeconds = 0;
    double outSeconds = 0;

    /// Seconds from the in point to the out point; 0 if the out point comes first.
    double durationSeconds() const { return std::max(outSeconds - inSeconds, 0.0); }

    bool operator==(const ClipRange &) const = default;
};

} // namespace corvane

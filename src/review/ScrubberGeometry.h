#pragma once

#include "document/ClipRange.h"

#include <QRectF>

#include <optional>

/// Positions of times on the scrubber and the subclip bars. Widths are in points, times in seconds.
namespace corvane::ScrubberGeometry {

constexpr double kBarHeight = 6;
constexpr double kBarRowHeight = 12;

/// The fraction of the track, 0 to 1, at `x`. On a track of at most one point `x` is the fraction.
double fraction(double x, double width);
/// The fraction of the track, 0 to 1, at a time; 0 if the duration is not positive.
double position(double seconds, double duration);
/// The bar of a range in its row, at least 2 points wide; nullopt if the duration is not positive.
std::optional<QRectF> bar(double inSeconds, double outSeconds, double duration, double width);

/// The draft mark that the scrubber shows, in seconds on its track. Returns `draft` if no subclip
/// is open (`range` is nullopt); otherwise the time relative to the range's in point, or nullopt
/// for a mark outside the range.
std::optional<double> shownDraft(std::optional<double> draft,
                                 const std::optional<ClipRange> &range);

} // namespace corvane::ScrubberGeometry

#pragma once

#include "document/ClipRange.h"

#include <QRectF>

#include <optional>

/// Where times lie on the tracks under the picture. Widths are in points, times in seconds.
namespace corvane::ScrubberGeometry {

constexpr double kBarHeight = 6;
constexpr double kBarRowHeight = 12;

/// Which part of the track a pointer at `x` means, from 0 to 1. A track of a point or less takes
/// `x` itself.
double fraction(double x, double width);
/// Which part of the track a time stands at, from 0 to 1; 0 where the duration isn't above 0.
double position(double seconds, double duration);
/// The bar of a range in its row, at least 2 points wide; nothing where the duration isn't above 0.
std::optional<QRectF> bar(double inSeconds, double outSeconds, double duration, double width);

/// The draft mark that the scrubber shows, in seconds on its track. Returns `draft` if no subclip
/// is open (`range` is nullopt); otherwise the time relative to the range's in point, or nullopt
/// for a mark outside the range.
std::optional<double> shownDraft(std::optional<double> draft,
                                 const std::optional<ClipRange> &range);

} // namespace corvane::ScrubberGeometry

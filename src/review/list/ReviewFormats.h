#pragma once

#include "document/Project.h"

/// Names, numbers and times as the review shows them. Times are in seconds.
namespace corvane::ReviewFormats {

/// "00:02.10 – 00:09.44".
QString subclipRange(const Subclip &subclip);
QString subclipLength(const Subclip &subclip);

/// The label, or "Subclip 3" from the creation index.
QString displayName(const Subclip &subclip);
/// "4"; empty if unrated.
QString rating(int rating);
/// "2 subclips"; empty for zero.
QString subclipCount(qsizetype count);
/// "1:05 · 2 subclips": the duration, and the number of subclips if there are any.
QString details(const VideoRecord &video);
/// The row in words for a screen reader: "1:05, 2 subclips, 4 stars, favorite, selected for export,
/// reviewed, rejected, HD".
QString description(const VideoRecord &video);
QString description(const Subclip &subclip);

} // namespace corvane::ReviewFormats

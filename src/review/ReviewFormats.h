#pragma once

#include "document/Project.h"

/// Names, numbers and times as the review screen writes them. Times are seconds.
namespace corvane::ReviewFormats {

/// "00:02.10 – 00:09.44".
QString subclipRange(const Subclip &subclip);
QString subclipLength(const Subclip &subclip);

/// The label, or "Subclip 3" by the creation index.
QString displayName(const Subclip &subclip);
/// "4"; empty for what isn't rated.
QString rating(int rating);
/// "2 subclips"; empty for none.
QString subclipCount(qsizetype count);
/// "1:05 · 2 subclips": the duration, and the subclips' count where there are some.
QString details(const VideoRecord &video);
/// What a row shows by its marks, in words, for a reader of the screen: "1:05, 2 subclips, 4 stars,
/// favorite, selected for export, reviewed, rejected, HD".
QString description(const VideoRecord &video);
QString description(const Subclip &subclip);
/// "(2)", after a heading.
QString countInParentheses(qsizetype count);

} // namespace corvane::ReviewFormats

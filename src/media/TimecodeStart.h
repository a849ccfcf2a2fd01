#pragma once

// For the source files of this floor only.

#include "media/ExportSource.h"

#include <QByteArray>

namespace corvane::media {

/// The timecode of the frame that the source shows at `zero`, its start advanced by the frames
/// before it; drop-frame timecodes skip the numbers that theirs skip. Nothing where the source
/// carries no timecode.
std::optional<QByteArray> timecodeAt(const ExportSource &source, MediaTime zero);

} // namespace corvane::media

#pragma once

// For the source files of this floor only.

#include "media/FFmpegHandles.h"

namespace corvane::media {

/// The four characters that name a stream's codec, the first one highest; 0 where it has none. A
/// container with codes of its own is taken at its word; for the others it is the code that the
/// codec has in a QuickTime or MPEG-4 file.
quint32 mediaSubType(const AVFormatContext &container, const AVStream &stream);

} // namespace corvane::media

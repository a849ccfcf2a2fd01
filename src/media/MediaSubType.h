#pragma once

// Internal to src/media.

#include "media/FFmpegHandles.h"

namespace corvane::media {

/// Four-character code of a stream's codec, first character highest; 0 if there is none. Taken from
/// the container if it stores such codes, else the code that QuickTime or MPEG-4 files use.
quint32 mediaSubType(const AVFormatContext &container, const AVStream &stream);

} // namespace corvane::media

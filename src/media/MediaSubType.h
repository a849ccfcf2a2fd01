#pragma once

// Internal to src/media.

#include "media/FFmpegHandles.h"

namespace corvane::media {

/// A four-character code as a number, first character highest.
consteval quint32 fourCC(const char (&code)[5]) {
    return quint32(uchar(code[0])) << 24 | quint32(uchar(code[1])) << 16 |
           quint32(uchar(code[2])) << 8 | uchar(code[3]);
}

/// Four-character code of a stream's codec, first character highest; 0 if there is none. Taken from
/// the container if it stores such codes, else the code that QuickTime or MPEG-4 files use.
quint32 mediaSubType(const AVFormatContext &container, const AVStream &stream);

} // namespace corvane::media

#pragma once

// For the source files of this floor only.

#include "media/FFmpegHandles.h"

namespace corvane::media::sourceMetadata {

/// Gives the output what the source's file says of itself: when, where and with what it was shot
/// above all, under the names that players and editors look for.
void copyFile(const AVFormatContext &source, AVFormatContext &output);

/// Gives an output's stream what the source's says apart from its coding: language, name, creation
/// date, whether it is played by default, and how the picture is turned.
void copyStream(const AVStream &source, AVStream &output);

} // namespace corvane::media::sourceMetadata

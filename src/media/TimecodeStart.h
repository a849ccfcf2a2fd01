#pragma once

// Internal to src/media.

#include "media/ExportSource.h"

#include <QByteArray>

namespace corvane::media {

/// Timecode of the source's frame at `time`, counted from the source's start timecode, with or
/// without dropped frame numbers. Returns nullopt if the source has no timecode.
std::optional<QByteArray> timecodeAt(const ExportSource &source, MediaTime time);

} // namespace corvane::media

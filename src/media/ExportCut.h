#pragma once

// Internal to src/media.

#include "media/ExportSession.h"
#include "media/ExportSource.h"

namespace corvane::media {

/// The part of a source to export. Times are the source's own timestamps.
///
/// Export ranges come in 1/600 s, so a frame's time is off by up to half of that. The frames of a
/// range are those from half a tick before its in point to half a tick before its out point.
struct ExportCut {
    bool isEntireFile = true;
    MediaTime origin;             ///< becomes time 0 of the output: the first frame's exact time
    MediaTime begin;              ///< earliest frame time
    std::optional<MediaTime> end; ///< frames start before this; nullopt exports up to the end
    std::optional<MediaTime> audioEnd; ///< the out point; nullopt exports up to the end
    /// Seek to this time to read everything the cut needs; nullopt reads from the start.
    std::optional<MediaTime> seekTime;
    /// Timestamp of the keyframe from which all frames of the cut can be decoded; nullopt if
    /// unknown.
    std::optional<int64_t> keyframe;
    /// The frame before the in point lasts long after it, so the output begins with that frame.
    bool shouldHoldEarlierFrame = false;

    bool isBeforeBegin(MediaTime time) const { return !isEntireFile && time < begin; }
    bool isPastEnd(MediaTime time) const { return end && time >= *end; }
};

/// Finds the cut of a range, or of the entire file without one, by reading the packets around the
/// in point. Doesn't decode. Leaves the read position unspecified.
ExportCut findCut(ExportSource &source, std::optional<MediaTimeRange> range);

/// Seeks to the first packet that the cut needs.
void seekToCut(ExportSource &source, const ExportCut &cut);

} // namespace corvane::media

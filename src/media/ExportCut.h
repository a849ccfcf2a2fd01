#pragma once

// For the source files of this floor only.

#include "media/ExportSession.h"
#include "media/ExportSource.h"

namespace corvane::media {

/// The part of a source that is exported, in the file's own timestamps.
///
/// Subclip times come in 1/600 s, so a frame's time is off by up to half of that: the frames of a
/// range are those from half a tick before its in point to half a tick before its out point.
struct ExportCut {
    bool isWhole = true;
    MediaTime zero;                ///< what becomes the output's 0: the first frame's exact time
    MediaTime first;               ///< frames from here on
    std::optional<MediaTime> last; ///< frames before this; to the end of the file without it
    std::optional<MediaTime> out;  ///< where the sound ends
    /// Reading from here meets all that the cut needs; without it from the file's beginning.
    std::optional<MediaTime> seek;
    /// A decoder that begins with this packet, by its timestamp, shows every frame of the cut.
    std::optional<int64_t> key;
    /// A frame before the in point stays on the screen for long after it, so it is shown from
    /// there.
    bool showsEarlierFrame = false;

    bool isBeforeFirst(MediaTime time) const { return !isWhole && time < first; }
    bool isPastLast(MediaTime time) const { return last && time >= *last; }
};

/// Finds the cut of a range, or of the whole file without one, by looking through the packets
/// around its in point; nothing is decoded. The source stands anywhere afterwards.
ExportCut locateCut(ExportSource &source, std::optional<MediaTimeRange> range);

/// Has the source give the cut's packets next.
void goToCut(ExportSource &source, const ExportCut &cut);

} // namespace corvane::media

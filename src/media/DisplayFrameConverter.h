#pragma once

// Internal to src/media.

#include "media/DisplayFrame.h"
#include "media/FrameScaler.h"
#include "media/VideoReader.h"

namespace corvane::media {

/// Converts decoded frames for display: scaled, in RGB and upright. Not thread-safe.
class DisplayFrameConverter {
  public:
    DisplayFrameConverter();

    /// `quarterTurns`: clockwise, 0 to 3. The result fits inside `bound` and is never enlarged; an
    /// empty bound means the source's size. Leaves `DisplayFrame::item` 0. Throws `MediaError`.
    DisplayFrame convert(const VideoFrame &frame, int quarterTurns, QSize bound);

  private:
    FrameScaler m_scaler;
    FramePool m_rotated;
};

} // namespace corvane::media

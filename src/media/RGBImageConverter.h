#pragma once

// Internal to src/media.

#include "media/FrameScaler.h"
#include "media/RGBImage.h"

namespace corvane::media {

/// Converts decoded frames to upright sRGB images with square pixels. One thread at a time.
class RGBImageConverter {
  public:
    RGBImageConverter();

    /// `quarterTurns`: clockwise, 0 to 3. The image fits inside `bound` and is never enlarged; an
    /// empty bound means the source's size. Throws `MediaError`.
    RGBImage convert(const AVFrame &frame, int quarterTurns, QSize bound);

  private:
    FrameScaler m_scaler;
};

} // namespace corvane::media

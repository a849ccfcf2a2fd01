#pragma once

// For the source files of this floor only.

#include "media/FFmpegHandles.h"
#include "media/StillImage.h"

#include <QSize>

namespace corvane::media {

/// Makes stills of decoded pictures: square pixels, turned, in the usual red, green and blue of a
/// screen. Pictures of a high dynamic range are converted as if they were of the usual one, which
/// shows them flatter than they are. One thread at a time.
class StillScaler {
  public:
    /// `quarterTurns`: clockwise. The still fits inside `maximumSize` and is never enlarged; an
    /// empty one sets no bound. Throws `MediaError`.
    StillImage still(const AVFrame &picture, int quarterTurns, QSize maximumSize);

  private:
    void prepare(const AVFrame &picture, QSize size);

    ScalerHandle m_scaler;
    FrameHandle m_scaled = makeFrame();
};

} // namespace corvane::media

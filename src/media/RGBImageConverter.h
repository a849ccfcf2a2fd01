#pragma once

// For the source files of this floor only.

#include "media/FrameFilterGraph.h"
#include "media/RGBImage.h"

#include <QSize>

namespace corvane::media {

/// Makes stills of decoded pictures: square pixels, turned, in the usual red, green and blue of a
/// screen. High dynamic range is mapped to that as an export does it. One thread at a time.
class RGBImageConverter {
  public:
    /// `quarterTurns`: clockwise. The still fits inside `maximumSize` and is never enlarged; an
    /// empty one sets no bound. Throws `MediaError`.
    RGBImage still(const AVFrame &picture, int quarterTurns, QSize maximumSize);

  private:
    void prepare(const AVFrame &picture, QSize size);

    ScalerHandle m_scaler;
    ToneMapper m_mapping{AV_PIX_FMT_RGB24};
    FrameHandle m_scaled = makeFrame();
};

} // namespace corvane::media

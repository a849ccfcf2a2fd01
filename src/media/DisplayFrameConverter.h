#pragma once

// For the source files of this floor only.

#include "media/DisplayFrame.h"
#include "media/FrameFilterGraph.h"
#include "media/VideoReader.h"

namespace corvane::media {

/// The size that a frame of `stored` pixels is shown in, upright and with square pixels, inside the
/// box `wanted` where that is smaller. Never empty.
QSize shownSize(QSize stored, double pixelAspect, int quarterTurns, QSize wanted);

/// Makes pictures of decoded frames: scaled to what is shown, in the stream's own colour matrix and
/// range, turned upright. High dynamic range is mapped to the screen's, which takes several times
/// as long. One thread.
class DisplayFrameConverter {
  public:
    DisplayFrameConverter();
    ~DisplayFrameConverter();
    Q_DISABLE_COPY_MOVE(DisplayFrameConverter)

    /// `item` of the picture is left to the caller. Throws `MediaError`.
    DisplayFrame convert(const VideoFrame &frame, int quarterTurns, QSize wanted);

  private:
    struct Scaling;
    struct Memory;

    SwsContext &scalerFor(const Scaling &scaling);
    FrameHandle scaled(const AVFrame &source, QSize size);

    ScalerHandle m_scaler;
    ToneMapper m_mapping{AV_PIX_FMT_RGB32};
    std::unique_ptr<Scaling> m_scaling;
    std::unique_ptr<Memory> m_scaled;
    std::unique_ptr<Memory> m_turned;
};

} // namespace corvane::media

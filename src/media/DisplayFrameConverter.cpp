#include "media/DisplayFrameConverter.h"

#include <algorithm>

namespace corvane::media {

namespace {

constexpr int kScalerThreads = 2;

} // namespace

DisplayFrameConverter::DisplayFrameConverter()
    : m_scaler(AV_PIX_FMT_RGB32, SWS_BILINEAR, kScalerThreads), m_rotated(AV_PIX_FMT_RGB32) {}

DisplayFrame DisplayFrameConverter::convert(const VideoFrame &frame, int quarterTurns,
                                            QSize bound) {
    const AVFrame &source = *frame.avFrame;
    const double aspect = pixelAspectRatio(source);
    // Oblong pixels are stretched, never shrunk, so no detail is lost.
    const QSizeF square(std::max(source.width, 1) * std::max(aspect, 1.0),
                        std::max(source.height, 1) / std::min(aspect, 1.0));
    const QSize upright = uprightSize(square, quarterTurns, bound);
    FrameHandle converted =
        m_scaler.scale(source, quarterTurns % 2 != 0 ? upright.transposed() : upright);
    if (quarterTurns != 0) {
        FrameHandle rotated = m_rotated.frame(upright);
        copyRotated<quint32>(*converted, quarterTurns, rotated->data[0], rotated->linesize[0]);
        converted = std::move(rotated);
    }
    const std::shared_ptr<AVFrame> shared(std::move(converted));
    return {upright.width(), upright.height(), shared->linesize[0],
            std::shared_ptr<const uchar>(shared, shared->data[0]), frame.time};
}

} // namespace corvane::media

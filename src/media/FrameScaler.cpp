#include "media/FrameScaler.h"

#include "media/MediaError.h"

extern "C" {
#include <libavutil/imgutils.h>
#include <libavutil/opt.h>
}

#include <algorithm>
#include <cmath>

namespace corvane::media {

namespace {

constexpr char kScaling[] = "Cannot convert a picture";
constexpr int kBufferAlignment = 64; ///< in bytes; also the slack for writes past the last row

/// Frames without a colour matrix count as high definition from this height on.
constexpr int kHighDefinitionHeight = 720;

int colorMatrix(const AVFrame &frame) {
    if (frame.colorspace != AVCOL_SPC_UNSPECIFIED && frame.colorspace != AVCOL_SPC_RGB) {
        return frame.colorspace; // SWS_CS_* has the same values
    }
    return frame.height >= kHighDefinitionHeight ? SWS_CS_ITU709 : SWS_CS_ITU601;
}

} // namespace

FrameHandle FramePool::frame(QSize size) {
    if (!m_buffers || m_size != size) {
        m_buffers.reset(); // so that a failure leaves no buffers of another size
        m_size = size;
        m_bytesPerLine = av_image_get_linesize(m_pixels, size.width(), 0);
        m_bytesPerLine = FFALIGN(m_bytesPerLine, kBufferAlignment);
        m_buffers.reset(allocated(av_buffer_pool_init(
            size_t(m_bytesPerLine) * size_t(size.height()) + kBufferAlignment, nullptr)));
    }
    FrameHandle frame = makeFrame();
    frame->buf[0] = allocated(av_buffer_pool_get(m_buffers.get()));
    frame->format = m_pixels;
    frame->width = size.width();
    frame->height = size.height();
    frame->data[0] = frame->buf[0]->data;
    frame->linesize[0] = m_bytesPerLine;
    return frame;
}

FrameScaler::FrameScaler(AVPixelFormat pixels, int flags, int threads)
    : m_pixels(pixels), m_flags(flags), m_threads(threads), m_toneMapper(pixels), m_pool(pixels) {}

void FrameScaler::prepare(const Conversion &conversion) {
    if (m_conversion == conversion) {
        return;
    }
    m_conversion.reset();
    m_scaler.reset(allocated(sws_alloc_context()));
    auto *scaler = m_scaler.get();
    const auto set = [scaler](const char *option, int64_t value) {
        check(av_opt_set_int(scaler, option, value, 0), kScaling);
    };
    set("srcw", conversion.from.width());
    set("srch", conversion.from.height());
    set("src_format", conversion.format);
    set("dstw", conversion.to.width());
    set("dsth", conversion.to.height());
    set("dst_format", m_pixels);
    set("sws_flags", m_flags);
    set("threads", m_threads);
    if (sws_init_context(scaler, nullptr, nullptr) < 0) {
        throw MediaError(QStringLiteral("Its pictures can't be converted."));
    }
    constexpr int kOne = 1 << 16;
    check(sws_setColorspaceDetails(scaler, sws_getCoefficients(conversion.matrix),
                                   conversion.isFullRange, sws_getCoefficients(SWS_CS_DEFAULT), 1,
                                   0, kOne, kOne),
          kScaling);
    m_conversion = conversion;
}

FrameHandle FrameScaler::scale(const AVFrame &frame, QSize size) {
    if (isHighDynamicRange(frame.color_trc)) {
        return m_toneMapper.map(frame, size);
    }
    prepare({.from = {frame.width, frame.height},
             .format = frame.format,
             .matrix = colorMatrix(frame),
             .isFullRange = isFullRange(frame.color_range, frame.format),
             .to = size});
    FrameHandle scaled = m_pool.frame(size);
    check(sws_scale_frame(m_scaler.get(), scaled.get(), &frame), kScaling);
    return scaled;
}

double pixelAspectRatio(const AVFrame &frame) {
    const AVRational ratio = frame.sample_aspect_ratio;
    return ratio.num > 0 && ratio.den > 0 ? av_q2d(ratio) : 1;
}

QSize uprightSize(QSizeF size, int quarterTurns, QSize bound) {
    if (quarterTurns % 2 != 0) {
        size.transpose();
    }
    if (!bound.isEmpty() && (bound.width() < size.width() || bound.height() < size.height())) {
        size.scale(bound, Qt::KeepAspectRatio);
    }
    return {std::max(int(std::lround(size.width())), 1),
            std::max(int(std::lround(size.height())), 1)};
}

} // namespace corvane::media

#include "media/DisplayFrameConverter.h"

extern "C" {
#include <libavutil/opt.h>
}

#include <algorithm>
#include <cmath>
#include <new>

namespace corvane::media {

namespace {

constexpr int kBytesPerPixel = 4;
constexpr int kRowAlignment = 64;
constexpr int kScalerThreads = 2;

/// Pictures without a word on their colours are taken for high definition from this height on.
constexpr int kLeastHighDefinition = 720;

int matrixOf(const AVFrame &frame) {
    if (frame.colorspace != AVCOL_SPC_UNSPECIFIED && frame.colorspace != AVCOL_SPC_RGB) {
        return frame.colorspace; // both tables count alike
    }
    return frame.height >= kLeastHighDefinition ? SWS_CS_ITU709 : SWS_CS_ITU601;
}

bool usesFullRange(const AVFrame &frame) {
    return frame.color_range == AVCOL_RANGE_JPEG || frame.format == AV_PIX_FMT_YUVJ420P ||
           frame.format == AV_PIX_FMT_YUVJ422P || frame.format == AV_PIX_FMT_YUVJ444P;
}

double pixelAspectOf(const AVFrame &frame) {
    const auto aspect = frame.sample_aspect_ratio;
    return aspect.num > 0 && aspect.den > 0 ? av_q2d(aspect) : 1.0;
}

/// Copies 32-bit pixels, turned clockwise.
void turn(const AVFrame &from, AVFrame &to, int quarterTurns) {
    const int width = from.width;
    const int height = from.height;
    for (int y = 0; y < height; ++y) {
        const auto *row =
            reinterpret_cast<const quint32 *>(from.data[0] + ptrdiff_t(y) * from.linesize[0]);
        for (int x = 0; x < width; ++x) {
            const int toX = quarterTurns == 1   ? height - 1 - y
                            : quarterTurns == 2 ? width - 1 - x
                                                : y;
            const int toY = quarterTurns == 1   ? x
                            : quarterTurns == 2 ? height - 1 - y
                                                : width - 1 - x;
            reinterpret_cast<quint32 *>(to.data[0] + ptrdiff_t(toY) * to.linesize[0])[toX] = row[x];
        }
    }
}

} // namespace

struct DisplayFrameConverter::Scaling {
    QSize from;
    int format = AV_PIX_FMT_NONE;
    int matrix = SWS_CS_DEFAULT;
    bool fullRange = false;
    QSize to;

    bool operator==(const Scaling &) const = default;
};

/// Memory for pictures of one size, used again as soon as nobody shows it.
struct DisplayFrameConverter::Memory {
    explicit Memory(QSize ofSize)
        : size(ofSize),
          bytesPerLine(FFALIGN(ofSize.width() * kBytesPerPixel, kRowAlignment)),
          pool(av_buffer_pool_init(size_t(bytesPerLine) * size_t(ofSize.height()), nullptr)) {
        if (!pool) {
            throw std::bad_alloc();
        }
    }

    FrameHandle frame() const {
        auto made = makeFrame();
        made->buf[0] = av_buffer_pool_get(pool.get());
        if (!made->buf[0]) {
            throw std::bad_alloc();
        }
        made->format = AV_PIX_FMT_RGB32;
        made->width = size.width();
        made->height = size.height();
        made->data[0] = made->buf[0]->data;
        made->linesize[0] = bytesPerLine;
        return made;
    }

    QSize size;
    int bytesPerLine;
    std::unique_ptr<AVBufferPool, FreeByAddress<av_buffer_pool_uninit>> pool;

    /// The memory for `size`: what `held` has, or new one in its place.
    static const Memory &of(std::unique_ptr<Memory> &held, QSize size) {
        if (!held || held->size != size) {
            held = std::make_unique<Memory>(size);
        }
        return *held;
    }
};

QSize shownSize(QSize stored, double pixelAspect, int quarterTurns, QSize wanted) {
    QSizeF shown(std::max(stored.width(), 1) * std::max(pixelAspect, 1.0),
                 std::max(stored.height(), 1) / std::min(pixelAspect, 1.0));
    if (quarterTurns % 2) {
        shown.transpose();
    }
    if (!wanted.isEmpty() && (wanted.width() < shown.width() || wanted.height() < shown.height())) {
        shown.scale(wanted, Qt::KeepAspectRatio);
    }
    return {std::max(int(std::lround(shown.width())), 1),
            std::max(int(std::lround(shown.height())), 1)};
}

DisplayFrameConverter::DisplayFrameConverter() = default;
DisplayFrameConverter::~DisplayFrameConverter() = default;

SwsContext &DisplayFrameConverter::scalerFor(const Scaling &scaling) {
    if (m_scaler && m_scaling && *m_scaling == scaling) {
        return *m_scaler;
    }
    m_scaler.reset(sws_alloc_context());
    if (!m_scaler) {
        throw std::bad_alloc();
    }
    auto *scaler = m_scaler.get();
    av_opt_set_int(scaler, "srcw", scaling.from.width(), 0);
    av_opt_set_int(scaler, "srch", scaling.from.height(), 0);
    av_opt_set_int(scaler, "src_format", scaling.format, 0);
    av_opt_set_int(scaler, "dstw", scaling.to.width(), 0);
    av_opt_set_int(scaler, "dsth", scaling.to.height(), 0);
    av_opt_set_int(scaler, "dst_format", AV_PIX_FMT_RGB32, 0);
    av_opt_set_int(scaler, "sws_flags", SWS_BILINEAR, 0);
    av_opt_set_int(scaler, "threads", kScalerThreads, 0);
    m_scaling.reset();
    check(sws_init_context(scaler, nullptr, nullptr), "scale a frame");
    constexpr int kOne = 1 << 16;
    // Refused for what has no colour matrix, such as pictures that are red, green and blue already.
    (void)sws_setColorspaceDetails(scaler, sws_getCoefficients(scaling.matrix), scaling.fullRange,
                                   sws_getCoefficients(SWS_CS_DEFAULT), 1, 0, kOne, kOne);
    m_scaling = std::make_unique<Scaling>(scaling);
    return *scaler;
}

FrameHandle DisplayFrameConverter::scaled(const AVFrame &source, QSize size) {
    if (isHighDynamicRange(source.color_trc)) {
        return m_mapping.map(source, size);
    }
    auto picture = Memory::of(m_scaled, size).frame();
    auto &scaler = scalerFor({{source.width, source.height},
                              source.format,
                              matrixOf(source),
                              usesFullRange(source),
                              size});
    check(sws_scale_frame(&scaler, picture.get(), &source), "scale a frame");
    return picture;
}

DisplayFrame DisplayFrameConverter::convert(const VideoFrame &frame, int quarterTurns,
                                            QSize wanted) {
    const auto &source = *frame.avFrame;
    const QSize stored(source.width, source.height);
    const auto shown = shownSize(stored, pixelAspectOf(source), quarterTurns, wanted);
    const auto scaledSize = quarterTurns % 2 ? shown.transposed() : shown;
    auto picture = scaled(source, scaledSize);
    if (quarterTurns) {
        auto turned = Memory::of(m_turned, shown).frame();
        turn(*picture, *turned, quarterTurns);
        picture = std::move(turned);
    }
    const std::shared_ptr<AVFrame> shared(std::move(picture));
    return {shown.width(), shown.height(), shared->linesize[0],
            std::shared_ptr<const uchar>(shared, shared->data[0]), frame.time};
}

} // namespace corvane::media

#pragma once

// Internal to src/media.

#include "media/FrameFilterGraph.h"

#include <QSize>

#include <array>
#include <cstring>

namespace corvane::media {

/// Allocates frames of one pixel format and reuses the buffers of released ones while the size
/// stays the same. Not thread-safe, but the frames may be released on any thread and outlive the
/// pool.
class FramePool {
  public:
    explicit FramePool(AVPixelFormat pixels) : m_pixels(pixels) {}

    /// Returns a writable frame with undefined pixels.
    FrameHandle frame(QSize size);

  private:
    AVPixelFormat m_pixels;
    QSize m_size;
    int m_bytesPerLine = 0;
    std::unique_ptr<AVBufferPool, FreeByAddress<av_buffer_pool_uninit>> m_buffers;
};

/// Scales decoded frames and converts them to RGB by their own colour matrix and range. High
/// dynamic range is tone-mapped, which takes several times as long. Not thread-safe.
class FrameScaler {
  public:
    /// `pixels`: AV_PIX_FMT_RGB24 or AV_PIX_FMT_RGB32; `flags` and `threads` are libswscale's.
    FrameScaler(AVPixelFormat pixels, int flags, int threads);

    /// Returns the frame in `size`, not rotated. Throws `MediaError`.
    FrameHandle scale(const AVFrame &frame, QSize size);

  private:
    struct Conversion {
        QSize from;
        int format = AV_PIX_FMT_NONE;
        int matrix = SWS_CS_DEFAULT;
        bool isFullRange = false;
        QSize to;

        bool operator==(const Conversion &) const = default;
    };

    void prepare(const Conversion &conversion);

    const AVPixelFormat m_pixels;
    const int m_flags;
    const int m_threads;
    ScalerHandle m_scaler;
    std::optional<Conversion> m_conversion; ///< that `m_scaler` is set up for
    ToneMapper m_toneMapper;
    FramePool m_pool;
};

/// The width of a pixel divided by its height; 1 if the frame doesn't state it.
double pixelAspectRatio(const AVFrame &frame);

/// The size of an upright frame: `size`, which has square pixels, rotated by the quarter turns and
/// reduced to fit inside `bound` unless that is empty. Never enlarged and never empty.
QSize uprightSize(QSizeF size, int quarterTurns, QSize bound);

/// Copies the frame's packed pixels to `to`, rotated clockwise.
template <typename Pixel>
void copyRotated(const AVFrame &frame, int quarterTurns, uchar *to, qsizetype toBytesPerLine) {
    const qsizetype row = frame.linesize[0];
    const qsizetype pixel = sizeof(Pixel);
    const qsizetype right = (frame.width - 1) * pixel;
    const qsizetype bottom = (frame.height - 1) * row;
    const bool isSideways = quarterTurns % 2 != 0;
    struct Order {
        qsizetype start;
        qsizetype columnStep;
        qsizetype rowStep;
    };
    const std::array<Order, 4> orders{{{0, pixel, row},
                                       {bottom, -row, pixel},
                                       {bottom + right, -pixel, -row},
                                       {right, row, -pixel}}};
    const Order &order = orders.at(size_t(quarterTurns));
    const int width = isSideways ? frame.height : frame.width;
    const int height = isSideways ? frame.width : frame.height;
    for (int y = 0; y < height; ++y) {
        const uchar *source = frame.data[0] + order.start + y * order.rowStep;
        for (int x = 0; x < width; ++x, source += order.columnStep) {
            std::memcpy(to + y * toBytesPerLine + x * pixel, source, sizeof(Pixel));
        }
    }
}

} // namespace corvane::media

#include "media/FrameGenerator.h"

#include "media/FrameScaler.h"
#include "media/VideoReader.h"

#include <algorithm>
#include <array>
#include <numeric>

namespace corvane::media {

namespace {

/// The most oblong pixels of real footage. A file that claims more is taken to have square ones.
constexpr double kMaxAspectRatio = 4;

/// Converts a frame to an upright sRGB image with square pixels that fits inside `bound`, unless
/// that is empty. Never enlarged.
RGBImage toImage(FrameScaler &scaler, const AVFrame &frame, int quarterTurns, QSize bound) {
    using Pixel = std::array<uchar, 3>;
    const double aspect = pixelAspectRatio(frame);
    const bool isCredible = aspect <= kMaxAspectRatio && aspect >= 1 / kMaxAspectRatio;
    const QSizeF square(frame.width * (isCredible ? aspect : 1), frame.height);
    const QSize upright = uprightSize(square, quarterTurns, bound);
    const FrameHandle scaled =
        scaler.scale(frame, quarterTurns % 2 != 0 ? upright.transposed() : upright);
    RGBImage image{.width = upright.width(), .height = upright.height(), .pixels = {}};
    const qsizetype bytesPerLine = upright.width() * qsizetype(sizeof(Pixel));
    image.pixels.resize(bytesPerLine * upright.height());
    copyRotated<Pixel>(*scaled, quarterTurns, reinterpret_cast<uchar *>(image.pixels.data()),
                       bytesPerLine);
    return image;
}

} // namespace

struct FrameGenerator::Work {
    VideoReader reader;
    FrameScaler scaler{AV_PIX_FMT_RGB24, SWS_BILINEAR | SWS_ACCURATE_RND, 1};
    Options options;
};

FrameGenerator::FrameGenerator(const QString &path, Options options, std::stop_token stop)
    : m_work(new Work{.reader = VideoReader(
                          path, {.isSingleFrameRead = true, .reducedSize = options.maximumSize},
                          std::move(stop)),
                      .options = options}) {}

FrameGenerator::~FrameGenerator() = default;

RGBImage FrameGenerator::imageAt(MediaTime time) {
    const Options &options = m_work->options;
    const auto frame = m_work->reader.frameAt(time, options.tolerance);
    if (!frame) {
        throw MediaError(QStringLiteral("None of its pictures can be decoded."));
    }
    const int turns = options.appliesPreferredTrackTransform ? m_work->reader.quarterTurns() : 0;
    return toImage(m_work->scaler, *frame->avFrame, turns, options.maximumSize);
}

/// In the order of their times, decoding can continue from one still to the next.
void FrameGenerator::images(
    const QList<MediaTime> &times,
    const std::function<void(qsizetype index, std::optional<RGBImage>)> &take) {
    QList<qsizetype> order(times.size());
    std::iota(order.begin(), order.end(), qsizetype(0));
    std::ranges::stable_sort(order, {}, [&](qsizetype index) { return times.at(index); });
    for (const qsizetype index : std::as_const(order)) {
        std::optional<RGBImage> image;
        try {
            image = imageAt(times.at(index));
        } catch (const MediaError &) {
            // The other stills may succeed.
        }
        take(index, std::move(image));
    }
}

} // namespace corvane::media

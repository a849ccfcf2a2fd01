#include "media/RGBImageConverter.h"

#include <array>

namespace corvane::media {

namespace {

/// The most oblong pixels of real footage. A file that claims more is taken to have square ones.
constexpr double kMaxAspectRatio = 4;

} // namespace

RGBImageConverter::RGBImageConverter()
    : m_scaler(AV_PIX_FMT_RGB24, SWS_BILINEAR | SWS_ACCURATE_RND, 1) {}

RGBImage RGBImageConverter::convert(const AVFrame &frame, int quarterTurns, QSize bound) {
    using Pixel = std::array<uchar, 3>;
    const double aspect = pixelAspectRatio(frame);
    const bool isCredible = aspect <= kMaxAspectRatio && aspect >= 1 / kMaxAspectRatio;
    const QSizeF square(frame.width * (isCredible ? aspect : 1), frame.height);
    const QSize upright = uprightSize(square, quarterTurns, bound);
    const FrameHandle scaled =
        m_scaler.scale(frame, quarterTurns % 2 != 0 ? upright.transposed() : upright);
    RGBImage image{.width = upright.width(), .height = upright.height(), .pixels = {}};
    const qsizetype bytesPerLine = upright.width() * qsizetype(sizeof(Pixel));
    image.pixels.resize(bytesPerLine * upright.height());
    copyRotated<Pixel>(*scaled, quarterTurns, reinterpret_cast<uchar *>(image.pixels.data()),
                       bytesPerLine);
    return image;
}

} // namespace corvane::media

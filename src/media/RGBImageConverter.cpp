#include "media/RGBImageConverter.h"

#include "media/MediaInput.h"

extern "C" {
#include <libavutil/pixdesc.h>
}

#include <algorithm>
#include <cmath>
#include <cstring>

namespace corvane::media {

namespace {

/// No film's pixels are more oblong; what claims more is left square.
constexpr double kMostOblong = 4;
/// Pictures without a word on their colours are taken for high definition from this height on.
constexpr int kHighDefinitionHeight = 720;

/// As it is shown: the pixels square, not turned yet.
QSizeF displaySize(const AVFrame &picture) {
    const AVRational aspect = picture.sample_aspect_ratio;
    const double ratio = aspect.num > 0 && aspect.den > 0 ? av_q2d(aspect) : 1;
    const bool isCredible = ratio <= kMostOblong && ratio >= 1 / kMostOblong;
    return {picture.width * (isCredible ? ratio : 1), double(picture.height)};
}

/// Of the still before it is turned.
QSize scaledSize(const AVFrame &picture, bool isTurnedSideways, QSize maximumSize) {
    QSizeF size = displaySize(picture);
    if (!maximumSize.isEmpty()) {
        const QSizeF bound = isTurnedSideways ? maximumSize.transposed() : maximumSize;
        if (size.width() > bound.width() || size.height() > bound.height()) {
            size.scale(bound, Qt::KeepAspectRatio);
        }
    }
    return {std::max(int(std::lround(size.width())), 1),
            std::max(int(std::lround(size.height())), 1)};
}

const int *colourCoefficients(const AVFrame &picture) {
    if (picture.colorspace != AVCOL_SPC_UNSPECIFIED && picture.colorspace != AVCOL_SPC_RGB) {
        return sws_getCoefficients(picture.colorspace);
    }
    return sws_getCoefficients(picture.height >= kHighDefinitionHeight ? SWS_CS_ITU709
                                                                       : SWS_CS_ITU601);
}

/// Where in a picture a turned one begins to be read, and the steps from there, in bytes.
struct Walk {
    qsizetype begin;
    qsizetype toNextPoint;
    qsizetype toNextRow;
};

Walk walkFor(const AVFrame &scaled, int quarterTurns) {
    constexpr qsizetype kPoint = 3;
    const qsizetype row = scaled.linesize[0];
    const qsizetype right = (scaled.width - 1) * kPoint;
    const qsizetype bottom = (scaled.height - 1) * row;
    switch (quarterTurns) {
    case 1:
        return {bottom, -row, kPoint};
    case 2:
        return {bottom + right, -kPoint, -row};
    case 3:
        return {right, row, -kPoint};
    default:
        return {0, kPoint, row};
    }
}

RGBImage turned(const AVFrame &scaled, int quarterTurns) {
    const bool isSideways = quarterTurns % 2 != 0;
    RGBImage still{.width = isSideways ? scaled.height : scaled.width,
                   .height = isSideways ? scaled.width : scaled.height};
    still.pixels.resize(qsizetype(still.width) * still.height * 3);
    const Walk walk = walkFor(scaled, quarterTurns);
    const uint8_t *row = scaled.data[0] + walk.begin;
    char *to = still.pixels.data();
    for (int y = 0; y < still.height; ++y, row += walk.toNextRow) {
        const uint8_t *from = row;
        for (int x = 0; x < still.width; ++x, from += walk.toNextPoint, to += 3) {
            std::memcpy(to, from, 3);
        }
    }
    return still;
}

} // namespace

void RGBImageConverter::prepare(const AVFrame &picture, QSize size) {
    ScalerHandle scaler(sws_getCachedContext(
        m_scaler.release(), picture.width, picture.height, AVPixelFormat(picture.format),
        size.width(), size.height(), AV_PIX_FMT_RGB24, SWS_BILINEAR | SWS_ACCURATE_RND, nullptr,
        nullptr, nullptr));
    if (!scaler) {
        throw MediaError(QStringLiteral("Its pictures can't be converted."));
    }
    m_scaler = std::move(scaler);
    const int isFullRange = picture.color_range == AVCOL_RANGE_JPEG ? 1 : 0;
    // Refused for what has no colour matrix, such as pictures that are red, green and blue already.
    (void)sws_setColorspaceDetails(m_scaler.get(), colourCoefficients(picture), isFullRange,
                                   sws_getCoefficients(SWS_CS_DEFAULT), 1, 0, 1 << 16, 1 << 16);
    if (m_scaled->width != size.width() || m_scaled->height != size.height()) {
        av_frame_unref(m_scaled.get());
        m_scaled->format = AV_PIX_FMT_RGB24;
        m_scaled->width = size.width();
        m_scaled->height = size.height();
        // Own memory with room to spare: the conversion may write past a row's end.
        check(av_frame_get_buffer(m_scaled.get(), 0), "Cannot make a still");
    }
}

RGBImage RGBImageConverter::still(const AVFrame &picture, int quarterTurns, QSize maximumSize) {
    const QSize size = scaledSize(picture, quarterTurns % 2 != 0, maximumSize);
    if (isHighDynamicRange(picture.color_trc)) {
        return turned(*m_mapping.map(picture, size), quarterTurns);
    }
    prepare(picture, size);
    check(sws_scale(m_scaler.get(), picture.data, picture.linesize, 0, picture.height,
                    m_scaled->data, m_scaled->linesize),
          "Cannot convert a picture");
    return turned(*m_scaled, quarterTurns);
}

} // namespace corvane::media

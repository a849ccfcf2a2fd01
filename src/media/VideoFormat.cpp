#include "media/VideoFormat.h"

extern "C" {
#include <libavutil/display.h>
#include <libavutil/pixdesc.h>
}

#include <algorithm>
#include <cmath>

namespace corvane::media {

namespace {

bool isRotatedSideways(const AVStream &stream) {
    return clockwiseQuarterTurns(stream) % 2 != 0;
}

AVRational sampleAspectRatioOf(const AVStream &stream) {
    const AVRational container = stream.sample_aspect_ratio;
    const AVRational coded = stream.codecpar->sample_aspect_ratio;
    const AVRational aspect = container.num > 0 ? container : coded;
    return aspect.num > 0 && aspect.den > 0 ? aspect : AVRational{0, 1};
}

/// The factor that makes the displayed frame fit inside `bound`; at most 1.
double scaleFactor(const AVStream &stream, AVRational aspect, QSize bound) {
    double width = stream.codecpar->width * (aspect.num > 0 ? av_q2d(aspect) : 1);
    double height = stream.codecpar->height;
    if (isRotatedSideways(stream)) {
        std::swap(width, height);
    }
    return std::min({1.0, bound.width() / width, bound.height() / height});
}

/// `side * factor` as a positive multiple of `multiple`: the nearest one if the side is scaled, the
/// next lower one if it is cropped.
int scaledSide(int side, double factor, int multiple) {
    const double multiples = side * factor / multiple;
    return std::max(1, int(factor < 1 ? std::round(multiples) : std::floor(multiples))) * multiple;
}

/// Undoes a rounding that made the displayed frame exceed `bound`.
QSize shrunkToFit(QSize size, const AVStream &stream, AVRational aspect, QSize bound, int rows) {
    const double ratio = aspect.num > 0 ? av_q2d(aspect) : 1;
    const QSize limit = isRotatedSideways(stream) ? bound.transposed() : bound;
    while (size.width() * ratio > limit.width() + 0.5 && size.width() > 2) {
        size.rwidth() -= 2;
    }
    while (size.height() > limit.height() && size.height() > rows) {
        size.rheight() -= rows;
    }
    return size;
}

void setColors(VideoFormat &format, const AVCodecParameters &codec) {
    if (isHighDynamicRange(codec.color_trc)) {
        format.primaries = AVCOL_PRI_BT709;
        format.transfer = AVCOL_TRC_BT709;
        format.matrix = AVCOL_SPC_BT709;
        format.range = AVCOL_RANGE_MPEG;
        format.chromaLocation = AVCHROMA_LOC_LEFT;
        return;
    }
    const AVPixFmtDescriptor *pixels = av_pix_fmt_desc_get(AVPixelFormat(codec.format));
    const bool isRGB = pixels && (pixels->flags & AV_PIX_FMT_FLAG_RGB);
    const bool isFull = !isRGB && isFullRange(codec.color_range, codec.format);
    format.primaries = codec.color_primaries;
    format.transfer = codec.color_trc;
    format.matrix = isRGB ? AVCOL_SPC_BT709 : codec.color_space;
    format.range = isFull ? AVCOL_RANGE_JPEG : isRGB ? AVCOL_RANGE_MPEG : codec.color_range;
    format.pixels = isFull ? AV_PIX_FMT_YUVJ420P : AV_PIX_FMT_YUV420P;
    format.chromaLocation = codec.chroma_location;
}

} // namespace

int clockwiseQuarterTurns(const AVStream &stream) {
    const uint8_t *matrix = av_stream_get_side_data(&stream, AV_PKT_DATA_DISPLAYMATRIX, nullptr);
    const double degrees =
        matrix ? -av_display_rotation_get(reinterpret_cast<const int32_t *>(matrix)) : 0;
    return std::isfinite(degrees) ? (int(std::lround(degrees / 90)) % 4 + 4) % 4 : 0;
}

bool isHighDynamicRange(int transfer) {
    return transfer == AVCOL_TRC_SMPTE2084 || transfer == AVCOL_TRC_ARIB_STD_B67;
}

bool isFullRange(AVColorRange range, int pixelFormat) {
    return range == AVCOL_RANGE_JPEG || pixelFormat == AV_PIX_FMT_YUVJ420P ||
           pixelFormat == AV_PIX_FMT_YUVJ422P || pixelFormat == AV_PIX_FMT_YUVJ444P;
}

VideoFormat VideoFormat::of(const AVStream &stream, std::optional<QSize> bound) {
    const AVCodecParameters &codec = *stream.codecpar;
    VideoFormat format;
    format.sampleAspectRatio = sampleAspectRatioOf(stream);
    format.fieldOrder =
        codec.field_order == AV_FIELD_UNKNOWN ? AV_FIELD_PROGRESSIVE : codec.field_order;
    const int rows = format.isInterlaced() ? 4 : 2;
    const double factor = bound ? scaleFactor(stream, format.sampleAspectRatio, *bound) : 1;
    format.size = {scaledSide(codec.width, factor, 2), scaledSide(codec.height, factor, rows)};
    if (bound) {
        format.size = shrunkToFit(format.size, stream, format.sampleAspectRatio, *bound, rows);
    }
    setColors(format, codec);
    return format;
}

} // namespace corvane::media

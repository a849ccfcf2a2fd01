#include "media/VideoFormat.h"

extern "C" {
#include <libavutil/display.h>
#include <libavutil/pixdesc.h>
}

#include <algorithm>
#include <cmath>

namespace corvane::media {

namespace {

bool isTurnedSideways(const AVStream &stream) {
    const auto *matrix = reinterpret_cast<const int32_t *>(
        av_stream_get_side_data(&stream, AV_PKT_DATA_DISPLAYMATRIX, nullptr));
    const double degrees = matrix ? av_display_rotation_get(matrix) : 0;
    return std::isfinite(degrees) && std::lround(degrees / 90) % 2 != 0;
}

AVRational aspectOf(const AVStream &stream) {
    const AVRational own = stream.sample_aspect_ratio;
    const AVRational coded = stream.codecpar->sample_aspect_ratio;
    const AVRational aspect = own.num > 0 ? own : coded;
    return aspect.num > 0 && aspect.den > 0 ? aspect : AVRational{0, 1};
}

/// How much smaller both sides get; 1 where the picture fits.
double reduction(const AVStream &stream, AVRational aspect, QSize bound) {
    double width = stream.codecpar->width * (aspect.num > 0 ? av_q2d(aspect) : 1);
    double height = stream.codecpar->height;
    if (isTurnedSideways(stream)) {
        std::swap(width, height);
    }
    return std::min({1.0, bound.width() / width, bound.height() / height});
}

/// The nearest multiple no larger than `limit` where the side is made smaller, else the next below.
int fitted(int side, double factor, int multiple) {
    const double parts = side * factor / multiple;
    return std::max(1, int(factor < 1 ? std::round(parts) : std::floor(parts))) * multiple;
}

/// Where rounding took the picture a pixel beyond its bound.
QSize within(QSize size, const AVStream &stream, AVRational aspect, QSize bound, int rows) {
    const double shape = aspect.num > 0 ? av_q2d(aspect) : 1;
    const QSize limit = isTurnedSideways(stream) ? bound.transposed() : bound;
    while (size.width() * shape > limit.width() + 0.5 && size.width() > 2) {
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
    const bool isFull =
        !isRGB && (codec.color_range == AVCOL_RANGE_JPEG || codec.format == AV_PIX_FMT_YUVJ420P ||
                   codec.format == AV_PIX_FMT_YUVJ422P || codec.format == AV_PIX_FMT_YUVJ444P);
    format.primaries = codec.color_primaries;
    format.transfer = codec.color_trc;
    format.matrix = isRGB ? AVCOL_SPC_BT709 : codec.color_space;
    format.range = isFull ? AVCOL_RANGE_JPEG : isRGB ? AVCOL_RANGE_MPEG : codec.color_range;
    format.pixels = isFull ? AV_PIX_FMT_YUVJ420P : AV_PIX_FMT_YUV420P;
    format.chromaLocation = codec.chroma_location;
}

} // namespace

bool isHighDynamicRange(int transfer) {
    return transfer == AVCOL_TRC_SMPTE2084 || transfer == AVCOL_TRC_ARIB_STD_B67;
}

VideoFormat VideoFormat::of(const AVStream &stream, std::optional<QSize> bound) {
    const AVCodecParameters &codec = *stream.codecpar;
    VideoFormat format;
    format.sampleAspectRatio = aspectOf(stream);
    format.fieldOrder =
        codec.field_order == AV_FIELD_UNKNOWN ? AV_FIELD_PROGRESSIVE : codec.field_order;
    const int rows = format.isInterlaced() ? 4 : 2;
    const double factor = bound ? reduction(stream, format.sampleAspectRatio, *bound) : 1;
    format.size = {fitted(codec.width, factor, 2), fitted(codec.height, factor, rows)};
    if (bound) {
        format.size = within(format.size, stream, format.sampleAspectRatio, *bound, rows);
    }
    setColors(format, codec);
    return format;
}

} // namespace corvane::media

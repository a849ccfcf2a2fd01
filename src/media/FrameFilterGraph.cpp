#include "media/FrameFilterGraph.h"

#include "media/MediaInput.h"

extern "C" {
#include <libavfilter/buffersink.h>
#include <libavfilter/buffersrc.h>
#include <libavutil/mastering_display_metadata.h>
#include <libavutil/pixdesc.h>
}

#include <algorithm>

namespace corvane::media {

namespace {

constexpr char kConverting[] = "A picture can't be converted";

/// The light of a white sheet in high dynamic range, which becomes the white of BT.709.
constexpr double kReferenceWhite = 203; // cd/m2, ITU-R BT.2408
constexpr double kUsualPeak = 1000;     // cd/m2, where the source doesn't tell

/// The brightest light of the source, in multiples of its reference white.
double peakOf(const AVFrame &picture) {
    double peak = kUsualPeak;
    if (const auto *data = av_frame_get_side_data(&picture, AV_FRAME_DATA_CONTENT_LIGHT_LEVEL)) {
        const auto *light = reinterpret_cast<const AVContentLightMetadata *>(data->data);
        peak = light->MaxCLL > 0 ? light->MaxCLL : peak;
    } else if (const auto *display =
                   av_frame_get_side_data(&picture, AV_FRAME_DATA_MASTERING_DISPLAY_METADATA)) {
        const auto *mastering = reinterpret_cast<const AVMasteringDisplayMetadata *>(display->data);
        peak = mastering->has_luminance ? av_q2d(mastering->max_luminance) : peak;
    }
    return std::clamp(peak, 400.0, 10'000.0) / kReferenceWhite;
}

bool isFullRange(const AVFrame &picture) {
    return picture.color_range == AVCOL_RANGE_JPEG || picture.format == AV_PIX_FMT_YUVJ420P ||
           picture.format == AV_PIX_FMT_YUVJ422P || picture.format == AV_PIX_FMT_YUVJ444P;
}

/// On its way to a screen, as opposed to an encoder.
bool isScreen(AVPixelFormat target) {
    return target == AV_PIX_FMT_RGB24 || target == AV_PIX_FMT_RGB32;
}

/// What the light is reckoned from. Pictures on their way to a screen may have odd sides, so they
/// keep a colour for each point.
QByteArray precise(AVPixelFormat target) {
    const QByteArray fine = "yuv444p10le|yuv444p12le|gbrp10le|gbrp12le|yuv444p16le";
    return isScreen(target) ? fine : "yuv420p10le|yuv422p10le|yuv420p12le|yuv422p12le|" + fine;
}

/// In linear light, with what a camera's file leaves unsaid taken for BT.2020. The curve leaves
/// what is below white alone as far as it can and rolls the highlights off.
QByteArray toneMapping(const AVFrame &picture, AVPixelFormat target) {
    const char *transfer = picture.color_trc == AVCOL_TRC_SMPTE2084 ? "smpte2084" : "arib-std-b67";
    const bool isWide = picture.color_primaries == AVCOL_PRI_UNSPECIFIED ||
                        picture.color_primaries == AVCOL_PRI_BT2020;
    QByteArray input = QByteArrayLiteral("tin=") + transfer;
    input += isWide ? ":pin=bt2020" : "";
    input += picture.colorspace == AVCOL_SPC_UNSPECIFIED ? ":min=bt2020nc" : "";
    input += isFullRange(picture) ? ":rin=full" : ":rin=limited";
    return "zscale=" + input + ":t=linear:npl=" + QByteArray::number(kReferenceWhite) +
           ",format=gbrpf32le,zscale=p=bt709,tonemap=tonemap=mobius:desat=0:peak=" +
           QByteArray::number(peakOf(picture)) +
           ",zscale=t=bt709:m=bt709:r=limited:c=left,format=" +
           (isScreen(target) ? "yuv444p,scale=in_color_matrix=bt709:in_range=limited,format=" +
                                   QByteArray(av_get_pix_fmt_name(target))
                             : QByteArrayLiteral("yuv420p"));
}

} // namespace

FrameFilterGraph::FrameFilterGraph(const VideoFormat &target, AVRational timeBase)
    : m_target(target), m_timeBase(timeBase) {}

bool FrameFilterGraph::isTarget(const AVFrame &picture) const {
    return picture.format == m_target.pixels && picture.width == m_target.size.width() &&
           picture.height == m_target.size.height() && !isHighDynamicRange(picture.color_trc);
}

bool FrameFilterGraph::isSameKind(const AVFrame &picture) const {
    return m_kind && m_kind->format == picture.format && m_kind->width == picture.width &&
           m_kind->height == picture.height && m_kind->color_trc == picture.color_trc &&
           m_kind->color_primaries == picture.color_primaries &&
           m_kind->colorspace == picture.colorspace && m_kind->color_range == picture.color_range;
}

/// Cuts what the even size leaves out, or scales where it is another size.
QByteArray FrameFilterGraph::scaling(const AVFrame &picture) const {
    const QSize size = m_target.size;
    const int columns = picture.width - size.width();
    const int rows = picture.height - size.height();
    const QByteArray measures =
        QByteArray::number(size.width()) + ':' + QByteArray::number(size.height());
    const bool isCut = columns >= 0 && columns < 2 && rows >= 0 && rows < 4;
    return (isCut ? QByteArrayLiteral("crop=") + measures + ":0:0,scale="
                  : "scale=" + measures + ":") +
           "flags=lanczos+accurate_rnd+full_chroma_int";
}

QByteArray FrameFilterGraph::filtersFor(const AVFrame &picture) const {
    QByteArray filters = scaling(picture);
    filters += m_target.isInterlaced() ? ":interl=1" : "";
    if (isHighDynamicRange(picture.color_trc)) {
        return filters + ",format=" + precise(m_target.pixels) + ',' +
               toneMapping(picture, m_target.pixels);
    }
    const AVPixFmtDescriptor *pixels = av_pix_fmt_desc_get(AVPixelFormat(picture.format));
    if (pixels && (pixels->flags & AV_PIX_FMT_FLAG_RGB)) {
        filters += ":out_color_matrix=bt709:out_range=limited";
    } else {
        filters += isFullRange(picture) ? ":in_range=full" : ":in_range=limited";
        filters +=
            m_target.pixels == AV_PIX_FMT_YUVJ420P ? ":out_range=full" : ":out_range=limited";
    }
    return filters + ",format=" + av_get_pix_fmt_name(m_target.pixels);
}

void FrameFilterGraph::build(const AVFrame &picture) {
    m_graph.reset(avfilter_graph_alloc());
    if (!m_graph) {
        throw std::bad_alloc();
    }
    const QByteArray aspect = QByteArray::number(picture.sample_aspect_ratio.num) + '/' +
                              QByteArray::number(std::max(1, picture.sample_aspect_ratio.den));
    const QByteArray source = "video_size=" + QByteArray::number(picture.width) + 'x' +
                              QByteArray::number(picture.height) +
                              ":pix_fmt=" + QByteArray::number(picture.format) +
                              ":time_base=" + QByteArray::number(m_timeBase.num) + '/' +
                              QByteArray::number(m_timeBase.den) + ":pixel_aspect=" + aspect;
    check(avfilter_graph_create_filter(&m_input, avfilter_get_by_name("buffer"), "in",
                                       source.constData(), nullptr, m_graph.get()),
          kConverting);
    check(avfilter_graph_create_filter(&m_output, avfilter_get_by_name("buffersink"), "out",
                                       nullptr, nullptr, m_graph.get()),
          kConverting);
    AVFilterInOut *begin = avfilter_inout_alloc();
    AVFilterInOut *end = avfilter_inout_alloc();
    if (!begin || !end) {
        throw std::bad_alloc();
    }
    *begin = {av_strdup("in"), m_input, 0, nullptr};
    *end = {av_strdup("out"), m_output, 0, nullptr};
    const int result = avfilter_graph_parse_ptr(m_graph.get(), filtersFor(picture).constData(),
                                                &end, &begin, nullptr);
    avfilter_inout_free(&begin);
    avfilter_inout_free(&end);
    check(result, kConverting);
    check(avfilter_graph_config(m_graph.get(), nullptr), kConverting);
    m_kind = makeFrame();
    check(av_frame_copy_props(m_kind.get(), &picture), kConverting);
    m_kind->format = picture.format;
    m_kind->width = picture.width;
    m_kind->height = picture.height;
}

FrameHandle FrameFilterGraph::convert(FrameHandle picture) {
    if (isTarget(*picture)) {
        return picture;
    }
    if (!isSameKind(*picture)) {
        build(*picture);
    }
    check(av_buffersrc_add_frame(m_input, picture.get()), kConverting);
    FrameHandle converted = makeFrame();
    check(av_buffersink_get_frame(m_output, converted.get()), kConverting);
    return converted;
}

ToneMapper::ToneMapper(AVPixelFormat pixels) : m_pixels(pixels) {}

FrameHandle ToneMapper::map(const AVFrame &picture, QSize size) {
    if (!m_conversion || m_size != size) {
        m_conversion.emplace(VideoFormat{.size = size, .pixels = m_pixels}, kContainerTimeBase);
        m_size = size;
    }
    FrameHandle copy = makeFrame();
    check(av_frame_ref(copy.get(), &picture), kConverting);
    copy->pts = 0;
    return m_conversion->convert(std::move(copy));
}

} // namespace corvane::media

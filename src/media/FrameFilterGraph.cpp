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

/// The luminance of diffuse white in high dynamic range, which is mapped to the white of BT.709.
constexpr double kReferenceWhite = 203; // cd/m2, ITU-R BT.2408
constexpr double kDefaultPeak = 1000;   // cd/m2, if the frame doesn't state it

/// The peak luminance of the frame, in multiples of the reference white.
double peakLuminance(const AVFrame &frame) {
    double peak = kDefaultPeak;
    if (const auto *data = av_frame_get_side_data(&frame, AV_FRAME_DATA_CONTENT_LIGHT_LEVEL)) {
        const auto *light = reinterpret_cast<const AVContentLightMetadata *>(data->data);
        peak = light->MaxCLL > 0 ? light->MaxCLL : peak;
    } else if (const auto *display =
                   av_frame_get_side_data(&frame, AV_FRAME_DATA_MASTERING_DISPLAY_METADATA)) {
        const auto *mastering = reinterpret_cast<const AVMasteringDisplayMetadata *>(display->data);
        peak = mastering->has_luminance ? av_q2d(mastering->max_luminance) : peak;
    }
    return std::clamp(peak, 400.0, 10'000.0) / kReferenceWhite;
}

/// True if the frames are displayed, false if they are encoded.
bool isForScreen(AVPixelFormat target) {
    return target == AV_PIX_FMT_RGB24 || target == AV_PIX_FMT_RGB32;
}

/// The pixel formats to tone-map from. Displayed frames may have odd sides, which rule out chroma
/// subsampling.
QByteArray toneMappingFormats(AVPixelFormat target) {
    const QByteArray unsampled = "yuv444p10le|yuv444p12le|gbrp10le|gbrp12le|yuv444p16le";
    return isForScreen(target) ? unsampled
                               : "yuv420p10le|yuv422p10le|yuv420p12le|yuv422p12le|" + unsampled;
}

/// Maps in linear light; properties missing from the frame default to BT.2020. The curve leaves
/// values below white almost unchanged and rolls the highlights off.
QByteArray toneMappingFilters(const AVFrame &frame, AVPixelFormat target) {
    const char *transfer = frame.color_trc == AVCOL_TRC_SMPTE2084 ? "smpte2084" : "arib-std-b67";
    const bool isWideGamut =
        frame.color_primaries == AVCOL_PRI_UNSPECIFIED || frame.color_primaries == AVCOL_PRI_BT2020;
    QByteArray input = QByteArrayLiteral("tin=") + transfer;
    input += isWideGamut ? ":pin=bt2020" : "";
    input += frame.colorspace == AVCOL_SPC_UNSPECIFIED ? ":min=bt2020nc" : "";
    input += isFullRange(frame.color_range, frame.format) ? ":rin=full" : ":rin=limited";
    return "zscale=" + input + ":t=linear:npl=" + QByteArray::number(kReferenceWhite) +
           ",format=gbrpf32le,zscale=p=bt709,tonemap=tonemap=mobius:desat=0:peak=" +
           QByteArray::number(peakLuminance(frame)) +
           ",zscale=t=bt709:m=bt709:r=limited:c=left,format=" +
           (isForScreen(target) ? "yuv444p,scale=in_color_matrix=bt709:in_range=limited,format=" +
                                      QByteArray(av_get_pix_fmt_name(target))
                                : QByteArrayLiteral("yuv420p"));
}

} // namespace

FrameFilterGraph::FrameFilterGraph(const VideoFormat &target, AVRational timeBase)
    : m_target(target), m_timeBase(timeBase) {}

bool FrameFilterGraph::isInTargetFormat(const AVFrame &frame) const {
    return frame.format == m_target.pixels && frame.width == m_target.size.width() &&
           frame.height == m_target.size.height() && !isHighDynamicRange(frame.color_trc);
}

bool FrameFilterGraph::isInSourceFormat(const AVFrame &frame) const {
    return m_sourceFormat && m_sourceFormat->format == frame.format &&
           m_sourceFormat->width == frame.width && m_sourceFormat->height == frame.height &&
           m_sourceFormat->color_trc == frame.color_trc &&
           m_sourceFormat->color_primaries == frame.color_primaries &&
           m_sourceFormat->colorspace == frame.colorspace &&
           m_sourceFormat->color_range == frame.color_range;
}

/// Crops if only the excess of an odd size is to be removed, otherwise scales.
QByteArray FrameFilterGraph::sizeFilter(const AVFrame &frame) const {
    const QSize size = m_target.size;
    const int columns = frame.width - size.width();
    const int rows = frame.height - size.height();
    const QByteArray widthAndHeight =
        QByteArray::number(size.width()) + ':' + QByteArray::number(size.height());
    const bool isCropped = columns >= 0 && columns < 2 && rows >= 0 && rows < 4;
    return (isCropped ? QByteArrayLiteral("crop=") + widthAndHeight + ":0:0,scale="
                      : "scale=" + widthAndHeight + ":") +
           "flags=lanczos+accurate_rnd+full_chroma_int";
}

QByteArray FrameFilterGraph::filtersFor(const AVFrame &frame) const {
    QByteArray filters = sizeFilter(frame);
    filters += m_target.isInterlaced() ? ":interl=1" : "";
    if (isHighDynamicRange(frame.color_trc)) {
        return filters + ",format=" + toneMappingFormats(m_target.pixels) + ',' +
               toneMappingFilters(frame, m_target.pixels);
    }
    const AVPixFmtDescriptor *pixels = av_pix_fmt_desc_get(AVPixelFormat(frame.format));
    if (pixels && (pixels->flags & AV_PIX_FMT_FLAG_RGB)) {
        filters += ":out_color_matrix=bt709:out_range=limited";
    } else {
        filters +=
            isFullRange(frame.color_range, frame.format) ? ":in_range=full" : ":in_range=limited";
        filters +=
            m_target.pixels == AV_PIX_FMT_YUVJ420P ? ":out_range=full" : ":out_range=limited";
    }
    return filters + ",format=" + av_get_pix_fmt_name(m_target.pixels);
}

void FrameFilterGraph::build(const AVFrame &frame) {
    m_sourceFormat.reset(); // so that a failure leaves no graph to use
    m_graph.reset(allocated(avfilter_graph_alloc()));
    const QByteArray aspect = QByteArray::number(frame.sample_aspect_ratio.num) + '/' +
                              QByteArray::number(std::max(1, frame.sample_aspect_ratio.den));
    const QByteArray source = "video_size=" + QByteArray::number(frame.width) + 'x' +
                              QByteArray::number(frame.height) +
                              ":pix_fmt=" + QByteArray::number(frame.format) +
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
    const int result = avfilter_graph_parse_ptr(m_graph.get(), filtersFor(frame).constData(), &end,
                                                &begin, nullptr);
    avfilter_inout_free(&begin);
    avfilter_inout_free(&end);
    check(result, kConverting);
    check(avfilter_graph_config(m_graph.get(), nullptr), kConverting);
    FrameHandle format = makeFrame();
    check(av_frame_copy_props(format.get(), &frame), kConverting);
    format->format = frame.format;
    format->width = frame.width;
    format->height = frame.height;
    m_sourceFormat = std::move(format);
}

FrameHandle FrameFilterGraph::convert(FrameHandle frame) {
    if (isInTargetFormat(*frame)) {
        return frame;
    }
    if (!isInSourceFormat(*frame)) {
        build(*frame);
    }
    check(av_buffersrc_add_frame(m_input, frame.get()), kConverting);
    FrameHandle converted = makeFrame();
    check(av_buffersink_get_frame(m_output, converted.get()), kConverting);
    return converted;
}

FrameHandle ToneMapper::map(const AVFrame &frame, QSize size) {
    if (!m_graph || m_size != size) {
        m_graph.emplace(VideoFormat{.size = size, .pixels = m_pixels}, kContainerTimeBase);
        m_size = size;
    }
    FrameHandle copy = makeFrame();
    check(av_frame_ref(copy.get(), &frame), kConverting);
    copy->pts = 0;
    return m_graph->convert(std::move(copy));
}

} // namespace corvane::media

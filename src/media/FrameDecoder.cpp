#include "media/FrameDecoder.h"

#include "media/MediaInput.h"

#include <algorithm>
#include <new>
#include <thread>

namespace corvane::media {

namespace {

/// A picture of 16,384 by 6,144 is let through; what claims more is taken for a lie.
constexpr qint64 kMostPixels = qint64(100) << 20;
constexpr int kMostThreads = 8;
/// So many points of a picture become one of a still in each direction, or more.
constexpr int kMuchReduced = 4;

bool isIntraOnly(const AVCodecParameters &codec) {
    const AVCodecDescriptor *descriptor = avcodec_descriptor_get(codec.codec_id);
    return descriptor && (descriptor->props & AV_CODEC_PROP_INTRA_ONLY) != 0;
}

/// Smoothing the borders of blocks is a good part of the work. What is missing adds up from picture
/// to picture, but isn't seen on a small still: see docs/performance.md.
bool isMuchReduced(const AVCodecParameters &codec, QSize reducedSize) {
    const int longest = std::max(reducedSize.width(), reducedSize.height());
    return !reducedSize.isEmpty() && std::max(codec.width, codec.height) / kMuchReduced >= longest;
}

bool isWhole(const AVFrame &frame) {
    return (frame.flags & (AV_FRAME_FLAG_CORRUPT | AV_FRAME_FLAG_DISCARD)) == 0 &&
           frame.decode_error_flags == 0;
}

} // namespace

FrameDecoder::FrameDecoder(const AVStream &stream, const VideoReader::Options &options)
    : m_stream(stream) {
    const AVCodec *decoder = avcodec_find_decoder(stream.codecpar->codec_id);
    if (!decoder) {
        throw MediaError(QStringLiteral("There is no decoder for its codec."));
    }
    m_codec.reset(avcodec_alloc_context3(decoder));
    if (!m_codec) {
        throw std::bad_alloc();
    }
    check(avcodec_parameters_to_context(m_codec.get(), stream.codecpar),
          "Cannot set up the decoder");
    // One more than cores: a thread with a picture to skip is free at once, and waits for its turn.
    const int busy = std::max(int(std::thread::hardware_concurrency()), 1) + 1;
    m_codec->pkt_timebase = stream.time_base;
    m_codec->max_pixels = kMostPixels;
    m_codec->thread_count = std::min(options.threads > 0 ? options.threads : busy, kMostThreads);
    m_codec->thread_type = options.isSingleFrameRead && isIntraOnly(*stream.codecpar)
                               ? FF_THREAD_SLICE
                               : FF_THREAD_FRAME | FF_THREAD_SLICE;
    if (isMuchReduced(*stream.codecpar, options.reducedSize)) {
        m_codec->skip_loop_filter = AVDISCARD_ALL;
    }
    check(avcodec_open2(m_codec.get(), decoder, nullptr), "Cannot open the decoder");
    if (const AVRational rate = nominalRate(stream); rate.num > 0) {
        m_nominalDuration = av_rescale_q(1, av_inv_q(rate), stream.time_base);
    }
}

void FrameDecoder::send(const AVPacket *packet, bool skipsUnreferenced) {
    m_codec->skip_frame = skipsUnreferenced ? AVDISCARD_NONREF : AVDISCARD_DEFAULT;
    if (packet) {
        m_untimed.note(*packet);
    }
    (void)avcodec_send_packet(m_codec.get(), packet); // all pictures were taken, so it isn't full
}

std::optional<FrameDecoder::Decoded> FrameDecoder::receive() {
    for (;;) {
        const int result = avcodec_receive_frame(m_codec.get(), m_frame.get());
        if (result == AVERROR_EOF) {
            m_isDrained = true;
            return std::nullopt;
        }
        if (result == AVERROR(EAGAIN)) {
            return std::nullopt;
        }
        if (result < 0) { // a damaged picture; a frame thread may hold others
            continue;
        }
        const qint64 time = timeOf(*m_frame);
        const qint64 duration =
            m_frame->pkt_duration > 0 ? m_frame->pkt_duration : m_nominalDuration;
        m_nextTime = time + duration;
        if (isWhole(*m_frame)) {
            m_frame->sample_aspect_ratio = av_guess_sample_aspect_ratio(
                nullptr, const_cast<AVStream *>(&m_stream), m_frame.get());
            FrameHandle picture = std::exchange(m_frame, makeFrame());
            return Decoded{std::shared_ptr<const AVFrame>(std::move(picture)), time, duration};
        }
        av_frame_unref(m_frame.get());
    }
}

qint64 FrameDecoder::timeOf(const AVFrame &frame) {
    const qint64 first = m_stream.start_time == AV_NOPTS_VALUE ? 0 : m_stream.start_time;
    return m_untimed.timeOf(frame).value_or(m_nextTime.value_or(first));
}

void FrameDecoder::flush() {
    avcodec_flush_buffers(m_codec.get());
    m_untimed.clear();
    m_nextTime.reset();
    m_isDrained = false;
}

} // namespace corvane::media

#include "media/FrameDecoder.h"

#include "media/FFmpegCodec.h"
#include "media/MediaInput.h"

#include <algorithm>
#include <thread>

namespace corvane::media {

namespace {

/// Enough for 16,384 by 6,144. Larger frames count as damaged.
constexpr qint64 kMaxPixels = qint64(100) << 20;
constexpr int kMaxThreads = 8;
constexpr int kLargeReduction = 4; ///< in each dimension
constexpr char kSettingUp[] = "Cannot set up the decoder";

bool isIntraOnly(const AVCodecParameters &codec) {
    const AVCodecDescriptor *descriptor = avcodec_descriptor_get(codec.codec_id);
    return descriptor && (descriptor->props & AV_CODEC_PROP_INTRA_ONLY) != 0;
}

/// Whether the loop filter can be left out, which is a large part of decoding. The error
/// accumulates from frame to frame but is invisible on a small still: see docs/performance.md.
bool isLargeReduction(const AVCodecParameters &codec, QSize reducedSize) {
    const int longest = std::max(reducedSize.width(), reducedSize.height());
    return !reducedSize.isEmpty() &&
           std::max(codec.width, codec.height) / kLargeReduction >= longest;
}

bool isUndamaged(const AVFrame &frame) {
    return (frame.flags & (AV_FRAME_FLAG_CORRUPT | AV_FRAME_FLAG_DISCARD)) == 0 &&
           frame.decode_error_flags == 0;
}

} // namespace

FrameDecoder::FrameDecoder(const AVStream &stream, const Options &options) : m_stream(stream) {
    const AVCodec *decoder = avcodec_find_decoder(stream.codecpar->codec_id);
    if (!decoder) {
        throw MediaError(QStringLiteral("There is no decoder for its codec."));
    }
    m_codec = makeDecoder(stream, kSettingUp);
    // One more than the number of cores, because a thread with a skipped frame only waits its turn.
    const int threads = std::max(int(std::thread::hardware_concurrency()), 1) + 1;
    m_codec->max_pixels = kMaxPixels;
    m_codec->thread_count = std::min(options.threads > 0 ? options.threads : threads, kMaxThreads);
    m_codec->thread_type = options.isSingleFrameRead && isIntraOnly(*stream.codecpar)
                               ? FF_THREAD_SLICE
                               : FF_THREAD_FRAME | FF_THREAD_SLICE;
    if (isLargeReduction(*stream.codecpar, options.reducedSize)) {
        m_codec->skip_loop_filter = AVDISCARD_ALL;
    }
    check(avcodec_open2(m_codec.get(), decoder, nullptr), "Cannot open the decoder");
    if (const AVRational rate = nominalRate(stream); rate.num > 0) {
        m_nominalDuration = av_rescale_q(1, av_inv_q(rate), stream.time_base);
    }
}

void FrameDecoder::send(const AVPacket *packet, bool shouldSkipNonReference) {
    m_codec->skip_frame = shouldSkipNonReference ? AVDISCARD_NONREF : AVDISCARD_DEFAULT;
    if (packet) {
        m_pts.addPacket(*packet);
    }
    const int result = avcodec_send_packet(m_codec.get(), packet);
    // All other codes are faults of this packet, such as AVERROR_INVALIDDATA for damage and
    // AVERROR(ENOMEM) for a frame beyond the limits. It is skipped.
    check(result == AVERROR(EAGAIN) ? result : 0, "Cannot decode the previous packet");
}

std::optional<DecodedFrame> FrameDecoder::receive() {
    for (;;) {
        const int result = avcodec_receive_frame(m_codec.get(), m_frame.get());
        if (result == AVERROR_EOF) {
            m_isDrained = true;
            return std::nullopt;
        }
        if (result == AVERROR(EAGAIN)) {
            return std::nullopt;
        }
        if (result < 0) { // a damaged frame; other frame threads may hold undamaged ones
            continue;
        }
        const qint64 time = timeOf(*m_frame);
        const qint64 duration =
            m_frame->pkt_duration > 0 ? m_frame->pkt_duration : m_nominalDuration;
        m_nextTime = time + duration;
        if (isUndamaged(*m_frame)) {
            m_frame->sample_aspect_ratio = av_guess_sample_aspect_ratio(
                nullptr, const_cast<AVStream *>(&m_stream), m_frame.get());
            FrameHandle frame = std::exchange(m_frame, makeFrame());
            return DecodedFrame{std::shared_ptr<const AVFrame>(std::move(frame)), time, duration};
        }
        av_frame_unref(m_frame.get());
    }
}

qint64 FrameDecoder::timeOf(const AVFrame &frame) {
    const qint64 first = m_stream.start_time == AV_NOPTS_VALUE ? 0 : m_stream.start_time;
    return m_pts.ptsOf(frame).value_or(m_nextTime.value_or(first));
}

void FrameDecoder::flush() {
    avcodec_flush_buffers(m_codec.get());
    m_pts.clear();
    m_nextTime.reset();
    m_isDrained = false;
}

} // namespace corvane::media

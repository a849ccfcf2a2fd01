#include "media/AudioTranscoder.h"

#include "media/FFmpegCodec.h"
#include "media/SourceMetadata.h"

#include <algorithm>

namespace corvane::media {

namespace {

constexpr char kDecodingAudio[] = "The sound can't be decoded";
constexpr char kEncodingAudio[] = "The sound can't be encoded";

/// Bits per second; 256 kbit/s for stereo.
constexpr int64_t kBitRatePerChannel = 128'000;
/// Some containers round timestamps to milliseconds. Only larger deviations are gaps.
constexpr int kMinGapFraction = 50;      ///< of a second
constexpr int64_t kMaxGapSeconds = 3600; ///< a longer gap is a damaged timestamp
constexpr int kSilenceSamples = 4096;

/// The source's sample rate if AAC supports it, else the next one that loses nothing audible.
int rateFor(const AVCodec &encoder, int rate) {
    for (const int *own = encoder.supported_samplerates; own && *own; ++own) {
        if (*own == rate) {
            return rate;
        }
    }
    return rate > 48'000 ? 96'000 : 48'000;
}

/// Players support five channels only with the surround channels at the back.
bool isSideSurround(const AVChannelLayout &layout) {
    return layout.order == AV_CHANNEL_ORDER_NATIVE &&
           (layout.u.mask == AV_CH_LAYOUT_5POINT0 || layout.u.mask == AV_CH_LAYOUT_5POINT1);
}

} // namespace

AudioTranscoder::AudioTranscoder(const ExportSource &source, int stream, int firstChannel,
                                 const ExportCut &cut, OutputFile &output)
    : m_cut(cut),
      m_output(output),
      m_source(source),
      m_timeBase(source.stream(stream).time_base),
      m_origin(ticksOf(cut.origin, m_timeBase)),
      m_decoder(makeDecoder(source.stream(stream), kDecodingAudio)),
      m_resampler(firstChannel, source.stream(stream).codecpar->ch_layout.nb_channels) {
    openDecoder();
    openEncoder(std::min(kMaxChannels, m_decoder->ch_layout.nb_channels - firstChannel));
    m_resampler.setTarget(*m_encoder);
    m_stream = &output.addStream(m_encoder->time_base);
    check(avcodec_parameters_from_context(m_stream->codecpar, m_encoder.get()), kEncodingAudio);
    sourceMetadata::copyStream(source.stream(stream), *m_stream);
}

void AudioTranscoder::openDecoder() {
    check(avcodec_open2(m_decoder.get(), nullptr, nullptr), kDecodingAudio);
    m_rate = m_decoder->sample_rate;
    if (m_rate <= 0 || m_decoder->ch_layout.nb_channels <= 0) {
        check(AVERROR_INVALIDDATA, kDecodingAudio);
    }
}

void AudioTranscoder::openEncoder(int channels) {
    AVChannelLayout standard = {};
    av_channel_layout_default(&standard, channels);
    const AVChannelLayout &own = m_decoder->ch_layout;
    const bool isSupported =
        own.order == AV_CHANNEL_ORDER_NATIVE && own.nb_channels == channels && !isSideSurround(own);
    if (!(isSupported && tryEncoder(own)) && !tryEncoder(standard)) {
        check(AVERROR(EINVAL), kEncodingAudio);
    }
}

/// Returns false if the encoder doesn't support the layout.
bool AudioTranscoder::tryEncoder(const AVChannelLayout &layout) {
    const AVCodec *codec = avcodec_find_encoder(AV_CODEC_ID_AAC);
    check(codec ? 0 : AVERROR_ENCODER_NOT_FOUND, kEncodingAudio);
    m_encoder = makeCodecContext(*codec);
    check(av_channel_layout_copy(&m_encoder->ch_layout, &layout), kEncodingAudio);
    m_encoder->sample_fmt = AV_SAMPLE_FMT_FLTP;
    m_encoder->sample_rate = rateFor(*codec, m_rate);
    m_encoder->time_base = {1, m_encoder->sample_rate};
    m_encoder->bit_rate =
        std::min<int64_t>(kBitRatePerChannel, m_encoder->sample_rate * int64_t(5)) *
        layout.nb_channels;
    m_encoder->flags |= AV_CODEC_FLAG_GLOBAL_HEADER;
    const int result = avcodec_open2(m_encoder.get(), codec, nullptr);
    return result >= 0; // AVERROR(EINVAL) or AVERROR_PATCHWELCOME for an unsupported layout
}

void AudioTranscoder::take(AVPacket &packet) {
    if (!m_isDone) {
        sendPacket(*m_decoder, &packet, kDecodingAudio); // a skipped packet becomes silence
        receiveFrames();
    }
}

void AudioTranscoder::receiveFrames() {
    const FrameHandle frame = makeFrame();
    while (!m_isDone && receiveFrame(*m_decoder, *frame, kDecodingAudio)) {
        if (frame->sample_rate > 0 && frame->nb_samples > 0) {
            process(*frame);
        }
    }
}

void AudioTranscoder::changeRate(int rate) {
    m_position = av_rescale(m_position, rate, m_rate);
    m_rate = rate;
}

/// Adds the frame's samples at their time in the cut, after silence if there is a gap.
void AudioTranscoder::process(AVFrame &frame) {
    if (frame.sample_rate != m_rate) {
        changeRate(frame.sample_rate);
    }
    const int64_t timestamp = frame.best_effort_timestamp;
    const int64_t begin = timestamp == AV_NOPTS_VALUE
                              ? m_position
                              : av_rescale_q(timestamp - m_origin, m_timeBase, {1, m_rate});
    const bool isFirst = m_position == 0;
    if (begin + frame.nb_samples <= 0 && isFirst) {
        return;
    }
    const int64_t gap = begin - m_position;
    const bool isDamaged = !m_cut.audioEnd && gap > kMaxGapSeconds * m_rate;
    const bool isGap = !isDamaged && (isFirst || std::abs(gap) > m_rate / kMinGapFraction);
    addSilence(isGap ? gap : 0, frame);
    addSamples(frame, isGap ? std::clamp<int64_t>(-gap, 0, frame.nb_samples) : 0);
    encodeQueued(false);
}

void AudioTranscoder::addSilence(int64_t samples, const AVFrame &format) {
    if (samples <= 0) {
        return;
    }
    const FrameHandle silence = makeFrame();
    silence->format = format.format;
    silence->sample_rate = format.sample_rate;
    silence->nb_samples = kSilenceSamples;
    check(av_channel_layout_copy(&silence->ch_layout, &format.ch_layout), kEncodingAudio);
    check(av_frame_get_buffer(silence.get(), 0), kEncodingAudio);
    check(av_samples_set_silence(silence->extended_data, 0, kSilenceSamples,
                                 format.ch_layout.nb_channels, AVSampleFormat(format.format)),
          kEncodingAudio);
    for (; samples > 0 && !m_isDone; samples -= kSilenceSamples) {
        m_source.throwIfStopped();
        addSamples(*silence, std::max<int64_t>(0, kSilenceSamples - samples));
        encodeQueued(false);
    }
}

/// Adds the samples after the first `skipped` ones, up to the end of the cut.
void AudioTranscoder::addSamples(const AVFrame &frame, int64_t skipped) {
    int64_t count = frame.nb_samples - skipped;
    if (m_cut.audioEnd) {
        const int64_t end = ticksOf(*m_cut.audioEnd - m_cut.origin, {1, m_rate});
        m_isDone = m_position + count >= end;
        count = std::min(count, end - m_position);
    }
    if (count > 0) {
        m_resampler.add(frame, skipped, count);
        m_position += count;
    }
}

/// Encodes the queued samples in full frames, and the rest if `isLast`.
void AudioTranscoder::encodeQueued(bool isLast) {
    const int size = m_encoder->frame_size;
    while (m_resampler.queued() >= (isLast ? 1 : size)) {
        const FrameHandle frame = m_resampler.take(std::min(size, m_resampler.queued()));
        frame->pts = m_encoded;
        m_encoded += frame->nb_samples;
        check(avcodec_send_frame(m_encoder.get(), frame.get()), kEncodingAudio);
        writePackets();
    }
}

void AudioTranscoder::writePackets() {
    const PacketHandle packet = makePacket();
    while (receivePacket(*m_encoder, *packet, kEncodingAudio)) {
        m_output.write(*packet, *m_stream);
    }
}

void AudioTranscoder::finish() {
    if (!m_isDone) {
        sendPacket(*m_decoder, nullptr, kDecodingAudio);
        receiveFrames();
    }
    m_isDone = true;
    m_resampler.flush();
    encodeQueued(true);
    if (m_encoded > 0) {
        check(avcodec_send_frame(m_encoder.get(), nullptr), kEncodingAudio);
        writePackets();
    }
}

} // namespace corvane::media

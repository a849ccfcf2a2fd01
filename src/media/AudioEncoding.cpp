#include "media/AudioEncoding.h"

#include "media/SourceMetadata.h"

#include <algorithm>

namespace corvane::media {

namespace {

constexpr char kDecodingSound[] = "The sound can't be decoded";
constexpr char kEncodingSound[] = "The sound can't be encoded";

/// 256 kbit/s for two channels.
constexpr int64_t kBitsOfChannel = 128'000;
/// Timestamps are rounded, in some formats to milliseconds; only what is further off is a gap.
constexpr int kToleratedGap = 50;     // of a second's parts
constexpr int64_t kLongestGap = 3600; // seconds; a longer one is a damaged timestamp
constexpr int kSilenceStep = 4096;

/// The source's own rate where AAC knows it, else the next one that loses nothing that is heard.
int rateFor(const AVCodec &encoder, int rate) {
    for (const int *known = encoder.supported_samplerates; known && *known; ++known) {
        if (*known == rate) {
            return rate;
        }
    }
    return rate > 48'000 ? 96'000 : 48'000;
}

/// Players know the surrounds of five channels only as those at the back.
bool isSideSurround(const AVChannelLayout &layout) {
    return layout.order == AV_CHANNEL_ORDER_NATIVE &&
           (layout.u.mask == AV_CH_LAYOUT_5POINT0 || layout.u.mask == AV_CH_LAYOUT_5POINT1);
}

} // namespace

AudioEncoding::AudioEncoding(const ExportSource &source, int stream, int firstChannel,
                             const ExportCut &cut, OutputFile &output)
    : m_cut(cut),
      m_output(output),
      m_source(source),
      m_timeBase(source.stream(stream).time_base),
      m_shift(ticksOf(cut.zero, m_timeBase)),
      m_conversion(firstChannel, source.stream(stream).codecpar->ch_layout.nb_channels) {
    const AVStream &from = source.stream(stream);
    openDecoder(from);
    openEncoder(std::min(kMostChannels, m_decoder->ch_layout.nb_channels - firstChannel));
    m_conversion.setTarget(*m_encoder);
    m_stream = &output.addStream(m_encoder->time_base);
    check(avcodec_parameters_from_context(m_stream->codecpar, m_encoder.get()), kEncodingSound);
    sourceMetadata::copyStream(from, *m_stream);
}

void AudioEncoding::openDecoder(const AVStream &stream) {
    const AVCodec *codec = avcodec_find_decoder(stream.codecpar->codec_id);
    m_decoder.reset(codec ? avcodec_alloc_context3(codec) : nullptr);
    check(codec ? 0 : AVERROR_DECODER_NOT_FOUND, kDecodingSound);
    check(avcodec_parameters_to_context(m_decoder.get(), stream.codecpar), kDecodingSound);
    m_decoder->pkt_timebase = stream.time_base;
    check(avcodec_open2(m_decoder.get(), codec, nullptr), kDecodingSound);
    m_rate = m_decoder->sample_rate;
    if (m_rate <= 0 || m_decoder->ch_layout.nb_channels <= 0) {
        check(AVERROR_INVALIDDATA, kDecodingSound);
    }
}

void AudioEncoding::openEncoder(int channels) {
    AVChannelLayout usual = {};
    av_channel_layout_default(&usual, channels);
    const AVChannelLayout &own = m_decoder->ch_layout;
    const bool keepsOwn =
        own.order == AV_CHANNEL_ORDER_NATIVE && own.nb_channels == channels && !isSideSurround(own);
    if (!(keepsOwn && tryEncoder(own)) && !tryEncoder(usual)) {
        check(AVERROR(EINVAL), kEncodingSound);
    }
}

bool AudioEncoding::tryEncoder(const AVChannelLayout &layout) {
    const AVCodec *codec = avcodec_find_encoder(AV_CODEC_ID_AAC);
    check(codec ? 0 : AVERROR_ENCODER_NOT_FOUND, kEncodingSound);
    m_encoder.reset(avcodec_alloc_context3(codec));
    check(av_channel_layout_copy(&m_encoder->ch_layout, &layout), kEncodingSound);
    m_encoder->sample_fmt = AV_SAMPLE_FMT_FLTP;
    m_encoder->sample_rate = rateFor(*codec, m_rate);
    m_encoder->time_base = {1, m_encoder->sample_rate};
    m_encoder->bit_rate =
        std::min<int64_t>(kBitsOfChannel, m_encoder->sample_rate * int64_t(5)) * layout.nb_channels;
    m_encoder->flags |= AV_CODEC_FLAG_GLOBAL_HEADER;
    return avcodec_open2(m_encoder.get(), codec, nullptr) >= 0;
}

void AudioEncoding::take(AVPacket &packet) {
    if (m_isDone) {
        return;
    }
    if (avcodec_send_packet(m_decoder.get(), &packet) == AVERROR(ENOMEM)) {
        throw std::bad_alloc();
    }
    receiveSound(); // what a damaged packet held becomes silence
}

void AudioEncoding::receiveSound() {
    const FrameHandle sound = makeFrame();
    while (!m_isDone) {
        const int result = avcodec_receive_frame(m_decoder.get(), sound.get());
        if (result == AVERROR(EAGAIN) || result == AVERROR_EOF) {
            return;
        }
        if (result >= 0 && sound->sample_rate > 0 && sound->nb_samples > 0) {
            place(*sound);
        } else if (result < 0 && result != AVERROR_INVALIDDATA) {
            check(result, kDecodingSound);
        }
    }
}

void AudioEncoding::followRate(int rate) {
    m_position = av_rescale(m_position, rate, m_rate);
    m_rate = rate;
}

void AudioEncoding::place(AVFrame &sound) {
    if (sound.sample_rate != m_rate) {
        followRate(sound.sample_rate);
    }
    const int64_t told = sound.best_effort_timestamp;
    const int64_t begin =
        told == AV_NOPTS_VALUE ? m_position : av_rescale_q(told - m_shift, m_timeBase, {1, m_rate});
    const bool isFirst = m_position == 0;
    if (begin + sound.nb_samples <= 0 && isFirst) {
        return;
    }
    const int64_t gap = begin - m_position;
    const bool isDamaged = !m_cut.out && gap > kLongestGap * m_rate;
    const bool isGap = !isDamaged && (isFirst || std::abs(gap) > m_rate / kToleratedGap);
    addSilence(isGap ? gap : 0, sound);
    addSound(sound, isGap ? std::clamp<int64_t>(-gap, 0, sound.nb_samples) : 0);
    encodeReady(false);
}

void AudioEncoding::addSilence(int64_t samples, const AVFrame &like) {
    if (samples <= 0) {
        return;
    }
    const FrameHandle silence = makeFrame();
    silence->format = like.format;
    silence->sample_rate = like.sample_rate;
    silence->nb_samples = kSilenceStep;
    check(av_channel_layout_copy(&silence->ch_layout, &like.ch_layout), kEncodingSound);
    check(av_frame_get_buffer(silence.get(), 0), kEncodingSound);
    check(av_samples_set_silence(silence->extended_data, 0, kSilenceStep,
                                 like.ch_layout.nb_channels, AVSampleFormat(like.format)),
          kEncodingSound);
    for (; samples > 0 && !m_isDone; samples -= kSilenceStep) {
        m_source.testStop();
        addSound(*silence, std::max<int64_t>(0, kSilenceStep - samples));
        encodeReady(false);
    }
}

/// Adds the frame from its `skipped`th sample to the cut's end.
void AudioEncoding::addSound(const AVFrame &sound, int64_t skipped) {
    int64_t count = sound.nb_samples - skipped;
    if (m_cut.out) {
        const int64_t end = ticksOf(*m_cut.out - m_cut.zero, {1, m_rate});
        m_isDone = m_position + count >= end;
        count = std::min(count, end - m_position);
    }
    if (count > 0) {
        m_conversion.add(sound, skipped, count);
        m_position += count;
    }
}

void AudioEncoding::encodeReady(bool isLast) {
    const int size = m_encoder->frame_size;
    while (m_conversion.queued() >= (isLast ? 1 : size)) {
        const FrameHandle sound = m_conversion.take(std::min(size, m_conversion.queued()));
        sound->pts = m_encoded;
        m_encoded += sound->nb_samples;
        check(avcodec_send_frame(m_encoder.get(), sound.get()), kEncodingSound);
        writePackets();
    }
}

void AudioEncoding::writePackets() {
    const PacketHandle packet = makePacket();
    for (;;) {
        const int result = avcodec_receive_packet(m_encoder.get(), packet.get());
        if (result == AVERROR(EAGAIN) || result == AVERROR_EOF) {
            return;
        }
        check(result, kEncodingSound);
        m_output.write(*packet, *m_stream);
    }
}

void AudioEncoding::finish() {
    if (!m_isDone) {
        avcodec_send_packet(m_decoder.get(), nullptr);
        receiveSound();
    }
    m_isDone = true;
    m_conversion.flush();
    encodeReady(true);
    if (m_encoded > 0) {
        check(avcodec_send_frame(m_encoder.get(), nullptr), kEncodingSound);
        writePackets();
    }
}

} // namespace corvane::media

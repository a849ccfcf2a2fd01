#include "media/AudioConversion.h"

#include <vector>

namespace corvane::media {

namespace {

constexpr char kConvertingSound[] = "The sound can't be converted";

} // namespace

AudioConversion::AudioConversion(int firstChannel, int sourceChannels)
    : m_firstChannel(firstChannel), m_sourceChannels(sourceChannels) {}

AudioConversion::~AudioConversion() = default;

void AudioConversion::setTarget(const AVCodecContext &encoder) {
    m_target = &encoder;
    m_queue.reset(av_audio_fifo_alloc(encoder.sample_fmt, encoder.ch_layout.nb_channels, 4096));
    if (!m_queue) {
        throw std::bad_alloc();
    }
}

bool AudioConversion::isSameKind(const AVFrame &sound) const {
    return m_kind && m_kind->format == sound.format && m_kind->sample_rate == sound.sample_rate &&
           av_channel_layout_compare(&m_kind->ch_layout, &sound.ch_layout) == 0;
}

void AudioConversion::build(const AVFrame &sound) {
    flush();
    AVChannelLayout target = {}; // the resampler takes no const one
    check(av_channel_layout_copy(&target, &m_target->ch_layout), kConvertingSound);
    AVChannelLayout from = {};
    if (sound.ch_layout.order == AV_CHANNEL_ORDER_NATIVE) {
        check(av_channel_layout_copy(&from, &sound.ch_layout), kConvertingSound);
    } else {
        av_channel_layout_default(&from, sound.ch_layout.nb_channels);
    }
    SwrContext *raw = nullptr;
    const int result =
        swr_alloc_set_opts2(&raw, &target, m_target->sample_fmt, m_target->sample_rate, &from,
                            AVSampleFormat(sound.format), sound.sample_rate, 0, nullptr);
    m_resampler.reset(raw);
    check(result, kConvertingSound);
    const int channels = target.nb_channels;
    av_channel_layout_uninit(&from);
    av_channel_layout_uninit(&target);
    if (m_sourceChannels > channels) {
        pickChannels(*raw, channels, sound.ch_layout.nb_channels);
    }
    check(swr_init(raw), kConvertingSound);
    m_kind = makeFrame();
    m_kind->format = sound.format;
    m_kind->sample_rate = sound.sample_rate;
    check(av_channel_layout_copy(&m_kind->ch_layout, &sound.ch_layout), kConvertingSound);
}

/// A part of the channels, each as it is, instead of a mix of all.
void AudioConversion::pickChannels(SwrContext &resampler, int count, int sourceCount) const {
    std::vector<double> matrix(size_t(count) * sourceCount, 0.0);
    for (int i = 0; i < count && m_firstChannel + i < sourceCount; ++i) {
        matrix[size_t(i) * sourceCount + m_firstChannel + i] = 1;
    }
    check(swr_set_matrix(&resampler, matrix.data(), sourceCount), kConvertingSound);
}

void AudioConversion::add(const AVFrame &sound, int64_t skipped, int64_t count) {
    if (!isSameKind(sound)) {
        build(sound);
    }
    const auto format = AVSampleFormat(sound.format);
    const bool isPlanar = av_sample_fmt_is_planar(format);
    const int planes = isPlanar ? sound.ch_layout.nb_channels : 1;
    const int step = av_get_bytes_per_sample(format) * (isPlanar ? 1 : sound.ch_layout.nb_channels);
    std::vector<const uint8_t *> data;
    data.reserve(size_t(planes));
    for (int i = 0; i < planes; ++i) {
        data.push_back(sound.extended_data[i] + skipped * step);
    }
    convert(data.data(), int(count));
}

void AudioConversion::convert(const uint8_t **data, int count) {
    const int most = swr_get_out_samples(m_resampler.get(), count);
    if (most <= 0) {
        return;
    }
    const FrameHandle converted = makeFrame();
    converted->format = m_target->sample_fmt;
    converted->nb_samples = most;
    check(av_channel_layout_copy(&converted->ch_layout, &m_target->ch_layout), kConvertingSound);
    check(av_frame_get_buffer(converted.get(), 0), kConvertingSound);
    const int made =
        check(swr_convert(m_resampler.get(), converted->extended_data, most, data, count),
              kConvertingSound);
    check(av_audio_fifo_write(m_queue.get(), reinterpret_cast<void **>(converted->extended_data),
                              made),
          kConvertingSound);
}

void AudioConversion::flush() {
    if (m_resampler) {
        convert(nullptr, 0);
    }
}

FrameHandle AudioConversion::take(int samples) {
    FrameHandle sound = makeFrame();
    sound->format = m_target->sample_fmt;
    sound->sample_rate = m_target->sample_rate;
    sound->nb_samples = samples;
    check(av_channel_layout_copy(&sound->ch_layout, &m_target->ch_layout), kConvertingSound);
    check(av_frame_get_buffer(sound.get(), 0), kConvertingSound);
    check(
        av_audio_fifo_read(m_queue.get(), reinterpret_cast<void **>(sound->extended_data), samples),
        kConvertingSound);
    return sound;
}

} // namespace corvane::media

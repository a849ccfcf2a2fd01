#include "media/AudioResampler.h"

#include <vector>

namespace corvane::media {

namespace {

constexpr char kConvertingAudio[] = "The sound can't be converted";

} // namespace

AudioResampler::AudioResampler(int firstChannel, int sourceChannels)
    : m_firstChannel(firstChannel), m_sourceChannels(sourceChannels) {}

AudioResampler::~AudioResampler() = default;

void AudioResampler::setTarget(const AVCodecContext &encoder) {
    m_target = &encoder;
    m_queue.reset(
        allocated(av_audio_fifo_alloc(encoder.sample_fmt, encoder.ch_layout.nb_channels, 4096)));
}

bool AudioResampler::isSameFormat(const AVFrame &frame) const {
    return m_format && m_format->format == frame.format &&
           m_format->sample_rate == frame.sample_rate &&
           av_channel_layout_compare(&m_format->ch_layout, &frame.ch_layout) == 0;
}

void AudioResampler::configure(const AVFrame &frame) {
    flush();
    AVChannelLayout target = {}; // a copy, because the resampler takes no const layout
    check(av_channel_layout_copy(&target, &m_target->ch_layout), kConvertingAudio);
    AVChannelLayout from = {};
    if (frame.ch_layout.order == AV_CHANNEL_ORDER_NATIVE) {
        check(av_channel_layout_copy(&from, &frame.ch_layout), kConvertingAudio);
    } else {
        av_channel_layout_default(&from, frame.ch_layout.nb_channels);
    }
    SwrContext *raw = nullptr;
    const int result =
        swr_alloc_set_opts2(&raw, &target, m_target->sample_fmt, m_target->sample_rate, &from,
                            AVSampleFormat(frame.format), frame.sample_rate, 0, nullptr);
    m_resampler.reset(raw);
    check(result, kConvertingAudio);
    const int channels = target.nb_channels;
    av_channel_layout_uninit(&from);
    av_channel_layout_uninit(&target);
    if (m_sourceChannels > channels) {
        selectChannels(*raw, channels, frame.ch_layout.nb_channels);
    }
    check(swr_init(raw), kConvertingAudio);
    m_format = makeFrame();
    m_format->format = frame.format;
    m_format->sample_rate = frame.sample_rate;
    check(av_channel_layout_copy(&m_format->ch_layout, &frame.ch_layout), kConvertingAudio);
}

/// Copies channels instead of mixing all of them.
void AudioResampler::selectChannels(SwrContext &resampler, int count, int sourceCount) const {
    std::vector<double> matrix(size_t(count) * sourceCount, 0.0);
    for (int i = 0; i < count && m_firstChannel + i < sourceCount; ++i) {
        matrix[size_t(i) * sourceCount + m_firstChannel + i] = 1;
    }
    check(swr_set_matrix(&resampler, matrix.data(), sourceCount), kConvertingAudio);
}

void AudioResampler::add(const AVFrame &frame, int64_t skipped, int64_t count) {
    if (!isSameFormat(frame)) {
        configure(frame);
    }
    const auto format = AVSampleFormat(frame.format);
    const bool isPlanar = av_sample_fmt_is_planar(format);
    const int planes = isPlanar ? frame.ch_layout.nb_channels : 1;
    const int step = av_get_bytes_per_sample(format) * (isPlanar ? 1 : frame.ch_layout.nb_channels);
    std::vector<const uint8_t *> data;
    data.reserve(size_t(planes));
    for (int i = 0; i < planes; ++i) {
        data.push_back(frame.extended_data[i] + skipped * step);
    }
    convert(data.data(), int(count));
}

void AudioResampler::convert(const uint8_t **data, int count) {
    const int maxSamples = check(swr_get_out_samples(m_resampler.get(), count), kConvertingAudio);
    if (maxSamples == 0) {
        return;
    }
    const FrameHandle converted = makeFrame();
    converted->format = m_target->sample_fmt;
    converted->nb_samples = maxSamples;
    check(av_channel_layout_copy(&converted->ch_layout, &m_target->ch_layout), kConvertingAudio);
    check(av_frame_get_buffer(converted.get(), 0), kConvertingAudio);
    const int samples =
        check(swr_convert(m_resampler.get(), converted->extended_data, maxSamples, data, count),
              kConvertingAudio);
    check(av_audio_fifo_write(m_queue.get(), reinterpret_cast<void **>(converted->extended_data),
                              samples),
          kConvertingAudio);
}

void AudioResampler::flush() {
    if (m_resampler) {
        convert(nullptr, 0);
    }
}

FrameHandle AudioResampler::take(int samples) {
    FrameHandle frame = makeFrame();
    frame->format = m_target->sample_fmt;
    frame->sample_rate = m_target->sample_rate;
    frame->nb_samples = samples;
    check(av_channel_layout_copy(&frame->ch_layout, &m_target->ch_layout), kConvertingAudio);
    check(av_frame_get_buffer(frame.get(), 0), kConvertingAudio);
    check(
        av_audio_fifo_read(m_queue.get(), reinterpret_cast<void **>(frame->extended_data), samples),
        kConvertingAudio);
    return frame;
}

} // namespace corvane::media

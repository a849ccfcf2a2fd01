#pragma once

// Internal to src/media.

#include "media/FFmpegHandles.h"

extern "C" {
#include <libavutil/audio_fifo.h>
}

namespace corvane::media {

/// Converts decoded audio to an encoder's format and queues the samples.
class AudioResampler {
  public:
    /// If the source has more channels than the encoder, the channels from `firstChannel` on are
    /// used, as many as the encoder has.
    AudioResampler(int firstChannel, int sourceChannels);
    ~AudioResampler();

    /// Sets the target format. Call first; the context must outlive the object.
    void setTarget(const AVCodecContext &encoder);

    /// Converts and queues `count` samples of the frame after the first `skipped` ones.
    void add(const AVFrame &frame, int64_t skipped, int64_t count);
    /// Queues the samples that the conversion has buffered. Call after the last `add`.
    void flush();

    /// Number of samples in the queue.
    int queued() const { return av_audio_fifo_size(m_queue.get()); }
    /// Removes and returns this many samples.
    FrameHandle take(int samples);

  private:
    using QueueHandle = std::unique_ptr<AVAudioFifo, FreeByValue<av_audio_fifo_free>>;

    bool isSameFormat(const AVFrame &frame) const;
    void configure(const AVFrame &frame);
    void selectChannels(SwrContext &resampler, int count, int sourceCount) const;
    void convert(const uint8_t **data, int count);

    int m_firstChannel;
    int m_sourceChannels;
    const AVCodecContext *m_target = nullptr;
    ResamplerHandle m_resampler;
    QueueHandle m_queue;
    FrameHandle m_format; ///< that the resampler is configured for; holds no samples
};

} // namespace corvane::media

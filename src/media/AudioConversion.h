#pragma once

// For the source files of this floor only.

#include "media/FFmpegHandles.h"

extern "C" {
#include <libavutil/audio_fifo.h>
}

namespace corvane::media {

/// Turns decoded sound into what an encoder takes, and queues it until there is a frame's worth.
class AudioConversion {
  public:
    /// Of the source's channels those from `firstChannel` on are taken, as many as the target has,
    /// where the target has fewer.
    AudioConversion(int firstChannel, int sourceChannels);
    ~AudioConversion();

    /// What the encoder takes. Before anything else.
    void setTarget(const AVCodecContext &encoder);

    /// Adds `count` samples of the frame from the `skipped`th on.
    void add(const AVFrame &sound, int64_t skipped, int64_t count);
    /// Adds what the conversion holds back. Nothing is added after it.
    void flush();

    int queued() const { return av_audio_fifo_size(m_queue.get()); }
    FrameHandle take(int samples);

  private:
    using QueueHandle = std::unique_ptr<AVAudioFifo, FreeByValue<av_audio_fifo_free>>;

    bool isSameKind(const AVFrame &sound) const;
    void build(const AVFrame &sound);
    void pickChannels(SwrContext &resampler, int count, int sourceCount) const;
    void convert(const uint8_t **data, int count);

    int m_firstChannel;
    int m_sourceChannels;
    const AVCodecContext *m_target = nullptr;
    ResamplerHandle m_resampler;
    QueueHandle m_queue;
    FrameHandle m_kind; ///< the format that the resampler was built for
};

} // namespace corvane::media

#pragma once

// Internal to src/media.

#include "media/AudioResampler.h"
#include "media/ExportCut.h"
#include "media/OutputFile.h"
#include "media/StreamExport.h"

namespace corvane::media {

/// Transcodes an audio stream to AAC: exactly the samples of the cut. Gaps in the source, also
/// before its start, become silence.
class AudioTranscoder : public StreamExport {
  public:
    static constexpr int kMaxChannels = 8;

    /// A source with more channels than `kMaxChannels` takes several objects, each for the channels
    /// from `firstChannel` on.
    AudioTranscoder(const ExportSource &source, int stream, int firstChannel, const ExportCut &cut,
                    OutputFile &output);

    void take(AVPacket &packet) override;
    void finish() override;
    bool hasWritten() const override { return m_position > 0; }

  private:
    void openDecoder();
    void openEncoder(int channels);
    bool tryEncoder(const AVChannelLayout &layout);
    void receiveFrames();
    void process(AVFrame &frame);
    void changeRate(int rate);
    void addSilence(int64_t samples, const AVFrame &format);
    void addSamples(const AVFrame &frame, int64_t skipped);
    void encodeQueued(bool isLast);
    void writePackets();

    ExportCut m_cut;
    OutputFile &m_output;
    const ExportSource &m_source;
    AVStream *m_stream = nullptr; ///< of the output
    AVRational m_timeBase;
    int64_t m_origin; ///< of the output, in the source's ticks
    CodecHandle m_decoder;
    CodecHandle m_encoder;
    AudioResampler m_resampler;
    int m_rate = 0;         ///< sample rate of the source
    int64_t m_position = 0; ///< samples at `m_rate` since the cut's origin
    int64_t m_encoded = 0;  ///< samples at the encoder's rate
};

} // namespace corvane::media

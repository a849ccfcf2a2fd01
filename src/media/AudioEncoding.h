#pragma once

// For the source files of this floor only.

#include "media/AudioConversion.h"
#include "media/ExportCut.h"
#include "media/OutputFile.h"
#include "media/StreamExport.h"

namespace corvane::media {

/// A sound stream decoded and encoded anew as AAC: exactly the samples of the cut. Where the source
/// has none, before its begin or in a gap, there is silence.
class AudioEncoding : public StreamExport {
  public:
    /// A source of more than eight channels becomes several tracks of eight; this is the one that
    /// begins with `firstChannel`.
    AudioEncoding(const ExportSource &source, int stream, int firstChannel, const ExportCut &cut,
                  OutputFile &output);

    void take(AVPacket &packet) override;
    void finish() override;
    bool isDone() const override { return m_isDone; }
    bool hasWritten() const override { return m_position > 0; }

    static constexpr int kMostChannels = 8;

  private:
    void openDecoder(const AVStream &stream);
    void openEncoder(int channels);
    bool tryEncoder(const AVChannelLayout &layout);
    void receiveSound();
    void place(AVFrame &sound);
    void followRate(int rate);
    void addSilence(int64_t samples, const AVFrame &like);
    void addSound(const AVFrame &sound, int64_t skipped);
    void encodeReady(bool isLast);
    void writePackets();

    ExportCut m_cut;
    OutputFile &m_output;
    const ExportSource &m_source;
    AVStream *m_stream = nullptr; ///< the output's, in the encoder's time base
    AVRational m_timeBase;
    int64_t m_shift;
    CodecHandle m_decoder;
    CodecHandle m_encoder;
    AudioConversion m_conversion;
    int m_rate = 0;         ///< of the source
    int64_t m_position = 0; ///< samples of the source's rate since the cut's begin
    int64_t m_encoded = 0;  ///< samples of the encoder's rate
    bool m_isDone = false;
};

} // namespace corvane::media

#pragma once

// For the source files of this floor only.

#include "media/ExportCut.h"
#include "media/FrameFilterGraph.h"
#include "media/OutputFile.h"
#include "media/PtsReconstructor.h"
#include "media/StreamExport.h"

#include <map>

namespace corvane::media {

/// A picture stream decoded and encoded anew as H.264: exactly the frames of the cut, each at its
/// own time.
class VideoEncoding : public StreamExport {
  public:
    /// The picture fits inside `bound`, or keeps its size without one.
    VideoEncoding(const ExportSource &source, int stream, const ExportCut &cut,
                  std::optional<QSize> bound, OutputFile &output);

    void take(AVPacket &packet) override;
    void finish() override;
    bool isDone() const override { return m_isDone; }
    bool hasWritten() const override { return m_lastPts.has_value(); }

  private:
    void openDecoder(const AVStream &stream);
    void openEncoder(const AVStream &stream, const VideoFormat &format);
    void receivePictures();
    void place(FrameHandle picture);
    void showEarlier(int64_t until);
    void encode(FrameHandle picture, int64_t pts);
    int64_t lengthInCut(int64_t pts, int64_t length) const;
    void writePackets();

    ExportCut m_cut;
    OutputFile &m_output;
    AVStream &m_stream;
    AVRational m_timeBase;
    int64_t m_shift;
    CodecHandle m_decoder;
    CodecHandle m_encoder;
    std::optional<FrameFilterGraph> m_conversion;
    FrameHandle m_earlier;                ///< the last picture before the cut, where it is shown
    std::map<int64_t, int64_t> m_lengths; ///< of pictures in the encoder, by their time
    PtsReconstructor m_untimed;
    std::optional<int64_t> m_lastPts;
    int64_t m_nextPts = 0; ///< of a picture that tells no time
    bool m_hasReachedKey = false;
    bool m_isDone = false;
};

} // namespace corvane::media

#pragma once

// Internal to src/media.

#include "media/ExportCut.h"
#include "media/FrameFilterGraph.h"
#include "media/OutputFile.h"
#include "media/PtsReconstructor.h"
#include "media/StreamExport.h"

#include <map>

namespace corvane::media {

/// Transcodes a video stream to H.264: exactly the frames of the cut, with their timestamps. All
/// times are ticks of the source stream, and those of the output count from the cut's origin.
class VideoTranscoder : public StreamExport {
  public:
    /// Scales the frames down to fit `bound`, if there is one.
    VideoTranscoder(const ExportSource &source, int stream, const ExportCut &cut,
                    std::optional<QSize> bound, OutputFile &output);

    void take(AVPacket &packet) override;
    void finish() override;
    bool hasWritten() const override { return m_lastPts.has_value(); }

  private:
    void openEncoder(const AVStream &stream, const VideoFormat &format);
    void receiveFrames();
    void process(FrameHandle frame);
    void encodeEarlierFrame();
    void encode(FrameHandle frame, int64_t pts);
    int64_t durationInCut(int64_t pts, int64_t duration) const;
    void writePackets();

    ExportCut m_cut;
    OutputFile &m_output;
    AVStream &m_stream;
    AVRational m_timeBase;
    int64_t m_origin; ///< of the output, in the source's timestamps
    CodecHandle m_decoder;
    CodecHandle m_encoder;
    std::optional<FrameFilterGraph> m_filterGraph;
    FrameHandle m_earlierFrame;             ///< see `ExportCut::shouldHoldEarlierFrame`
    std::map<int64_t, int64_t> m_durations; ///< of the frames in the encoder, by PTS
    PtsReconstructor m_pts;
    std::optional<int64_t> m_lastPts; ///< of the last encoded frame
    int64_t m_nextTime = 0;           ///< for frames without a timestamp
    bool m_hasReachedKeyframe = false;
};

} // namespace corvane::media

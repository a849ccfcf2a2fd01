#pragma once

// Internal to src/media.

#include "media/ExportCut.h"
#include "media/OutputFile.h"
#include "media/StreamExport.h"

#include <deque>

namespace corvane::media {

/// Copies the packets of a stream, from the keyframe before the cut to the last frame of the cut.
/// Buffers only reordered frames of the reference video stream, and at most one GOP of any other.
class StreamCopier : public StreamExport {
  public:
    StreamCopier(const ExportSource &source, int stream, const ExportCut &cut, OutputFile &output);

    /// Throws `UnsupportedSource` if frames are reordered but have no PTS.
    void take(AVPacket &packet) override;
    void finish() override;
    bool hasWritten() const override { return m_hasWritten; }

    /// Whether MPEG-4 files support the stream.
    static bool isPossible(const AVStream &stream);

  private:
    void checkTimestamps(const AVPacket &packet) const;
    bool isCutKeyframe(const AVPacket &packet) const;
    void takeBeforeCut(AVPacket &packet, MediaTime time);
    void takeInCut(AVPacket &packet, MediaTime time);
    void buffer(AVPacket &packet);
    void writeBuffered();

    ExportCut m_cut;
    OutputFile &m_output;
    AVStream &m_stream;
    AVMediaType m_type;
    AVRational m_timeBase;
    int64_t m_origin;                    ///< of the output, in the source stream's ticks
    std::optional<int64_t> m_keyframe;   ///< from which the cut can be decoded; nullopt if unknown
    std::deque<PacketHandle> m_buffered; ///< packets that the cut may need
    bool m_hasBegun;
    bool m_hasWritten = false;
};

} // namespace corvane::media

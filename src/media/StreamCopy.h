#pragma once

// For the source files of this floor only.

#include "media/ExportCut.h"
#include "media/OutputFile.h"
#include "media/StreamExport.h"

#include <deque>

namespace corvane::media {

/// A stream that goes into the output as it is, from the key frame before the cut to the last frame
/// that the cut shows. Of the film that the cut was found by nothing but reordered frames is held
/// in memory; of a further film at most a group of pictures.
class StreamCopy : public StreamExport {
  public:
    StreamCopy(const ExportSource &source, int stream, const ExportCut &cut, OutputFile &output);

    void take(AVPacket &packet) override;
    void finish() override;
    bool isDone() const override { return m_isDone; }
    bool hasWritten() const override { return m_hasWritten; }

    /// Whether an MPEG-4 file can hold the stream; `take` throws `UnsupportedSource` for one whose
    /// frames' order turns out to be unknown.
    static bool isPossible(const AVStream &stream);

  private:
    void testOrder(const AVPacket &packet) const;
    bool isKnownKey(const AVPacket &packet) const;
    void takeBeforeCut(AVPacket &packet, MediaTime time);
    void takeInCut(AVPacket &packet, MediaTime time);
    void hold(AVPacket &packet);
    void writeHeld();

    ExportCut m_cut;
    OutputFile &m_output;
    AVStream &m_stream;
    AVMediaType m_type;
    AVRational m_timeBase;
    int64_t m_shift;                 ///< in ticks, what becomes the output's 0
    std::optional<int64_t> m_key;    ///< begins what the cut needs, where that is known
    std::deque<PacketHandle> m_held; ///< before the cut its lead, in it what may not be needed
    bool m_hasBegun;
    bool m_isDone = false;
    bool m_hasWritten = false;
};

} // namespace corvane::media

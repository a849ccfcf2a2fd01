#pragma once

// For the source files of this floor only.

#include "media/PtsReconstructor.h"
#include "media/VideoReader.h"

namespace corvane::media {

/// Decodes the packets of one video stream into pictures with a presentation time each. Pictures
/// that are damaged or only guessed never come out. One thread at a time.
class FrameDecoder {
  public:
    /// Throws `MediaError` where the codec isn't known or can't be set up.
    FrameDecoder(const AVStream &stream, const VideoReader::Options &options);

    /// Hands a packet over; a null one tells that none follows. With `skipsUnreferenced` it is only
    /// decoded if other pictures refer to it. Damage is passed over.
    void send(const AVPacket *packet, bool skipsUnreferenced = false);

    struct Decoded {
        std::shared_ptr<const AVFrame> avFrame;
        qint64 time = 0;     ///< in the stream's time base, as are all here
        qint64 duration = 0; ///< 0 where unknown
    };
    /// The next picture in presentation order; nothing where a packet must come first, or the end
    /// was told and reached.
    std::optional<Decoded> receive();
    bool isDrained() const { return m_isDrained; }

    /// Before packets from elsewhere.
    void flush();

    /// How long one picture is shown where its packet doesn't say; 0 where unknown.
    qint64 nominalDuration() const { return m_nominalDuration; }

  private:
    qint64 timeOf(const AVFrame &frame);

    const AVStream &m_stream;
    CodecHandle m_codec;
    FrameHandle m_frame = makeFrame();
    qint64 m_nominalDuration = 0;
    PtsReconstructor m_untimed;
    std::optional<qint64> m_nextTime; ///< after the last picture
    bool m_isDrained = false;
};

} // namespace corvane::media

#pragma once

// Internal to src/media.

#include "media/PtsReconstructor.h"

#include <QSize>

namespace corvane::media {

/// A frame from the decoder. Times are in the stream's time base.
struct DecodedFrame {
    std::shared_ptr<const AVFrame> avFrame;
    qint64 time = 0;
    qint64 duration = 0; ///< 0 if unknown
};

/// Decodes the packets of one video stream into frames with a timestamp each. Damaged frames are
/// never returned. Not thread-safe.
class FrameDecoder {
  public:
    struct Options {
        int threads = 0; ///< number of decoder threads; 0 chooses by the cores
        /// Set for single-frame reads: disables frame threading and decoding past the wanted frame,
        /// which would only add latency.
        bool isSingleFrameRead = false;
        /// Size that the caller scales the frames down to; empty if it doesn't. For a large
        /// reduction, the decoder leaves out steps whose effect is no longer visible.
        QSize reducedSize = {};
    };

    /// Throws `MediaError` if the codec is unknown or can't be set up. `stream` must outlive the
    /// decoder.
    FrameDecoder(const AVStream &stream, const Options &options);

    /// Sends a packet; nullptr signals the end of the stream. Call `receive` until it returns
    /// nullopt before the next packet. With `shouldSkipNonReference`, the packet is decoded only if
    /// other frames refer to it. A damaged packet is skipped.
    void send(const AVPacket *packet, bool shouldSkipNonReference = false);

    /// Returns the next frame in presentation order, or nullopt if the decoder needs another packet
    /// or has reached the end of the stream.
    std::optional<DecodedFrame> receive();
    /// Whether the end of the stream was signalled and every frame was returned.
    bool isDrained() const { return m_isDrained; }

    /// Resets the decoder. Call after each seek.
    void flush();

    /// Frame duration that follows from the stream's frame rate; 0 if unknown.
    qint64 nominalDuration() const { return m_nominalDuration; }

  private:
    qint64 timeOf(const AVFrame &frame);

    const AVStream &m_stream;
    CodecHandle m_codec;
    FrameHandle m_frame = makeFrame();
    qint64 m_nominalDuration = 0;
    PtsReconstructor m_pts;
    std::optional<qint64> m_nextTime; ///< end of the last frame
    bool m_isDrained = false;
};

} // namespace corvane::media

#pragma once

// Internal to src/media.

#include "media/FFmpegHandles.h"

namespace corvane::media {

/// Writes one stream of a source to the output, copied or transcoded.
class StreamExport {
  public:
    StreamExport() = default;
    virtual ~StreamExport();
    Q_DISABLE_COPY_MOVE(StreamExport)

    /// Processes the source stream's next packet and may take its content.
    virtual void take(AVPacket &packet) = 0;
    /// Writes what is still buffered. Call after the last packet.
    virtual void finish() = 0;
    /// Whether no further packet is needed.
    bool isDone() const { return m_isDone; }
    /// Whether the output contains a packet of the stream.
    virtual bool hasWritten() const = 0;

  protected:
    bool m_isDone = false;
};

} // namespace corvane::media

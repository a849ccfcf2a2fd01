#pragma once

// For the source files of this floor only.

#include "media/FFmpegHandles.h"

namespace corvane::media {

/// One stream of a source on its way into the output: copied or encoded anew.
class StreamExport {
  public:
    StreamExport() = default;
    virtual ~StreamExport();
    Q_DISABLE_COPY_MOVE(StreamExport)

    /// Takes the source stream's next packet; it may be emptied.
    virtual void take(AVPacket &packet) = 0;
    /// No packet follows: writes what is still held back.
    virtual void finish() = 0;
    /// True where nothing that follows in the source is needed.
    virtual bool isDone() const = 0;
    /// Whether anything of the stream is in the output.
    virtual bool hasWritten() const = 0;
};

} // namespace corvane::media

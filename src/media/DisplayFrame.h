#pragma once

#include "media/MediaTime.h"

#include <QSize>

#include <memory>

namespace corvane::media {

/// One picture ready to be drawn: upright, with square pixels. Copies share the memory.
struct DisplayFrame {
    int width = 0;
    int height = 0;
    qsizetype bytesPerLine = 0;
    /// Rows of 32-bit pixels in the machine's order, 0xffRRGGBB, top row first.
    std::shared_ptr<const uchar> pixels;
    MediaTime time;   ///< of the frame, exact
    quint64 item = 0; ///< which of the player's items it shows

    bool isNull() const { return !pixels; }
};

/// Where a player's pictures go. It keeps the latest one: nothing waits for a slow window.
class FrameSink {
  public:
    virtual ~FrameSink();

    /// The box in pixels that a picture is to fit in; empty for the source's own size. A picture is
    /// never made larger than the source. Any thread.
    virtual QSize wantedSize() const = 0;
    /// Takes the picture in place of the one before. On the player's thread; it must return soon.
    virtual void show(DisplayFrame frame) = 0;
    /// From now on there is no picture, until the next one is shown. On the main thread.
    virtual void clear() = 0;
};

} // namespace corvane::media

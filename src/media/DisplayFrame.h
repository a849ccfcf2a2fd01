#pragma once

#include "media/MediaTime.h"

#include <QSize>

#include <memory>

namespace corvane::media {

/// A frame ready to be drawn: upright, with square pixels. Copies share the pixels.
struct DisplayFrame {
    int width = 0;
    int height = 0;
    qsizetype bytesPerLine = 0;
    /// 32-bit pixels in native byte order, 0xffRRGGBB, top row first; null for no frame.
    std::shared_ptr<const uchar> pixels;
    MediaTime time;   ///< of the decoded frame, exact
    quint64 item = 0; ///< the value of `MediaPlayer::currentItem` for its file

    bool isNull() const { return !pixels; }
};

/// Receives a player's frames. Only the latest one counts, so a slow window delays nothing.
class FrameSink {
  public:
    virtual ~FrameSink();

    /// The box in pixels to fit frames into; empty for the source's size. Frames are never
    /// enlarged. Any thread.
    virtual QSize wantedSize() const = 0;
    /// Replaces the current frame. Called on the player's thread; must return soon.
    virtual void show(DisplayFrame frame) = 0;
    /// Removes the current frame. Called on the main thread.
    virtual void clear() = 0;
};

} // namespace corvane::media

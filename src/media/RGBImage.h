#pragma once

#include <QByteArray>

namespace corvane::media {

/// An image in memory: 3 bytes per pixel (red, green, blue), top row first, rows without padding.
struct RGBImage {
    int width = 0;
    int height = 0;
    QByteArray pixels;

    bool isNull() const { return width <= 0 || height <= 0; }

    /// Returns the bytes of a JPEG file. `quality` from 0 to 1. Throws `MediaError`.
    QByteArray encodedJPEG(double quality) const;
};

} // namespace corvane::media

#pragma once

#include <QByteArray>

namespace corvane::media {

/// One picture in memory: rows of `width` times three bytes, red first, top row first, no padding.
struct RGBImage {
    int width = 0;
    int height = 0;
    QByteArray pixels;

    bool isNull() const { return width <= 0 || height <= 0; }

    /// As a JPEG file's bytes. `quality` from 0 to 1. Throws `MediaError`.
    QByteArray encodedJPEG(double quality) const;
};

} // namespace corvane::media

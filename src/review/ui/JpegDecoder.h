#pragma once

#include <QImage>
#include <QString>

#include <stop_token>

/// Decodes untrusted JPEG files. Any thread.
namespace corvane::jpeg {

/// Limits on the file. Within them decoding takes less than 128 MiB.
constexpr qint64 kMaxFileBytes = qint64(8) * 1024 * 1024;
constexpr qint64 kMaxPixels = qint64(10) * 1000 * 1000;

struct DecodeRequest {
    QString path;         ///< may be empty
    QString fallbackPath; ///< used if there is no file at `path`; may be empty
    QString root;         ///< no component below it may be a link; may be empty
    QSize pixels;         ///< size of the result; the image is cropped to fill it
    double radius = 0;    ///< of the corners, in pixels

    bool operator==(const DecodeRequest &) const = default;
};

/// Reads, decodes, scales and crops the file. Returns a null image if the file is missing, a link
/// or reached by one below `root`, not a regular file, above a limit, unreadable or an incomplete
/// JPEG, or if a stop is requested. Never blocks on a pipe or a device.
QImage decode(const DecodeRequest &request, const std::stop_token &stop);

} // namespace corvane::jpeg

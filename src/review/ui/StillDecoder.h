#pragma once

#include <QImage>
#include <QString>

#include <stop_token>

/// Pictures out of JPEG files that nobody vouches for. Any thread.
namespace corvane::stills {

/// A file larger than this, or with more pixels, is no picture to us. With these bounds a picture
/// is made in less than 128 MiB, whatever the file says.
constexpr qint64 kMostFileBytes = qint64(8) * 1024 * 1024;
constexpr qint64 kMostPixels = qint64(10) * 1000 * 1000;

/// What a picture is wanted for.
struct Wanted {
    QString path;         ///< empty for none
    QString fallbackPath; ///< shown where no file stands at `path`
    QSize pixels;         ///< of the screen; the picture is cropped to fill them
    double radius = 0;    ///< of its corners, in the same pixels

    bool operator==(const Wanted &) const = default;
};

/// The picture, exactly as large as wanted. A null one where the file is missing, no regular file,
/// a link, too large, unreadable or no whole JPEG, and once a stop is asked for; it never waits for
/// what is no file, and says nothing of it.
QImage picture(const Wanted &wanted, const std::stop_token &stop);

} // namespace corvane::stills

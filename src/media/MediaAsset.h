#pragma once

#include "media/MediaTime.h"

#include <QList>
#include <QSizeF>
#include <QString>

#include <optional>
#include <stop_token>

namespace corvane::media {

/// Facts about one video track, from the container and the codec's header.
struct VideoTrack {
    QSizeF naturalSize;           ///< stored pixels; the preferred transform isn't applied
    double nominalFrameRate = 0;  ///< 0 if unknown
    double estimatedDataRate = 0; ///< bits per second; 0 if unknown
    quint32 mediaSubType = 0;     ///< four-character code of the codec, first character highest
};

struct AudioTrack {
    quint32 mediaSubType = 0;
};

/// Facts about a media file. Attached pictures, timecode tracks and data tracks are left out.
struct MediaAsset {
    std::optional<MediaTime> duration; ///< nullopt if unknown
    QList<VideoTrack> videoTracks;
    QList<AudioTrack> audioTracks;

    /// Reads the facts of a file, decoding as little as possible. Reads bare audio to its end if
    /// the header has no duration. Throws `MediaError` if it isn't a media file, and `Cancelled`.
    /// Thread-safe.
    static MediaAsset read(const QString &path, std::stop_token stop = {});
};

} // namespace corvane::media

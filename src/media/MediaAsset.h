#pragma once

#include "media/MediaTime.h"

#include <QList>
#include <QSizeF>
#include <QString>

#include <optional>
#include <stop_token>

namespace corvane::media {

/// The facts of one video track, as the container and the codec's own header tell them.
struct VideoTrack {
    QSizeF naturalSize;           ///< in pixels as stored; the preferred transform isn't applied
    double nominalFrameRate = 0;  ///< 0 where unknown
    double estimatedDataRate = 0; ///< bits a second; 0 where unknown
    quint32 mediaSubType = 0;     ///< the four characters of the codec, the first one highest
};

struct AudioTrack {
    quint32 mediaSubType = 0;
};

/// What a media file says of itself. Attached pictures and the tracks of timecode and data count as
/// neither.
struct MediaAsset {
    std::optional<MediaTime> duration; ///< nothing where the file tells none
    QList<VideoTrack> videoTracks;
    QList<AudioTrack> audioTracks;

    /// Reads the facts of a file without decoding more of it than they need. Throws `MediaError`
    /// where it is no media file, and `Cancelled`. Any thread.
    static MediaAsset read(const QString &path, std::stop_token stop = {});
};

} // namespace corvane::media

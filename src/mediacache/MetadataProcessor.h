#pragma once

#include <QCoroTask>
#include <QString>

#include <optional>

/// Reads the metadata of a clip's container and creates its thumbnail. The metadata is not derived
/// data, but belongs to this layer because every caller needs it together with the thumbnail, and
/// the thumbnail's time depends on it.
namespace corvane::MetadataProcessor {

struct Outcome {
    QString videoId;
    double durationSeconds = 0; ///< 0 if unknown
    std::optional<int> width;   ///< of the stored frames, before rotation
    std::optional<int> height;
    std::optional<double> fps;
    std::optional<QString> codec; ///< four characters
    std::optional<QString> audioCodec;
    std::optional<qint64> bitRateBps;             ///< of the video track
    std::optional<QString> thumbnailRelativePath; ///< relative to the cache root

    bool operator==(const Outcome &) const = default;
};

/// Reads a media file on an executor of its own and writes "thumbnails/<id>.jpg" below the cache
/// root. Never throws: fields that cannot be determined stay empty. Main thread.
QCoro::Task<Outcome> process(QString videoId, QString path, QString cacheRoot);

/// The time of a clip's thumbnail, in seconds.
double thumbnailSeconds(double durationSeconds);

/// The text of a four-character code, highest byte first; "????" if it is not ASCII.
QString codecText(quint32 code);

} // namespace corvane::MetadataProcessor

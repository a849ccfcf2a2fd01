#pragma once

#include <QCoroTask>
#include <QString>

#include <optional>

/// Reads what a clip's container says and makes its thumbnail.
namespace corvane::MetadataProcessor {

struct Outcome {
    QString videoId;
    double durationSeconds = 0; ///< 0 where unknown
    std::optional<int> width;   ///< of the picture as stored, before it is turned upright
    std::optional<int> height;
    std::optional<double> fps;
    std::optional<QString> codec; ///< four characters
    std::optional<QString> audioCodec;
    std::optional<qint64> bitRateBps;             ///< of the pictures
    std::optional<QString> thumbnailRelativePath; ///< to the cache root

    bool operator==(const Outcome &) const = default;
};

/// Reads a media file, on an executor of its own, and writes "thumbnails/<id>.jpg" below the cache
/// root. It never fails: what can't be read or made stays empty. Main thread.
QCoro::Task<Outcome> process(QString videoId, QString path, QString cacheRoot);

/// Where in a clip of so many seconds its thumbnail is taken, in seconds.
double thumbnailSeconds(double durationSeconds);

/// The text of a four-character code, the highest byte first; "????" where it isn't ASCII.
QString codecText(quint32 code);

} // namespace corvane::MetadataProcessor

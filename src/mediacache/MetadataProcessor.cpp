#include "mediacache/MetadataProcessor.h"

#include "media/FrameGenerator.h"
#include "media/MediaAsset.h"
#include "mediacache/CacheFolder.h"
#include "mediacache/ImageIOHelper.h"
#include "platform/Paths.h"
#include "platform/SerialExecutor.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace corvane::MetadataProcessor {

namespace {

constexpr QSize kThumbnailSize = {480, 270};
constexpr double kThumbnailTolerance = 0.5;
constexpr double kThumbnailQuality = 0.8;

SerialExecutor &metadataExecutor() {
    return sharedExecutor("metadata");
}

/// Returns nullopt if the value is not finite or out of range.
template <typename Integer> std::optional<Integer> integerOf(double value) {
    // As a double, the largest integer rounds up to a value that is out of range.
    const auto bound = double(std::numeric_limits<Integer>::max());
    const bool fits = std::isfinite(value) && value < bound && value > -bound;
    return fits ? std::optional(Integer(value)) : std::nullopt;
}

std::optional<QString> codecOf(quint32 code) {
    return code == 0 ? std::nullopt : std::optional(codecText(code));
}

void setFacts(const media::MediaAsset &asset, Outcome &outcome) {
    const double duration = asset.duration ? asset.duration->seconds() : 0;
    outcome.durationSeconds = std::isfinite(duration) ? duration : 0;
    if (!asset.audioTracks.isEmpty()) {
        outcome.audioCodec = codecOf(asset.audioTracks.first().mediaSubType);
    }
    if (asset.videoTracks.isEmpty()) {
        return;
    }
    const media::VideoTrack &track = asset.videoTracks.first();
    outcome.width = integerOf<int>(track.naturalSize.width());
    outcome.height = integerOf<int>(track.naturalSize.height());
    outcome.codec = codecOf(track.mediaSubType);
    if (track.nominalFrameRate > 0) {
        outcome.fps = track.nominalFrameRate;
    }
    if (track.estimatedDataRate > 0) {
        outcome.bitRateBps = integerOf<qint64>(track.estimatedDataRate);
    }
}

QString writeThumbnail(const QString &videoId, const QString &path, const QString &cacheRoot,
                       double duration) {
    cacheFolder::checkName(videoId);
    const QString folder = QStringLiteral("thumbnails");
    const QString name = videoId + QStringLiteral(".jpg");
    const OpenFolder target = cacheFolder::ensure(cacheRoot, {folder});
    media::FrameGenerator generator(
        path, {.maximumSize = kThumbnailSize, .tolerance = kThumbnailTolerance});
    const auto time = media::MediaTime::fromSeconds(thumbnailSeconds(duration));
    ImageIOHelper::writeJPEG(generator.imageAt(time), target, name, kThumbnailQuality);
    return paths::joined(folder, name);
}

Outcome processNow(const QString &videoId, const QString &path, const QString &cacheRoot) {
    Outcome outcome{.videoId = videoId};
    try {
        const media::MediaAsset asset = media::MediaAsset::read(path);
        setFacts(asset, outcome);
        if (!asset.videoTracks.isEmpty()) {
            outcome.thumbnailRelativePath =
                writeThumbnail(videoId, path, cacheRoot, outcome.durationSeconds);
        }
    } catch (const std::exception &) {
        // A clip is imported even if it cannot be read.
    }
    return outcome;
}

} // namespace

double thumbnailSeconds(double durationSeconds) {
    return std::max(0.0, std::min(0.1 * durationSeconds, durationSeconds - 0.1));
}

QString codecText(quint32 code) {
    const char bytes[] = {char(code >> 24), char(code >> 16), char(code >> 8), char(code)};
    const bool isASCII = std::ranges::all_of(bytes, [](char byte) { return uchar(byte) < 0x80; });
    return isASCII ? QString::fromLatin1(bytes, sizeof bytes) : QStringLiteral("????");
}

QCoro::Task<Outcome> process(QString videoId, QString path, QString cacheRoot) {
    co_return co_await metadataExecutor().run([=] { return processNow(videoId, path, cacheRoot); });
}

} // namespace corvane::MetadataProcessor

#include "mediacache/FilmstripService.h"

#include "media/FrameGenerator.h"
#include "media/MediaAsset.h"
#include "mediacache/CacheFolder.h"
#include "mediacache/ImageIOHelper.h"
#include "platform/Cancellation.h"
#include "platform/FileSystem.h"
#include "platform/Paths.h"
#include "platform/SerialExecutor.h"

namespace corvane::FilmstripService {

namespace {

constexpr QSize kFrameSize = {320, 180};
constexpr double kFrameTolerance = 0.1;
constexpr double kFrameQuality = 0.7;

SerialExecutor &filmstripExecutor() {
    return sharedExecutor("filmstrip");
}

QStringList folderNames(const QString &videoId) {
    return {videoId, QStringLiteral("filmstrip")};
}

QString frameName(qsizetype index) {
    return QStringLiteral("frame-%1.jpg").arg(index, 2, 10, QLatin1Char('0'));
}

QStringList framePathsIn(const QString &folder) {
    QStringList files;
    for (int index = 0; index < kFrameCount; ++index) {
        files.append(paths::joined(folder, frameName(index)));
    }
    return files;
}

QStringList existing(QStringList files) {
    files.removeIf([](const QString &file) {
        const auto status = fileSystem().linkStatus(file);
        return !status || status->type != FileType::Regular;
    });
    return files;
}

double durationOf(const QString &path, const std::stop_token &stop) {
    const media::MediaAsset asset = media::MediaAsset::read(path, stop);
    if (!asset.duration || asset.duration->value <= 0) {
        throw Error(Error::Case::assetHasNoDuration);
    }
    if (asset.videoTracks.isEmpty()) {
        throw Error(Error::Case::noVideoTrack);
    }
    return asset.duration->seconds();
}

void createFrames(const QString &path, const OpenFolder &folder, const std::stop_token &stop) {
    QList<media::MediaTime> times;
    for (const double seconds : frameSeconds(durationOf(path, stop))) {
        times.append(media::MediaTime::fromSeconds(seconds));
    }
    media::FrameGenerator generator(path, {.maximumSize = kFrameSize, .tolerance = kFrameTolerance},
                                    stop);
    generator.images(times, [&](qsizetype index, std::optional<media::RGBImage> image) {
        throwIfStopRequested(stop);
        if (!image) {
            return;
        }
        try {
            ImageIOHelper::writeJPEG(*image, folder, frameName(index), kFrameQuality);
        } catch (const Failure &) {
            // Left out of the filmstrip; the next request tries again.
        }
    });
}

QStringList generateNow(const QString &videoId, const QString &path, const QString &cacheRoot,
                        const std::stop_token &stop) {
    const OpenFolder folder = cacheFolder::ensure(cacheRoot, folderNames(videoId));
    const QStringList files = framePathsIn(folder.path());
    if (existing(files).size() < files.size()) {
        createFrames(path, folder, stop);
    }
    return existing(files);
}

} // namespace

Error::Error(Case reason)
    : Failure(reason == Case::noVideoTrack ? QStringLiteral("The clip has no video track.")
                                           : QStringLiteral("The clip has no duration.")),
      m_reason(reason) {}

QStringList framePaths(const QString &videoId, const QString &cacheRoot) {
    return framePathsIn(paths::joined(cacheRoot, folderNames(videoId).join(QLatin1Char('/'))));
}

QList<double> frameSeconds(double durationSeconds) {
    QList<double> times;
    for (int index = 0; index < kFrameCount; ++index) {
        times.append(0.01 * durationSeconds + 0.98 * durationSeconds * (index + 0.5) / kFrameCount);
    }
    return times;
}

QCoro::Task<QStringList> generate(QString videoId, QString path, QString cacheRoot,
                                  std::stop_token stop) {
    co_return co_await filmstripExecutor().run(
        [=] { return generateNow(videoId, path, cacheRoot, stop); });
}

} // namespace corvane::FilmstripService

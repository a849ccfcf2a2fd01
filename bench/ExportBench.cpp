// Export sessions, compared with the ffmpeg command, which uses the same libraries.

#include "BenchData.h"

#include "media/ExportSession.h"
#include "platform/AtomicWrite.h"

#include <benchmark/benchmark.h>

using namespace corvane;
using namespace corvane::bench;
using media::ExportPreset;

namespace {

constexpr int kFirstSecond = 20;
constexpr int kSeconds = 10;

/// One minute of 1080p video with audio, as a camera records it.
QString cameraClip() {
    const QString path = dataPath(QStringLiteral("camera.mp4"));
    if (!fileSystem().targetStatus(path)) {
        fileSystem().createFolders(dataFolder());
        runCommand(
            QStringLiteral("ffmpeg -v error -y -f lavfi -i mandelbrot=size=1920x1080:rate=25 "
                           "-f lavfi -i sine=frequency=440:sample_rate=48000 -t 60 -c:v libx264 "
                           "-preset veryfast -b:v 20M -bf 2 -g 50 -pix_fmt yuv420p -c:a aac "
                           "'%1'")
                .arg(path));
    }
    return path;
}

void exportOurs(benchmark::State &state, ExportPreset preset) {
    const QString source = cameraClip();
    const QString output = dataPath(QStringLiteral("cut.mp4"));
    const auto range = media::MediaTimeRange::fromSeconds(kFirstSecond, kFirstSecond + kSeconds);
    for (auto _ : state) {
        writeAtomically(output, {});
        media::ffmpegExportSessions().create(source, preset)->run(output, range, {});
    }
}

void exportTheirs(benchmark::State &state, const QString &coding) {
    const QString source = cameraClip();
    const QString output = dataPath(QStringLiteral("cut-theirs.mp4"));
    for (auto _ : state) {
        runCommand(QStringLiteral("ffmpeg -v error -y -threads 2 -ss %1 -t %2 -i '%3' %4 '%5'")
                       .arg(kFirstSecond)
                       .arg(kSeconds)
                       .arg(source, coding, output));
    }
}

BENCHMARK_CAPTURE(exportOurs, cut, ExportPreset::passthrough)
    ->Name("cut/ours")
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(exportTheirs, cut, QStringLiteral("-c copy"))
    ->Name("cut/theirs")
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(exportOurs, transcode, ExportPreset::highestQuality)
    ->Name("transcode/ours")
    ->UseRealTime()
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(
    exportTheirs, transcode,
    QStringLiteral("-c:v libx264 -preset fast -crf 17 -profile:v high -c:a aac -b:a 128k"))
    ->Name("transcode/theirs")
    ->UseRealTime()
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond);

} // namespace

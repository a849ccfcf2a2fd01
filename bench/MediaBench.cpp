// Facts, thumbnails, filmstrips and exports, compared with the commands a user would run instead.

#include "BenchData.h"

#include "media/FrameGenerator.h"
#include "media/MediaAsset.h"
#include "mediacache/FilmstripService.h"
#include "mediacache/ImageIOHelper.h"
#include "platform/FileSystem.h"

#include <benchmark/benchmark.h>

using namespace corvane;
using namespace corvane::bench;

namespace {

constexpr double kSeconds = 72;

struct Footage {
    const char *name;
    const char *encoder;
    int gop;
};

constexpr Footage kFootage[] = {
    {"h264-12", "libx264 -preset superfast -sc_threshold 0", 12},
    {"h264-300", "libx264 -preset superfast -sc_threshold 0", 300},
    {"hevc-12", "libx265 -preset ultrafast -tag:v hvc1 -x265-params scenecut=0:open-gop=0", 12},
    {"hevc-300", "libx265 -preset ultrafast -tag:v hvc1 -x265-params scenecut=0:open-gop=0", 300},
    // As most cameras record: a fixed number of non-reference frames between two reference frames.
    {"h264-300-plain",
     "libx264 -preset superfast -sc_threshold 0 -bf 3 -b_strategy 0 -x264-params b-pyramid=none",
     300},
    {"hevc-300-plain",
     "libx265 -preset ultrafast -tag:v hvc1 -x265-params "
     "scenecut=0:open-gop=0:bframes=3:b-adapt=0:b-pyramid=0",
     300},
};

/// A 1080p clip with audio, created on first use: the encoder's output three times in a row.
QString clip(const Footage &footage) {
    const QString path = dataPath(QStringLiteral("%1.mp4").arg(QLatin1String(footage.name)));
    if (!fileSystem().linkStatus(path)) {
        const QString part = path + QStringLiteral(".part.mp4");
        runCommand(QStringLiteral("ffmpeg -v error -y -f lavfi -i testsrc2=size=1920x1080:rate=25 "
                                  "-f lavfi -i sine=sample_rate=48000 -vf "
                                  "noise=alls=3:allf=t,format=yuv420p -t 24 -c:a aac -c:v %1 -g %2 "
                                  "-keyint_min %2 '%3' 2> /dev/null")
                       .arg(QLatin1String(footage.encoder))
                       .arg(footage.gop)
                       .arg(part));
        runCommand(QStringLiteral("ffmpeg -v error -y -stream_loop 2 -i '%1' -c copy '%2.tmp.mp4' "
                                  "&& mv '%2.tmp.mp4' '%2' && rm '%1'")
                       .arg(part, path));
    }
    return path;
}

void factsOurs(benchmark::State &state, const Footage &footage) {
    const QString path = clip(footage);
    for (auto _ : state) {
        benchmark::DoNotOptimize(media::MediaAsset::read(path));
    }
}

void factsTheirs(benchmark::State &state, const Footage &footage) {
    const QString path = clip(footage);
    for (auto _ : state) {
        runCommand(QStringLiteral("ffprobe -v error -show_format -show_streams '%1' > /dev/null")
                       .arg(path));
    }
}

void thumbnailOurs(benchmark::State &state, const Footage &footage) {
    const QString path = clip(footage);
    for (auto _ : state) {
        media::FrameGenerator generator(path, {.maximumSize = {480, 270}, .tolerance = 0.5});
        ImageIOHelper::writeJPEG(generator.imageAt(media::MediaTime::fromSeconds(kSeconds / 10)),
                                 dataPath(QStringLiteral("thumbnail.jpg")), 0.8);
    }
}

void thumbnailTheirs(benchmark::State &state, const Footage &footage) {
    const QString path = clip(footage);
    for (auto _ : state) {
        runCommand(QStringLiteral("ffmpegthumbnailer -i '%1' -o '%2' -s 480 -q 8 -t 10%% "
                                  "2> /dev/null")
                       .arg(path, dataPath(QStringLiteral("thumbnail.jpg"))));
    }
}

void filmstripOurs(benchmark::State &state, const Footage &footage) {
    const QString path = clip(footage);
    QList<media::MediaTime> times;
    for (const double seconds : FilmstripService::frameSeconds(kSeconds)) {
        times.append(media::MediaTime::fromSeconds(seconds));
    }
    for (auto _ : state) {
        media::FrameGenerator generator(path, {.maximumSize = {320, 180}, .tolerance = 0.1});
        generator.images(times, [](qsizetype index, std::optional<media::RGBImage> image) {
            ImageIOHelper::writeJPEG(*image, dataPath(QStringLiteral("strip/%1.jpg").arg(index)),
                                     0.7);
        });
    }
}

void filmstripTheirs(benchmark::State &state, const Footage &footage) {
    const QString path = clip(footage);
    QString inputs;
    QString outputs;
    const QList<double> times = FilmstripService::frameSeconds(kSeconds);
    fileSystem().createFolders(dataPath(QStringLiteral("strip")));
    for (qsizetype index = 0; index < times.size(); ++index) {
        inputs += QStringLiteral(" -ss %1 -i '%2'").arg(times.at(index)).arg(path);
        outputs += QStringLiteral(" -map %1:v -frames:v 1 -vf scale=320:-2 -q:v 4 '%2'")
                       .arg(index)
                       .arg(dataPath(QStringLiteral("strip/%1.jpg").arg(index)));
    }
    for (auto _ : state) {
        runCommand(QStringLiteral("ffmpeg -v error -y") + inputs + outputs);
    }
}

bool registerAll() {
    const auto add = [](const Footage &footage, const char *what, auto ours, auto theirs) {
        const std::string name = std::string(what) + "-" + footage.name;
        benchmark::RegisterBenchmark((name + "/ours").c_str(), ours, footage)
            ->Unit(benchmark::kMillisecond)
            ->UseRealTime();
        benchmark::RegisterBenchmark((name + "/theirs").c_str(), theirs, footage)
            ->Unit(benchmark::kMillisecond)
            ->UseRealTime();
    };
    for (const Footage &footage : kFootage) {
        add(footage, "facts", factsOurs, factsTheirs);
        add(footage, "thumbnail", thumbnailOurs, thumbnailTheirs);
        add(footage, "filmstrip", filmstripOurs, filmstripTheirs);
    }
    return true;
}

const bool kIsRegistered = registerAll();

} // namespace

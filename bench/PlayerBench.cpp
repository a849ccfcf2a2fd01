// Exact seeks and steps of the player, compared with mpv's exact seek.

#include "BenchData.h"

#include "media/MediaPlayer.h"

#include <benchmark/benchmark.h>

#include <mpv/client.h>

#include <QFileInfo>

#include <memory>
#include <random>

using namespace corvane;
using namespace corvane::bench;
using namespace corvane::media;

namespace {

constexpr int kSeconds = 24;
constexpr int kRate = 25;
constexpr QSize kSinkSize(1280, 720);

/// A clip with much motion, created on first use.
QString clipPath(const QString &encoder, const QString &size, int gop, int seconds = kSeconds) {
    const auto path = dataPath(QStringLiteral("%1-%2-%3.mp4").arg(encoder, size).arg(gop));
    if (!QFileInfo::exists(path)) {
        runCommand(QStringLiteral("ffmpeg -v error -y -f lavfi -i testsrc2=s=%1:r=%2 "
                                  "-t %3 -c:v %4 -preset superfast -x265-params log-level=none "
                                  "-pix_fmt yuv420p -g %5 "
                                  "-bf 2 '%6'")
                       .arg(size)
                       .arg(kRate)
                       .arg(seconds)
                       .arg(encoder)
                       .arg(gop)
                       .arg(path));
    }
    return path;
}

/// Seeks per run. The distance from the keyframe determines the cost of a seek, so both players
/// seek to the same times.
constexpr int kSeeks = 24;

class RandomTimes {
  public:
    double next() { return std::floor(m_spread(m_random) * kRate) / kRate; }

  private:
    std::mt19937 m_random{5};
    std::uniform_real_distribution<> m_spread{0, kSeconds - 1};
};

/// Waits for the player's next frame.
class WaitingSink : public FrameSink {
  public:
    QSize wantedSize() const override { return kSinkSize; }
    void show(DisplayFrame frame) override {
        {
            const std::scoped_lock lock(m_mutex);
            m_shown = frame.time.seconds();
        }
        m_changed.notify_all();
    }
    void clear() override {}

    void await(double time) {
        std::unique_lock lock(m_mutex);
        m_changed.wait(lock, [&] { return std::abs(m_shown - time) < 1.0 / kRate; });
    }
    double shown() {
        const std::scoped_lock lock(m_mutex);
        return m_shown;
    }

  private:
    std::mutex m_mutex;
    std::condition_variable m_changed;
    double m_shown = -1;
};

struct Opened {
    explicit Opened(const QString &path) : player(MediaPlayer::Options{}) {
        player.setSink(sink);
        player.replaceCurrentItem(path);
        sink->await(0);
    }

    std::shared_ptr<WaitingSink> sink = std::make_shared<WaitingSink>();
    MediaPlayer player;
};

void seekOurs(benchmark::State &state, const QString &path) {
    Opened opened(path);
    RandomTimes times;
    for (auto _ : state) {
        const double time = times.next();
        opened.player.seek(MediaTime::fromSeconds(time));
        opened.sink->await(time);
    }
}

void awaitRestart(mpv_handle *handle) {
    while (mpv_wait_event(handle, -1)->event_id != MPV_EVENT_PLAYBACK_RESTART) {
    }
}

void seekTheirs(benchmark::State &state, const QString &path) {
    const std::unique_ptr<mpv_handle, decltype(&mpv_terminate_destroy)> handle(
        mpv_create(), mpv_terminate_destroy);
    for (const auto &[name, value] : {std::pair("vo", "null"),
                                      {"ao", "null"},
                                      {"pause", "yes"},
                                      {"hr-seek", "yes"},
                                      {"keep-open", "yes"},
                                      {"config", "no"}}) {
        mpv_set_option_string(handle.get(), name, value);
    }
    mpv_initialize(handle.get());
    const auto file = path.toUtf8();
    const char *load[] = {"loadfile", file.constData(), nullptr};
    mpv_command(handle.get(), load);
    awaitRestart(handle.get());
    RandomTimes times;
    for (auto _ : state) {
        const auto time = QByteArray::number(times.next());
        const char *seek[] = {"seek", time.constData(), "absolute+exact", nullptr};
        mpv_command(handle.get(), seek);
        awaitRestart(handle.get());
    }
}

/// Steps back through cached frames.
void stepBack(benchmark::State &state, const QString &path) {
    constexpr int kSteps = 60;
    Opened opened(path);
    int left = 0;
    for (auto _ : state) {
        if (left == 0) {
            state.PauseTiming();
            opened.player.seek(MediaTime::fromSeconds(10));
            opened.sink->await(10);
            for (left = 0; left < kSteps; ++left) {
                opened.player.stepFrames(1);
                opened.sink->await(10 + (left + 1.0) / kRate);
            }
            state.ResumeTiming();
        }
        opened.player.stepFrames(-1);
        opened.sink->await(10 + (--left) / double(kRate));
    }
}

/// Memory of a process that only plays and seeks in 4K video.
void memoryOf4K(benchmark::State &state) {
    const double before = currentMemory();
    constexpr double kMegabyte = 1 << 20;
    for (auto _ : state) {
        Opened opened(clipPath(QStringLiteral("libx264"), QStringLiteral("3840x2160"), 12, 8));
        for (const double time : {6.0, 2.0, 4.0}) {
            opened.player.seek(MediaTime::fromSeconds(time));
            opened.sink->await(time);
            for (int step = 1; step <= 40; ++step) {
                opened.player.stepFrames(1);
                opened.sink->await(time + double(step) / kRate);
            }
        }
        state.counters["figure"] = (currentMemory() - before) / kMegabyte;
    }
}

const bool isRegistered = [] {
    for (const auto *encoder : {"libx264", "libx265"}) {
        for (const int gop : {12, 300}) {
            const auto name = QStringLiteral("seek-%1-%2").arg(QLatin1String(encoder)).arg(gop);
            const auto path = [=] {
                return clipPath(QLatin1String(encoder), QStringLiteral("1920x1080"), gop);
            };
            benchmark::RegisterBenchmark((name + QStringLiteral("/ours")).toUtf8(),
                                         [=](auto &state) { seekOurs(state, path()); })
                ->Iterations(kSeeks)
                ->Unit(benchmark::kMillisecond)
                ->MeasureProcessCPUTime()
                ->UseRealTime();
            benchmark::RegisterBenchmark((name + QStringLiteral("/theirs")).toUtf8(),
                                         [=](auto &state) { seekTheirs(state, path()); })
                ->Iterations(kSeeks)
                ->Unit(benchmark::kMillisecond)
                ->MeasureProcessCPUTime()
                ->UseRealTime();
        }
    }
    benchmark::RegisterBenchmark(
        "step-back/ours",
        [](auto &state) {
            stepBack(state, clipPath(QStringLiteral("libx264"), QStringLiteral("1920x1080"), 300));
        })
        ->Unit(benchmark::kMillisecond)
        ->MeasureProcessCPUTime()
        ->UseRealTime();
    benchmark::RegisterBenchmark("player-memory/ours", memoryOf4K)->Iterations(1);
    return true;
}();

} // namespace

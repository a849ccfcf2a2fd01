#include "media/MediaPlayer.h"

#include "media/FrameGenerator.h"
#include "support/TestFolder.h"
#include "support/TestMedia.h"
#include "support/TestPlayer.h"

#include <gmock/gmock.h>

#include <QRandomGenerator>

#include <algorithm>
#include <cmath>
#include <numeric>

namespace corvane::media {

namespace {

using namespace std::chrono_literals;
using test::eventually;
using test::TestAudioOutput;

constexpr double kFrame = 0.04;

class MediaPlayerTest : public testing::Test {
  protected:
    void start(MediaPlayer::Options options = {}) {
        options.clock = &clock;
        player = std::make_unique<MediaPlayer>(std::move(options));
        player->setSink(sink);
        player->addPeriodicTimeObserver(1ms, [this](MediaTime) { ++reports; });
    }

    QString clip(const test::ClipOptions &options = {.frames = 60, .bFrames = 2}) {
        return test::makeClip(folder.at(QStringLiteral("%1.mp4").arg(++clips)), options);
    }
    /// Sends a request and waits for the player thread's report.
    void settle(const std::function<void()> &request) {
        request();
        EXPECT_TRUE(eventually([this, before = reports] { return reports > before; }));
    }
    void load(const QString &path) {
        settle([&] { player->replaceCurrentItem(path); });
        shows(0);
    }
    void play(float rate) {
        settle([&] { player->setRate(rate); });
    }
    bool shows(int number) {
        const bool isShown = eventually([&] { return sink->number() == number; });
        EXPECT_EQ(sink->number(), number);
        return isShown;
    }
    bool comesTo(double seconds) {
        constexpr double kGrid = 6 * kHalfTick;
        const bool is = eventually(
            [&] { return std::abs(player->currentTime().seconds() - seconds) <= kGrid; });
        EXPECT_NEAR(player->currentTime().seconds(), seconds, kGrid);
        return is;
    }
    /// Advances the clock frame by frame until the player stops.
    void playToTheEnd(float rate, double from, double to) {
        play(rate);
        for (double at = from; player->rate() != 0;) {
            if (!comesTo(at)) {
                return;
            }
            clock.advance(std::chrono::duration<double>(kFrame));
            at = rate > 0 ? std::min(at + kFrame * rate, to) : std::max(at + kFrame * rate, to);
            if (at == to) {
                EXPECT_TRUE(eventually([&] { return player->rate() == 0; }));
            }
        }
        comesTo(to);
    }

    test::TestFolder folder;
    int clips = 0;
    int reports = 0;
    test::TestMonotonicClock clock;
    std::shared_ptr<test::TestSink> sink = std::make_shared<test::TestSink>();
    std::unique_ptr<MediaPlayer> player;
};

} // namespace

TEST_F(MediaPlayerTest, ShowsTheFrameOfEverySeekAndStepWithAndWithoutACache) {
    const std::pair<qsizetype, test::ClipOptions> table[] = {
        {qsizetype(256) << 20, {.frames = 60, .bFrames = 2}},
        {1, {.frames = 200, .gop = 150, .bFrames = 2}}, // distant keyframes
    };
    QRandomGenerator random(7);
    for (const auto &[bytes, options] : table) {
        start({.frameBytes = bytes});
        load(clip(options));
        EXPECT_EQ(player->rate(), 0);
        for (int seek = 0; seek < 35; ++seek) {
            const int frame = random.bounded(1, options.frames - 1);
            player->seek(MediaTime::fromSeconds(frame * kFrame + random.bounded(0.03)));
            ASSERT_TRUE(shows(frame));
            const int step = random.bounded(2) == 0 ? 1 : -1;
            player->stepFrames(step);
            ASSERT_TRUE(shows(frame + step));
        }
        player->seek(MediaTime::fromSeconds(9));
        EXPECT_TRUE(shows(options.frames - 1));
        for (int frame = 0; frame < 60; ++frame) {
            player->seek(MediaTime::fromSeconds(frame * kFrame));
        }
        player->seek(MediaTime::fromSeconds(0.5));
        EXPECT_TRUE(shows(12));
        EXPECT_EQ(player->currentTime(), MediaTime::fromSeconds(0.5));
    }
}

TEST_F(MediaPlayerTest, AddsUpPendingStepsAndStopsAtTheEnds) {
    for (const qsizetype bytes : {qsizetype(256) << 20, qsizetype(1)}) { // with and without a cache
        start({.frameBytes = bytes});
        load(clip());
        const auto steps = [this](int count, int by) {
            for (int step = 0; step < count; ++step) {
                player->stepFrames(by);
            }
        };
        player->seek(MediaTime::fromSeconds(5 * kFrame));
        steps(10, 1);
        ASSERT_TRUE(shows(15));
        steps(10, 1);
        ASSERT_TRUE(shows(25));
        EXPECT_TRUE(comesTo(25 * kFrame));
        EXPECT_EQ(player->currentTime(), (MediaTime{1, 1}));
        steps(10, -1);
        ASSERT_TRUE(shows(15));
        player->stepFrames(-13);
        ASSERT_TRUE(shows(2));
        steps(4, -1);
        ASSERT_TRUE(shows(0));
        player->seek(MediaTime::fromSeconds(57 * kFrame));
        steps(9, 1);
        ASSERT_TRUE(shows(59));
        player->stepFrames(-1);
        ASSERT_TRUE(shows(58));
    }
}

TEST_F(MediaPlayerTest, StepsByFramesOfVariableDuration) {
    start();
    const char *varying = "N*20+if(gt(N\\,7)\\,500\\,0)+mod(N\\,3)*5";
    for (const auto &options :
         {test::ClipOptions{.frames = 20, .milliseconds = varying},
          test::ClipOptions{.frames = 20, .rate = "24000/1001"},
          test::ClipOptions{.frames = 20, .videoDelay = 0.3, .audioTracks = 1}}) {
        load(clip(options));
        for (int frame = 1; frame < 20; ++frame) {
            player->stepFrames(1);
            ASSERT_TRUE(shows(frame));
            const auto exact = sink->shown().last().frame.time;
            ASSERT_TRUE(eventually([&] { return player->currentTime() == exact; }));
            player->seek(MediaTime::fromSeconds(exact.seconds())); // the rounded time names it too
        }
        for (int frame = 18; frame >= 0; --frame) {
            player->stepFrames(-1);
            ASSERT_TRUE(shows(frame));
        }
    }
}

TEST_F(MediaPlayerTest, KeepsStepsInsideARange) {
    start();
    load(clip());
    const MediaTimeRange range{MediaTime::fromSeconds(10.5 * kFrame),
                               MediaTime::fromSeconds(20 * kFrame)};
    player->stepFrames(1, range); // from outside
    EXPECT_TRUE(shows(10));
    EXPECT_TRUE(comesTo(10.5 * kFrame));
    player->stepFrames(40, range);
    EXPECT_TRUE(shows(20));
    player->stepFrames(-40, range);
    EXPECT_TRUE(shows(10));
}

TEST_F(MediaPlayerTest, PlaysEveryFrameInOrderButSkipsFramesAtFastRates) {
    start();
    load(clip());
    playToTheEnd(1, 0, 2.4);
    QList<int> expected(60);
    std::iota(expected.begin(), expected.end(), 0);
    EXPECT_EQ(sink->numbers(), expected);

    sink->clear();
    playToTheEnd(-1, 2.4, 0);
    std::ranges::reverse(expected);
    expected.removeFirst(); // already shown
    EXPECT_EQ(sink->numbers(), expected);
    EXPECT_EQ(player->currentTime(), MediaTime());

    sink->clear();
    playToTheEnd(2, 0, 2.4);
    EXPECT_TRUE(std::ranges::is_sorted(sink->numbers()));
    EXPECT_EQ(sink->numbers().last(), 59);
    sink->clear();
    playToTheEnd(-8, 2.4, 0);
    EXPECT_THAT(sink->numbers(), testing::ElementsAre(52, 44, 36, 28, 20, 12, 4, 0));
    sink->clear();
    playToTheEnd(8, 0, 2.4);
    EXPECT_THAT(sink->numbers(), testing::ElementsAre(8, 16, 24, 32, 40, 48, 56, 59));
    player->setRate(100);
    EXPECT_EQ(player->rate(), MediaPlayer::kFastestRate);
}

TEST_F(MediaPlayerTest, PausesOnTheFrameThatTheCurrentTimeNames) {
    start();
    load(clip({.frames = 60, .rate = "24000/1001"}));
    play(1);
    for (int step = 1; step < 40; ++step) {
        clock.advance(0.0397s);
        ASSERT_TRUE(comesTo(step * 0.0397));
        const int shown = sink->number();
        settle([&] { player->pause(); });
        settle([&] { player->seek(player->currentTime()); });
        ASSERT_TRUE(shows(shown));
        settle([&] { player->seek(MediaTime::fromSeconds(step * 0.0397)); });
        play(1);
    }
}

TEST_F(MediaPlayerTest, WaitsAtABoundaryUntilItsObserverIsCalled) {
    start({.frameBytes = 1}); // decodes on the way, so that requests can cancel it
    load(clip());
    int calls = 0;
    int redraws = 0;
    const auto token = player->addBoundaryTimeObserver(MediaTime::fromSeconds(0.4), [&] {
        ++calls;
        EXPECT_EQ(sink->number(), 10);
        player->pause();
    });
    play(8);
    clock.advance(100ms);
    EXPECT_TRUE(eventually([&] {
        if (++redraws < 20) {
            player->redraw();
        }
        return calls == 1;
    }));
    EXPECT_TRUE(comesTo(0.4));
    player->removeTimeObserver(token);
    player->seek({});
    player->setRate(8);
    EXPECT_TRUE(eventually([&] {
        clock.advance(50ms); // each step is reported, which wakes this loop
        return player->rate() == 0;
    }));
    EXPECT_EQ(calls, 1);
}

TEST_F(MediaPlayerTest, NeverShowsAFrameOfThePreviousFile) {
    start();
    const auto first = clip();
    const auto second = clip({.frames = 5});
    for (int round = 0; round < 10; ++round) {
        player->replaceCurrentItem(first);
        player->seek(MediaTime::fromSeconds(2));
        player->setRate(round % 2 ? 1.0F : -1.0F);
        if (round % 3 == 0) {
            eventually([&] { return sink->number() >= 0; });
        }
        player->replaceCurrentItem(second);
        EXPECT_EQ(player->rate(), 0);
        player->stepFrames(3);
        ASSERT_TRUE(shows(3));
        for (const auto &shown : sink->shown()) {
            EXPECT_EQ(shown.frame.item, player->currentItem());
        }
    }
    player->replaceCurrentItem({});
    EXPECT_EQ(sink->number(), -1);
}

TEST_F(MediaPlayerTest, ShowsNoFrameOfAnUnreadableFileAndPlaysFilesWithoutVideo) {
    start();
    for (const auto &path : {folder.write("a.mov", "no film"), folder.at("b")}) {
        player->replaceCurrentItem(path);
        player->stepFrames(1);
        player->setRate(1);
        EXPECT_TRUE(eventually([&] { return player->rate() == 0; }));
        EXPECT_TRUE(sink->shown().isEmpty());
    }
    settle([&] {
        player->replaceCurrentItem(clip({.frames = 0, .audioTracks = 1, .audioSeconds = 0.2}));
    });
    play(1);
    clock.advance(0.1s);
    ASSERT_TRUE(comesTo(0.1));
    clock.advance(0.2s);
    EXPECT_TRUE(eventually([&] { return player->rate() == 0; }));
    EXPECT_NEAR(player->currentTime().seconds(), 0.2, 0.03);

    load(clip({.frames = 1}));
    settle([&] { player->stepFrames(1); });
    settle([&] { player->stepFrames(-2); });
    play(1);
    clock.advance(1s);
    EXPECT_TRUE(eventually([&] { return player->rate() == 0; }));
    EXPECT_EQ(sink->numbers(), QList<int>{0});
}

TEST_F(MediaPlayerTest, StopsDuringAnyTask) {
    const auto path = clip({.frames = 300, .gop = 300});
    for (int round = 0; round < 12; ++round) {
        start();
        player->replaceCurrentItem(path);
        player->setRate(float(round % 3 - 1));
        player->seek(MediaTime::fromSeconds(11));
        if (round % 2) {
            eventually([&] { return !sink->shown().isEmpty(); });
        }
        player->stepFrames(-round);
        player.reset();
    }
}

TEST_F(MediaPlayerTest, ShowsUprightFramesInTheWantedSize) {
    start();
    sink->quarterTurns = 1;
    sink->size = {100, 100};
    const auto path = clip({.frames = 3, .rotation = 90});
    load(path);
    EXPECT_EQ(sink->shown().last().frame.height, 100);
    EXPECT_EQ(sink->shown().last().frame.width, 56);
    sink->size = {4000, 4000}; // never larger than the source
    player->redraw();
    EXPECT_TRUE(eventually([&] { return sink->shown().last().frame.height == 320; }));
}

TEST_F(MediaPlayerTest, MapsHighDynamicRangeLikeStills) {
    start();
    const QString path = test::makeHDRClip(folder.at("pq.mp4"), "smpte2084");
    settle([&] { player->replaceCurrentItem(path); });
    ASSERT_TRUE(eventually([&] { return !sink->shown().isEmpty(); }));
    const DisplayFrame shown = sink->shown().last().frame;
    const RGBImage still = FrameGenerator(path, {}).imageAt({});
    ASSERT_EQ(QSize(shown.width, shown.height), QSize(still.width, still.height));
    int furthest = 0;
    for (int at = 0; at < still.width * still.height; ++at) {
        const int x = at % still.width;
        const uchar *row = shown.pixels.get() + at / still.width * shown.bytesPerLine;
        const quint32 point = reinterpret_cast<const quint32 *>(row)[x];
        ASSERT_EQ(point >> 24, 0xffU);
        const int green = int(point >> 8 & 0xff);
        furthest = std::max(furthest, std::abs(green - uchar(still.pixels.at(3 * at + 1))));
    }
    EXPECT_LE(furthest, 2);
}

TEST_F(MediaPlayerTest, SynchronizesFramesToTheAudio) {
    TestAudioOutput::Device device;
    start({.audioOutput = std::make_unique<TestAudioOutput>(device)});
    load(clip());
    player->setRate(1);
    ASSERT_TRUE(eventually([&] { return device.state == AudioOutput::State::starting; }));
    clock.advance(100ms); // still starting
    device.state = AudioOutput::State::running;
    clock.advance(500ms);
    ASSERT_TRUE(shows(0));
    device.position = 1.2;
    clock.advance(300ms);
    EXPECT_TRUE(eventually([&] { return sink->number() >= 30; }));
    player->setRate(4);
    EXPECT_TRUE(eventually([&] { return device.state == AudioOutput::State::silent; }));
    player.reset(); // before the device it refers to
}

TEST_F(MediaPlayerTest, PlaysAudioWithOrWithoutADevice) {
    const auto output = makeAudioOutput();
    output->setWake(test::wakeEventually);
    output->setFile(clip({.frames = 50, .audioTracks = 1}));
    output->play(0.5, 1);
    EXPECT_TRUE(eventually([&] { return output->state() == AudioOutput::State::running; }));
    EXPECT_GE(output->position().value_or(0), 0.3);
    output->setFile(clip({.frames = 5}));
    output->play(0, 1);
    EXPECT_TRUE(eventually([&] { return output->state() == AudioOutput::State::silent; }));
}

} // namespace corvane::media

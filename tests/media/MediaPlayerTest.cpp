#include "media/FrameGenerator.h"
#include "MediaPlayerFixture.h"

#include <QRandomGenerator>

namespace corvane::media {

using namespace std::chrono_literals;
using test::eventually;
using test::MediaPlayerTest;

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

TEST_F(MediaPlayerTest, IsSettledWhenStepsAndPausesHaveChangedTheTime) {
    start();
    load(clip());
    QList<MediaTime> settledTimes;
    QObject::connect(player.get(), &MediaPlayer::settled,
                     [&] { settledTimes.append(player->currentTime()); });
    const auto settles = [this] { return eventually([this] { return player->isSettled(); }); };
    player->stepFrames(2);
    player->stepFrames(1);
    EXPECT_FALSE(player->isSettled());
    ASSERT_TRUE(settles());
    play(1);
    clock.advance(0.1s);
    player->pause();
    EXPECT_FALSE(player->isSettled());
    ASSERT_TRUE(settles());
    const auto exact = sink->shown().last().frame.time;
    player->stepFrames(-1);
    player->seek(MediaTime::fromSeconds(1)); // drops the step
    ASSERT_TRUE(settles());
    ASSERT_EQ(settledTimes.size(), 3);
    EXPECT_EQ(settledTimes[0], (MediaTime{3, 25}));
    EXPECT_GE(settledTimes[1], exact);
    EXPECT_EQ(settledTimes[2], MediaTime::fromSeconds(1));
    player->replaceCurrentItem(folder.write("a.mov", "no film"));
    player->stepFrames(1);
    EXPECT_TRUE(settles()) << "a file without frames";
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

} // namespace corvane::media

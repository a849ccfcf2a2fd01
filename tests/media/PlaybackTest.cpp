// Playing: the shown frames, ranges and audio.

#include "MediaPlayerFixture.h"

#include <algorithm>
#include <numeric>

namespace corvane::media {

using namespace std::chrono_literals;
using test::eventually;
using test::MediaPlayerTest;
using test::TestAudioOutput;

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

TEST_F(MediaPlayerTest, HoldsPlaybackInARangeAndReturnsToItsInPoint) {
    struct Case {
        const char *description;
        float rate;
        double from;
        std::optional<double> seekDuringPlayback;
        double out = 1.2;
        int lastFrame = 30;
    };
    const Case table[] = {
        {"to the out point", 1, 0.4, {}},
        {"a seek to the out point", 1, 0.4, 1.2},
        {"a seek to just before it", 1, 0.4, 1.19},
        {"from the out point", 2, 1.2, {}},
        {"faster than frames are decoded", 8, 0.4, {}},
        {"in reverse", -1, 0.8, {}},
        {"a range that ends with the clip", 1, 2, {}, 2.4, 59},
        {"a range that ends after the clip", 1, 2, {}, 2.402, 59},
    };
    for (const qsizetype bytes : {qsizetype(256) << 20, qsizetype(1)}) { // with and without a cache
        start({.frameBytes = bytes});
        load(clip());
        for (const Case &test : table) {
            SCOPED_TRACE(test.description);
            player->setRange(MediaTimeRange::fromSeconds(0.4, test.out));
            settle([&] { player->seek(MediaTime::fromSeconds(test.from)); });
            player->setRate(test.rate);
            if (test.seekDuringPlayback) {
                player->seek(MediaTime::fromSeconds(*test.seekDuringPlayback));
            }
            ASSERT_TRUE(eventually([&] {
                clock.advance(40ms); // every report wakes this loop
                return player->rate() == 0;
            }));
            EXPECT_TRUE(shows(10));
            EXPECT_EQ(player->currentTime(), MediaTime::fromSeconds(0.4));
            for (const int number : sink->numbers()) {
                EXPECT_LE(number, test.lastFrame);
            }
        }
    }
    player->setRange({});
    player->setRate(1);
    EXPECT_TRUE(eventually([&] {
        clock.advance(40ms);
        return player->rate() == 0;
    }));
    EXPECT_TRUE(shows(59)) << "without a range";
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

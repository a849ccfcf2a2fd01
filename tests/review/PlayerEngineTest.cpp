#include "review/PlayerEngine.h"

#include "support/Await.h"
#include "support/TestFolder.h"
#include "support/TestMedia.h"
#include "support/TestPlayer.h"

#include <gmock/gmock.h>

namespace corvane {

namespace {

using test::eventually;

class PlayerEngineTest : public testing::Test {
  protected:
    PlayerEngineTest() { engine->player().setSink(sink); }

    QString clip(const test::ClipOptions &options) {
        return test::makeClip(folder.at(QStringLiteral("%1.mov").arg(++clips)), options);
    }
    void load(const QString &path) { test::await(engine->load(path)); }
    bool shows(int number, double seconds) {
        const bool is = eventually([&] {
            return sink->number() == number &&
                   std::abs(engine->currentSeconds() - seconds) < media::kHalfTick;
        });
        EXPECT_EQ(sink->number(), number);
        EXPECT_NEAR(engine->currentSeconds(), seconds, media::kHalfTick);
        return is;
    }

    test::TestFolder folder;
    int clips = 0;
    test::TestMonotonicClock clock;
    std::shared_ptr<test::TestSink> sink = std::make_shared<test::TestSink>();
    std::unique_ptr<PlayerEngine> engine =
        std::make_unique<PlayerEngine>(media::MediaPlayer::Options{.clock = &clock});
};

} // namespace

TEST_F(PlayerEngineTest, PublishesTheFactsOfALoadedFileAndPausesAtItsFirstFrame) {
    EXPECT_FALSE(engine->isReady());
    EXPECT_EQ(engine->fps(), 30);
    int notifications = 0;
    const auto count = [&notifications] { ++notifications; };
    QObject::connect(engine.get(), &PlayerEngine::durationChanged, count);
    QObject::connect(engine.get(), &PlayerEngine::fpsChanged, count);
    QObject::connect(engine.get(), &PlayerEngine::rateChanged, count);
    const auto path = clip({.frames = 50, .rate = "24000/1001"});
    load(path);
    EXPECT_TRUE(engine->isReady());
    EXPECT_EQ(engine->url(), path);
    EXPECT_NEAR(engine->fps(), 23.976, 0.001);
    EXPECT_EQ(engine->naturalSize(), QSizeF(320, 180));
    EXPECT_NEAR(engine->durationSeconds(), 2.0854, 0.001);
    EXPECT_EQ(engine->rate(), 0);
    EXPECT_EQ(notifications, 2);
    EXPECT_TRUE(shows(0, 0));

    load(clip({.frames = 0, .audioTracks = 1, .audioSeconds = 1}));
    EXPECT_TRUE(engine->isReady());
    EXPECT_EQ(engine->fps(), 30);
    EXPECT_EQ(engine->naturalSize(), QSizeF(0, 0));
    engine->seek(0.5);
    engine->stepFrames(1);
    EXPECT_NEAR(engine->currentSeconds(), 0.5 + 1.0 / 30, 0.001);
    engine->setRate(1);
    for (const double seconds : {0.6, 0.8}) {
        EXPECT_TRUE(eventually([&] {
            clock.advance(std::chrono::milliseconds(40)); // every report wakes this loop
            return engine->currentSeconds() >= seconds;
        }));
    }
    EXPECT_TRUE(eventually([&] {
        clock.advance(std::chrono::milliseconds(50));
        return engine->rate() == 0;
    }));
    EXPECT_NEAR(engine->currentSeconds(), engine->durationSeconds(), 0.001);

    load(folder.write("no.mov", "no film"));
    EXPECT_FALSE(engine->isReady());
    EXPECT_EQ(engine->durationSeconds(), 0);
    engine->seek(5);
    EXPECT_EQ(engine->currentSeconds(), 0);
    EXPECT_EQ(sink->number(), -1);
}

TEST_F(PlayerEngineTest, KeepsTheFactsOfTheNewerOfTwoLoads) {
    const auto first = clip({.frames = 100});
    const auto second = clip({.frames = 10});
    auto older = engine->load(first);
    auto newer = engine->load(second);
    test::await(std::move(newer));
    test::await(std::move(older));
    EXPECT_NEAR(engine->durationSeconds(), 0.4, 0.001);
    EXPECT_EQ(engine->url(), second);
    engine->stepFrames(20);
    EXPECT_TRUE(shows(9, 0.36));

    auto last = engine->load(first);
    engine.reset(); // pending reads must not write to it
    test::await(std::move(last));
}

TEST_F(PlayerEngineTest, ClampsSeeksAndStepsToTheClipAndThenToTheRange) {
    load(clip({.frames = 150}));
    engine->seek(-3);
    EXPECT_TRUE(shows(0, 0));
    engine->stepFrames(-1);
    EXPECT_TRUE(shows(0, 0));
    engine->playConstrained(2, 5);
    EXPECT_EQ(engine->currentSeconds(), 0);
    engine->seek(9);
    EXPECT_TRUE(shows(125, 5));
    engine->stepFrames(3);
    EXPECT_TRUE(shows(125, 5));
    engine->seek(1);
    EXPECT_TRUE(shows(50, 2));
    engine->stepFrames(-1);
    EXPECT_TRUE(shows(50, 2));
    for (int step = 0; step < 10; ++step) {
        engine->stepFrames(1);
    }
    EXPECT_TRUE(shows(60, 2.4));
    engine->playConstrained(6, 5);
    EXPECT_FALSE(engine->playbackConstraint());
    engine->playConstrained(1, 2);
    load(clip({.frames = 5}));
    EXPECT_FALSE(engine->playbackConstraint());
}

TEST_F(PlayerEngineTest, PausesAtTheOutPointOfARangeAndReturnsToItsInPoint) {
    load(clip({.frames = 50}));
    engine->seek(0.4);
    engine->playConstrained(0.4, 1.2);
    ASSERT_TRUE(shows(10, 0.4));
    for (int round = 0; round < 2; ++round) { // Space plays the range again
        engine->setRate(1);
        EXPECT_EQ(engine->rate(), 1);
        EXPECT_TRUE(eventually([&] {
            clock.advance(std::chrono::milliseconds(50)); // every report wakes this loop
            return engine->rate() == 0;
        }));
        EXPECT_TRUE(shows(10, 0.4));
    }
    for (const auto number : sink->numbers()) {
        EXPECT_LE(number, 30);
    }
    engine->seek(1.2);
    engine->setRate(1); // restarts from the end of the range
    EXPECT_TRUE(shows(10, 0.4));
}

TEST_F(PlayerEngineTest, PlaysAgainFromTheStartAtTheEndOfTheClip) {
    load(clip({.frames = 50, .rate = "24000/1001"}));
    const auto playToTheEnd = [this] {
        engine->setRate(1);
        EXPECT_TRUE(eventually([&] {
            clock.advance(std::chrono::milliseconds(50)); // every report wakes this loop
            return engine->rate() == 0;
        }));
        return shows(49, engine->durationSeconds());
    };
    ASSERT_TRUE(playToTheEnd());
    engine->setRate(-1);
    EXPECT_EQ(engine->currentSeconds(), engine->durationSeconds());
    engine->setRate(0);
    for (int round = 0; round < 2; ++round) {
        engine->setRate(1);
        EXPECT_EQ(engine->rate(), 1);
        EXPECT_TRUE(shows(0, 0));
        engine->setRate(0);
        engine->seek(engine->durationSeconds()); // rounded to the grid of seeks
    }
}

} // namespace corvane

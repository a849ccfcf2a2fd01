#pragma once

#include "media/MediaPlayer.h"
#include "support/TestFolder.h"
#include "support/TestMedia.h"
#include "support/TestPlayer.h"

#include <gmock/gmock.h>

#include <cmath>

namespace corvane::test {

using namespace std::chrono_literals;
using media::kHalfTick;
using media::MediaPlayer;
using media::MediaTime;

/// A player of generated clips, on a clock that the test advances.
class MediaPlayerTest : public testing::Test {
  protected:
    static constexpr double kFrame = 0.04; ///< seconds

    void start(MediaPlayer::Options options = {}) {
        options.clock = &clock;
        player = std::make_unique<MediaPlayer>(std::move(options));
        player->setSink(sink);
        player->addPeriodicTimeObserver(1ms, [this](MediaTime) { ++reports; });
    }

    QString clip(const ClipOptions &options = {.frames = 60, .bFrames = 2}) {
        return makeClip(folder.at(QStringLiteral("%1.mp4").arg(++clips)), options);
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

    TestFolder folder;
    int clips = 0;
    int reports = 0;
    TestMonotonicClock clock;
    std::shared_ptr<TestSink> sink = std::make_shared<TestSink>();
    std::unique_ptr<MediaPlayer> player;
};

} // namespace corvane::test

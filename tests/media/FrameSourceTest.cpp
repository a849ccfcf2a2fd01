#include "media/FrameSource.h"

#include "support/TestFolder.h"
#include "support/TestMedia.h"

#include <gtest/gtest.h>

#include <cmath>

namespace corvane::media {

namespace {

constexpr double kFrameSeconds = 0.04; ///< of the clips

} // namespace

TEST(FrameSourceTest, PlaysEvenlySpacedFramesBackwardIfNotAllFit) {
    const test::TestFolder folder;
    const auto path =
        test::makeClip(folder.at("clip.mp4"), {.frames = 300, .gop = 100, .bFrames = 2});
    constexpr qsizetype kLimit = 3'000'000; // about thirty frames
    FrameSource source(path, kLimit, {});
    auto frame = source.at(MediaTime::fromSeconds(20));
    ASSERT_TRUE(frame);
    int shown = 0;
    int reads = 0;
    while (frame) {
        const double time = frame->time.seconds();
        EXPECT_EQ(test::frameNumber(*frame->avFrame), int(std::lround(time / kFrameSeconds)));
        source.setFocus(*frame, FrameSource::Direction::backward);
        while (source.readAhead(false)) {
            ++reads;
            ASSERT_LE(source.cachedBytes(), kLimit);
        }
        const auto next = source.previousToPlay(*frame);
        ASSERT_TRUE(!next || next->time < frame->time);
        EXPECT_TRUE(next ? time - next->time.seconds() < 20 * kFrameSeconds : time == 0);
        frame = next;
        ++shown;
    }
    EXPECT_GE(shown, 24);
    EXPECT_LE(reads, 2 * 300); // no GOP is decoded more than twice
    const auto step = source.previous(*source.at(MediaTime::fromSeconds(6)));
    ASSERT_TRUE(step);
    EXPECT_EQ(test::frameNumber(*step->avFrame), 149) << "a step is exact all the same";
    source.setFocus(*step, FrameSource::Direction::backward);
    while (source.readAhead(true)) {
        ASSERT_LE(source.cachedBytes(), kLimit);
    }
    EXPECT_GT(source.cachedBytes(), kLimit / 2);
}

} // namespace corvane::media

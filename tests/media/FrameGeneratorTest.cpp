#include "media/FrameGenerator.h"

#include "media/FrameFilterGraph.h"
#include "media/MediaError.h"
#include "support/TestFolder.h"
#include "support/TestMedia.h"

#include <gtest/gtest.h>

using namespace corvane;
using namespace corvane::media;
using namespace corvane::test;

namespace {

QList<int> sizeOf(const RGBImage &image) {
    return {image.width, image.height};
}

const FrameGenerator::Options kThumbnail{.maximumSize = {160, 90}};

FrameHandle blankFrame(QSize size) {
    FrameHandle frame = makeFrame();
    frame->format = AV_PIX_FMT_YUV420P;
    frame->width = size.width();
    frame->height = size.height();
    check(av_frame_get_buffer(frame.get(), 0), "A frame can't be allocated");
    return frame;
}

} // namespace

TEST(FrameGeneratorTest, TurnsScalesAndFitsWithoutEnlarging) {
    const TestFolder folder;
    for (const int rotation : {90, 180, 270}) {
        SCOPED_TRACE(rotation);
        const QString path = makeClip(folder.at(QStringLiteral("%1.mov").arg(rotation)),
                                      {.frames = 3, .rotation = rotation});
        const RGBImage upright = FrameGenerator(path, kThumbnail).imageAt({1, 25});
        EXPECT_EQ(sizeOf(upright), (rotation == 180 ? QList{160, 90} : QList{51, 90}));
        EXPECT_EQ(frameNumber(upright, rotation / 90), 1);
        const RGBImage stored =
            FrameGenerator(path, {.appliesPreferredTrackTransform = false}).imageAt({1, 25});
        EXPECT_EQ(sizeOf(stored), (QList{320, 180}));
        EXPECT_EQ(frameNumber(stored), 1);
    }
    const QString odd =
        makeClip(folder.at("odd.avi"),
                 {.codec = "ffv1", .size = {37, 21}, .frames = 1, .pixelFormat = "yuv444p"});
    const RGBImage only = FrameGenerator(odd, kThumbnail).imageAt({5, 1});
    EXPECT_EQ(sizeOf(only), (QList{37, 21}));
    EXPECT_EQ(frameNumber(only), 0);
    const QString oblong =
        makeClip(folder.at("oblong.mkv"), {.frames = 1, .arguments = "-aspect 64:18"});
    EXPECT_EQ(sizeOf(FrameGenerator(oblong, {}).imageAt({})), (QList{640, 180}));
}

TEST(FrameGeneratorTest, MakesABatchOfStillsWithinTheTolerance) {
    const TestFolder folder;
    for (const int gop : {12, 300}) {
        const QString path = makeClip(folder.at(QStringLiteral("%1.mp4").arg(gop)),
                                      {.frames = 400, .gop = gop, .bFrames = 2});
        for (const double tolerance : {0.0, 0.1}) {
            SCOPED_TRACE(testing::Message() << gop << " " << tolerance);
            FrameGenerator::Options options = kThumbnail;
            options.tolerance = tolerance;
            FrameGenerator generator(path, options);
            QList<MediaTime> times;
            for (const int frame : {390, 3, 120, 4, 250, 311, 0, 399}) {
                times.append(MediaTime::fromSeconds(frame / 25.0));
            }
            qsizetype taken = 0;
            generator.images(times, [&](qsizetype index, std::optional<RGBImage> image) {
                ++taken;
                ASSERT_TRUE(image);
                EXPECT_NEAR(frameNumber(*image).value_or(-99) / 25.0, times.at(index).seconds(),
                            tolerance + 1e-3);
            });
            EXPECT_EQ(taken, times.size());
        }
    }
}

TEST(FrameGeneratorTest, FailsWithoutAVideoTrack) {
    const TestFolder folder;
    const QString sound =
        makeClip(folder.at("a.m4a"), {.frames = 0, .audioTracks = 1, .audioSeconds = 1});
    EXPECT_THROW(FrameGenerator(sound, {}), MediaError);
    std::stop_source stop;
    FrameGenerator stopped(makeClip(folder.at("a.mp4")), {}, stop.get_token());
    stop.request_stop();
    EXPECT_THROW(stopped.images({{1, 1}}, [](qsizetype, std::optional<RGBImage>) {}), Cancelled);
    EXPECT_THROW(RGBImage().encodedJPEG(0.8), MediaError);
}

TEST(FrameFilterGraphTest, ConvertsAgainAfterAFormatThatItCannotConvert) {
    FrameFilterGraph graph(VideoFormat{.size = {64, 36}}, {1, 25});
    EXPECT_EQ(graph.convert(blankFrame({128, 72}))->width, 64);
    FrameHandle unknown = blankFrame({128, 72});
    unknown->format = AV_PIX_FMT_NONE;
    EXPECT_THROW(graph.convert(std::move(unknown)), MediaError);
    EXPECT_EQ(graph.convert(blankFrame({128, 72}))->width, 64);
}

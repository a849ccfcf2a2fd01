#include "media/VideoReader.h"

#include "support/TestFolder.h"
#include "support/TestMedia.h"

#include <gtest/gtest.h>

#include <random>

using namespace corvane;
using namespace corvane::media;
using corvane::test::ClipOptions;
using corvane::test::frameNumber;
using corvane::test::makeClip;
using corvane::test::runFFmpeg;
using corvane::test::TestFolder;

namespace {

QString text(const char *ascii) {
    return QString::fromLatin1(ascii);
}

/// Which frame a reader gives: its number, or -1 for none and -2 for one that can't be read.
int numberOf(const std::optional<VideoFrame> &frame) {
    return frame ? frameNumber(*frame->picture).value_or(-2) : -1;
}

/// Seeks to many times in random order, each followed by a few steps, and compares what comes with
/// the number that `named` gives for the time. `timeOf` gives a frame's begin.
void expectExact(VideoReader &reader, int frames, const std::function<double(int)> &timeOf) {
    std::mt19937 random(7); // NOLINT: the same at every run
    for (int round = 0; round < 24; ++round) {
        const int wanted = int(random() % unsigned(frames));
        const double after = timeOf(wanted + 1) - timeOf(wanted);
        const double within = double(random() % 100) / 100 * (after - 4 * kHalfTick);
        const double seconds = timeOf(wanted) + (round % 3 == 0 ? 0 : within);
        auto frame = reader.frameAt(MediaTime::fromSeconds(seconds));
        ASSERT_EQ(numberOf(frame), wanted) << seconds;
        EXPECT_NEAR(frame->time.seconds(), timeOf(wanted), 1e-3);
        for (int step = 1; step <= round % 4; ++step) {
            frame = reader.next();
            ASSERT_EQ(numberOf(frame), wanted + step < frames ? wanted + step : -1)
                << "from " << wanted;
        }
    }
}

struct Kind {
    const char *name;
    ClipOptions options;
};

} // namespace

TEST(VideoReaderTest, GivesTheFrameThatATimeNamesInEveryKindOfFile) {
    const auto list = [](const char *words) { return text(words).split(QLatin1Char(' ')); };
    const Kind kinds[] = {
        {"h264.mp4", {.bFrames = 2, .audioTracks = 1}},
        {"open.mp4", {.bFrames = 3, .openGop = true}},
        {"h264.m4v", {.rate = text("30000/1001"), .gop = 300}},
        {"h264.mkv", {.bFrames = 2, .audioTracks = 1}},
        {"h264.avi", {.bFrames = 2}},
        {"h264.ts", {.bFrames = 2, .audioTracks = 1}},
        {"open.ts", {.bFrames = 3, .openGop = true}},
        {"h264.mts", {.interlaced = true}},
        {"hevc.mp4", {.codec = text("libx265"), .bFrames = 3}},
        {"open.mov",
         {.codec = text("libx265"),
          .bFrames = 3,
          .openGop = true,
          .pixelFormat = text("yuv420p10le")}},
        {"hevc.m2ts", {.codec = text("libx265"), .bFrames = 2}},
        {"prores.mov",
         {.codec = text("prores_ks"),
          .pixelFormat = text("yuv422p10le"),
          .audioTracks = 2,
          .audioCodec = text("pcm_s16le"),
          .arguments = list("-timecode 10:00:00:00")}},
        {"dnxhr.mov",
         {.codec = text("dnxhd"),
          .pixelFormat = text("yuv422p"),
          .arguments = list("-profile:v dnxhr_sq")}},
        {"dnxhd.mxf",
         {.codec = text("dnxhd"),
          .size = {1280, 720},
          .frames = 12,
          .pixelFormat = text("yuv422p"),
          .arguments = list("-b:v 90M")}},
        {"mpeg2.mxf", {.codec = text("mpeg2video"), .bFrames = 2}},
        {"mpeg2.mpg", {.codec = text("mpeg2video"), .bFrames = 2}},
        {"mpeg2.ts",
         {.codec = text("mpeg2video"),
          .bFrames = 2,
          .interlaced = true,
          .pixelFormat = text("yuv422p")}},
        {"mjpeg.avi", {.codec = text("mjpeg"), .pixelFormat = text("yuvj422p")}},
        {"mpeg4.avi", {.codec = text("mpeg4")}},
        {"vp9.mkv", {.codec = text("libvpx-vp9")}},
        {"av1.mp4", {.codec = text("libsvtav1")}},
    };
    const TestFolder folder;
    for (const Kind &kind : kinds) {
        SCOPED_TRACE(kind.name);
        const QString path = makeClip(folder.at(text(kind.name)), kind.options);
        VideoReader reader(path, {});
        const double rate = kind.options.rate == text("25") ? 25 : 30000 / 1001.0;
        EXPECT_NEAR(reader.nominalFrameRate(), rate, 1e-6);
        EXPECT_EQ(reader.storedSize(), kind.options.size);
        // A stream's sound can begin a little before its pictures.
        const double delay = reader.frameAt({}).value_or(VideoFrame()).time.seconds();
        EXPECT_LT(delay, 0.05);
        expectExact(reader, kind.options.frames, [&](int number) { return delay + number / rate; });
    }
}

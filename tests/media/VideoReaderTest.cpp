#include "media/VideoReader.h"

#include "media/FrameDecoder.h"
#include "media/MediaAsset.h"
#include "media/MediaInput.h"
#include "media/NonReferenceDetector.h"
#include "support/TestFolder.h"
#include "support/TestMedia.h"

#include <gtest/gtest.h>

#include <QtEndian>

#include <random>

using namespace corvane;
using namespace corvane::media;
using namespace corvane::test;

namespace {

/// The number drawn into a frame; -1 for nullopt, -2 if it is illegible.
int numberOf(const std::optional<VideoFrame> &frame) {
    return frame ? frameNumber(*frame->avFrame).value_or(-2) : -1;
}

/// Seeks to random times and steps on a few frames from each, in a clip of the frames `first` to
/// `last` whose start times `timeOf` returns.
void expectExact(VideoReader &reader, int first, int last,
                 const std::function<double(int)> &timeOf) {
    std::mt19937 random(7); // NOLINT: the same at every run
    for (int round = 0; round < 24; ++round) {
        const int wanted = first + int(random() % unsigned(last - first + 1));
        const double after = timeOf(wanted + 1) - timeOf(wanted);
        const double within = double(random() % 100) / 100 * (after - 4 * kHalfTick);
        const double seconds = timeOf(wanted) + (round % 3 == 0 ? 0 : within);
        auto frame = reader.frameAt(MediaTime::fromSeconds(seconds));
        ASSERT_EQ(numberOf(frame), wanted) << seconds;
        EXPECT_NEAR(frame->time.seconds(), timeOf(wanted), 1e-3);
        if (wanted < last) {
            EXPECT_NEAR(frame->end.seconds(), timeOf(wanted + 1), 1e-3);
        }
        for (int step = 1; step <= round % 4; ++step) {
            frame = reader.next();
            ASSERT_EQ(numberOf(frame), wanted + step <= last ? wanted + step : -1)
                << "from " << wanted;
        }
    }
}

/// The number of packets detected as non-reference, and the number of frames that a decoder leaves
/// out when it skips non-reference frames.
std::pair<int, int> nonReferenceFrames(const QString &path) {
    MediaInput input(path, MediaInput::Depth::Timestamps);
    const AVStream &stream = *firstVideoStream(*input.context());
    const NonReferenceDetector detector(*stream.codecpar);
    FrameDecoder decoder(stream, {.threads = 1});
    int detected = 0;
    int skipped = 0;
    const auto receive = [&] {
        while (decoder.receive()) {
            --skipped;
        }
    };
    const PacketHandle packet = makePacket();
    while (input.read(*packet)) {
        if (packet->stream_index == stream.index) {
            detected += detector.isNonReference(*packet) ? 1 : 0;
            ++skipped;
            decoder.send(packet.get(), true);
            receive();
        }
    }
    decoder.send(nullptr);
    receive();
    return {detected, skipped};
}

struct Kind {
    const char *name;
    ClipOptions options;
    const char *codec = "avc1";      ///< the code of the video track
    const char *audioCodec = "mp4a"; ///< of the audio tracks, if there are any
};

std::string codeText(quint32 code) {
    const auto bytes = qToBigEndian(code);
    return {reinterpret_cast<const char *>(&bytes), sizeof bytes};
}

void expectTracks(const MediaAsset &asset, const Kind &kind, double rate) {
    ASSERT_TRUE(asset.duration);
    // A program stream doesn't store its duration, which is estimated from its last packets.
    const double tolerance = std::string_view(kind.name).ends_with(".mpg") ? 0.13 : 0.08;
    EXPECT_NEAR(asset.duration->seconds(), kind.options.frames / rate, tolerance);
    ASSERT_EQ(asset.videoTracks.size(), 1);
    const VideoTrack &video = asset.videoTracks.first();
    EXPECT_EQ(video.naturalSize, kind.options.size);
    EXPECT_NEAR(video.nominalFrameRate, rate, 1e-3);
    EXPECT_GT(video.estimatedDataRate, 1000);
    EXPECT_EQ(codeText(video.mediaSubType), kind.codec);
    ASSERT_EQ(asset.audioTracks.size(), kind.options.audioTracks);
    for (const AudioTrack &audio : asset.audioTracks) {
        EXPECT_EQ(codeText(audio.mediaSubType), kind.audioCodec);
    }
}

} // namespace

TEST(VideoReaderTest, FindsTheTracksAndTheFrameAtATimeInEveryKindOfFile) {
    const char *pcm = "pcm_s16le";
    const Kind kinds[] = {
        {"h264.mp4", {.bFrames = 2, .audioTracks = 2}},
        {"h264.mov", {.rate = "24000/1001", .audioTracks = 1, .audioCodec = pcm}, "avc1", "sowt"},
        {"open.mp4", {.bFrames = 3, .openGop = true}},
        {"fragments.mp4", {.arguments = "-movflags frag_keyframe+empty_moov"}}, // for a power cut
        {"h264.m4v", {.rate = "30000/1001", .gop = 300}},
        {"h264.mkv", {.bFrames = 2, .audioTracks = 1}},
        {"h264.avi", {.bFrames = 2}, "H264"},
        {"h264.ts", {.bFrames = 2, .audioTracks = 1}},
        {"open.ts", {.bFrames = 3, .openGop = true}},
        {"h264.mts", {.interlaced = true}},
        {"hevc.mp4", {.codec = "libx265", .bFrames = 3}, "hev1"},
        {"hevc.mkv", {.codec = "libx265", .audioTracks = 1}, "hvc1"},
        {"open.mov",
         {.codec = "libx265",
          .bFrames = 3,
          .openGop = true,
          .pixelFormat = "yuv420p10le",
          .audioTracks = 1,
          .arguments = "-tag:v hvc1"},
         "hvc1"},
        {"hevc.m2ts", {.codec = "libx265", .bFrames = 2}, "HEVC"},
        {"prores.mov",
         {.codec = "prores_ks",
          .pixelFormat = "yuv422p10le",
          .audioTracks = 2,
          .audioCodec = pcm,
          .arguments = "-timecode 10:00:00:00"},
         "apch",
         "sowt"},
        {"dnxhr.mov",
         {.codec = "dnxhd", .pixelFormat = "yuv422p", .arguments = "-profile:v dnxhr_sq"},
         "AVdh"},
        {"dnxhd.mxf",
         {.codec = "dnxhd",
          .size = {1280, 720},
          .frames = 12,
          .pixelFormat = "yuv422p",
          .arguments = "-b:v 90M"},
         "AVdn"},
        {"mpeg2.mxf",
         {.codec = "mpeg2video", .bFrames = 2, .audioTracks = 1, .audioCodec = pcm},
         "mp2v",
         "lpcm"},
        {"mpeg2.mpg", {.codec = "mpeg2video", .bFrames = 2}, "mp2v"},
        {"mpeg2.ts",
         {.codec = "mpeg2video", .bFrames = 2, .interlaced = true, .pixelFormat = "yuv422p"},
         "mp2v"},
        {"mjpeg.avi", {.codec = "mjpeg", .pixelFormat = "yuvj422p"}, "MJPG"},
        {"mpeg4.avi", {.codec = "mpeg4", .audioTracks = 1, .audioCodec = pcm}, "FMP4", "lpcm"},
        {"vp9.mkv", {.codec = "libvpx-vp9"}, "vp09"},
        {"av1.mp4", {.codec = "libsvtav1"}, "av01"},
        {"odd.mkv", {.codec = "ffv1", .size = {37, 21}}, "FFV1"},
    };
    const TestFolder folder;
    for (const Kind &kind : kinds) {
        SCOPED_TRACE(kind.name);
        const QString path = makeClip(folder.at(kind.name), kind.options);
        VideoReader reader(path, {.isSingleFrameRead = kind.options.bFrames > 0});
        const QByteArrayList ratio = kind.options.rate.split('/');
        const double rate = ratio.first().toDouble() / ratio.value(1, "1").toDouble();
        EXPECT_NEAR(reader.nominalFrameRate(), rate, 1e-6);
        expectTracks(MediaAsset::read(path), kind, rate);
        // Audio can start slightly before the video.
        const double delay = reader.frameAt({}).value_or(VideoFrame()).time.seconds();
        EXPECT_LT(delay, 0.05);
        expectExact(reader, 0, kind.options.frames - 1,
                    [&](int number) { return delay + number / rate; });
    }
}

TEST(VideoReaderTest, DetectsNonReferenceFrames) {
    const TestFolder folder;
    const Kind kinds[] = {
        {"plain.mp4", {.bFrames = 2}},
        {"plain.ts", {.bFrames = 2, .audioTracks = 1}},
        {"hevc.mkv", {.codec = "libx265", .bFrames = 3}},
        {"hevc.m2ts", {.codec = "libx265", .bFrames = 2}},
        {"none.mp4", {}},
    };
    for (const Kind &kind : kinds) {
        const auto [detected, skipped] =
            nonReferenceFrames(makeClip(folder.at(kind.name), kind.options));
        EXPECT_EQ(detected, skipped) << kind.name;
        EXPECT_EQ(detected > 10, kind.options.bFrames > 0) << kind.name;
    }
}

TEST(VideoReaderTest, KeepsTheTimestampsOfUnevenDelayedAndEditedClips) {
    const TestFolder folder;
    const auto uneven = [](int number) { return (number * 40 + number % 3 * 10) / 1000.0; };
    for (const char *name : {"uneven.mp4", "uneven.mkv"}) {
        SCOPED_TRACE(name);
        VideoReader reader(
            makeClip(folder.at(name),
                     {.bFrames = 2, .milliseconds = "N*40+mod(N,3)*10", .audioTracks = 1}),
            {});
        const double begin = reader.frameAt({}).value_or(VideoFrame()).time.seconds();
        expectExact(reader, 0, 49, [&](int number) { return begin + uneven(number); });
    }
    for (const char *name : {"late.mov", "late.mkv", "late.ts"}) {
        SCOPED_TRACE(name);
        VideoReader reader(makeClip(folder.at(name), {.videoDelay = 0.5, .audioTracks = 1}), {});
        const double begin = reader.frameAt({}).value_or(VideoFrame()).time.seconds();
        EXPECT_NEAR(begin, 0.5, 0.03);
        expectExact(reader, 0, 49, [&](int number) { return begin + number / 25.0; });
    }
    // The frames before the in point are hidden by an edit list.
    const QString whole = makeClip(folder.at("whole.mp4"), {.gop = 50, .bFrames = 2});
    const QString cut = folder.at("cut.mp4");
    runFFmpeg(QStringLiteral("-ss 0.48 -i %1 -c copy %2").arg(whole, cut));
    VideoReader reader(cut, {});
    expectExact(reader, 12, 49, [](int number) { return (number - 12) / 25.0; });
}

TEST(VideoReaderTest, ReturnsTheFirstOrLastFrameForTimesOutOfRange) {
    const TestFolder folder;
    for (const int frames : {1, 30}) {
        for (const char *name : {"a.mp4", "a.ts", "a.mkv"}) {
            SCOPED_TRACE(testing::Message() << name << " " << frames);
            VideoReader reader(makeClip(folder.at(name), {.frames = frames, .bFrames = 2}), {});
            EXPECT_EQ(numberOf(reader.frameAt({1000, 1})), frames - 1);
            EXPECT_EQ(numberOf(reader.next()), -1);
            EXPECT_EQ(numberOf(reader.next()), -1);
            EXPECT_EQ(numberOf(reader.frameAt({-1000, 1})), 0);
            EXPECT_EQ(numberOf(reader.next()), frames > 1 ? 1 : -1);
        }
    }
}

TEST(VideoReaderTest, ReturnsNoIncompleteFrameOfAStreamThatBeginsInTheMiddleOfAGop) {
    const TestFolder folder;
    const QString whole =
        makeClip(folder.at("whole.ts"), {.frames = 100, .bFrames = 3, .openGop = true});
    const QByteArray bytes = folder.read("whole.ts");
    constexpr qsizetype kPacket = 188;
    const qsizetype from = bytes.size() * 2 / 5 / kPacket * kPacket;
    VideoReader reader(folder.write("part.ts", bytes.mid(from)), {});
    QList<VideoFrame> frames;
    while (const auto frame = reader.next()) {
        frames.append(*frame);
    }
    ASSERT_GT(frames.size(), 20);
    const int first = numberOf(frames.first());
    EXPECT_GT(first, 20);
    for (qsizetype index = 0; index < frames.size(); index += 7) {
        EXPECT_EQ(numberOf(frames.at(index)), first + index);
        EXPECT_EQ(numberOf(reader.frameAt(frames.at(index).time)), first + index);
    }
    EXPECT_EQ(numberOf(frames.last()), 99);
}

TEST(VideoReaderTest, ReturnsAnAdjacentFrameInsteadOfADamagedOne) {
    const TestFolder folder;
    makeClip(folder.at("whole.mp4"), {.gop = 5});
    // The media data begins with the packet of the first frame.
    QByteArray bytes = folder.read("whole.mp4");
    const qsizetype data = bytes.indexOf("mdat");
    ASSERT_GT(data, 0);
    const qsizetype slice = bytes.indexOf(QByteArray::fromHex("6588"), data);
    ASSERT_GT(slice, 0);
    for (qsizetype index = 8; index < 40; ++index) {
        bytes[slice + index] = char(0xff);
    }
    const QString path = folder.write("damaged.mp4", bytes);
    for (const bool single : {false, true}) {
        SCOPED_TRACE(single);
        VideoReader reader(path, {.isSingleFrameRead = single});
        const auto frame = reader.frameAt({}, 0.05);
        ASSERT_TRUE(frame);
        EXPECT_EQ(frame->time, MediaTime({1, 25}));
    }
}

TEST(VideoReaderTest, ReturnsTheLastUndamagedFrameBeforeADamagedEnd) {
    const TestFolder folder;
    makeClip(folder.at("whole.mp4"), {.frames = 30, .gop = 10});
    QByteArray bytes = folder.read("whole.mp4");
    const qsizetype end = bytes.lastIndexOf("moov") - 4;
    // Overwrites the last keyframe's slice, found by its length, after the slice header, so that it
    // still counts as a keyframe.
    qsizetype slice = end;
    do {
        slice = bytes.lastIndexOf(QByteArray::fromHex("6588"), slice - 1);
        ASSERT_GT(slice, 4);
    } while (bytes.at(slice - 4) != 0 || bytes.at(slice - 3) != 0);
    const qsizetype from = slice + 12;
    bytes.replace(from, end - from, QByteArray(end - from, char(0xff)));
    VideoReader reader(folder.write("damaged.mp4", bytes), {});
    const int last = numberOf(reader.frameAt({1000, 1}));
    EXPECT_EQ(last, 19);
    EXPECT_EQ(numberOf(reader.frameAt({28, 25})), last);
    EXPECT_EQ(numberOf(reader.frameAt({5, 25})), 5);
}

TEST(VideoReaderTest, StopsWhenTheStopTokenIsTriggered) {
    const TestFolder folder;
    const QString path = makeClip(folder.at("a.mp4"));
    std::stop_source stop;
    VideoReader reader(path, {}, stop.get_token());
    EXPECT_EQ(numberOf(reader.next()), 0);
    stop.request_stop();
    EXPECT_THROW(reader.frameAt({1, 1}), Cancelled);
    EXPECT_THROW(VideoReader(path, {}, stop.get_token()), Cancelled);
    reader.setStop({});
    EXPECT_EQ(numberOf(reader.next()), 1);
    EXPECT_EQ(numberOf(reader.frameAt({1, 1})), 25);
}

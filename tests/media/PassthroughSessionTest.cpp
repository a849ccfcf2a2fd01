#include "SessionFixture.h"
#include "support/FaultyFileSystem.h"

#include <gmock/gmock.h>

#include <QFileInfo>

#include <cerrno>

using namespace corvane;
using namespace corvane::test;
using media::ExportPreset;
using testing::HasSubstr;

namespace {

constexpr auto kPassthrough = ExportPreset::passthrough;

class PassthroughSessionTest : public SessionTest {};

} // namespace

TEST_F(PassthroughSessionTest, ShowsEveryFrameOfTheCutOfEveryKindOfSource) {
    const std::tuple<const char *, ClipOptions> sources[] = {
        {"plain.mp4", {.frames = 80}},
        {"b.mov", {.frames = 80, .gop = 300, .bFrames = 3, .audioTracks = 2}},
        {"open.mkv", {.frames = 80, .gop = 10, .bFrames = 2, .openGop = true}},
        {"b.mts", {.frames = 80, .gop = 12, .bFrames = 2, .audioTracks = 1, .audioCodec = "ac3"}},
        {"hevc.mp4", {.codec = "libx265", .frames = 80, .gop = 24, .bFrames = 3}},
        {"vp9.mkv", {.codec = "libvpx-vp9", .frames = 80, .audioTracks = 1, .audioCodec = "flac"}},
        {"turned.mov", {.frames = 80, .bFrames = 1, .rotation = 270}},
        {"mpeg2.mpg", {.codec = "mpeg2video", .frames = 80, .bFrames = 2}},
        {"long.mxf", {.codec = "mpeg2video", .frames = 80, .bFrames = 2}},
        {"late.mp4", {.frames = 80, .bFrames = 2, .audioTracks = 1, .audioSeconds = 5}},
        {"b.avi", {.frames = 80, .gop = 12, .bFrames = 2}},
        {"intra.mov",
         {.codec = "prores_ks",
          .frames = 80,
          .pixelFormat = "yuv422p10le",
          .audioTracks = 1,
          .audioCodec = "pcm_s16le"}},
    };
    for (const auto &[name, options] : sources) {
        SCOPED_TRACE(name);
        const QString source = clip(name, options);
        EXPECT_EQ(exported(source, ExportPreset::highestQuality, frameRange(31, 52)), "");
        EXPECT_EQ(shownFrames(), numbers(31, 21));
        EXPECT_THAT(probed("v:0", "stream=start_time,duration"),
                    testing::StartsWith("0.000000,0.840000"));
        EXPECT_EQ(exported(source, ExportPreset::highestQuality), "");
        EXPECT_EQ(shownFrames(), numbers(0, 80));
        if (options.codec == "prores_ks" || source.endsWith(QLatin1String(".avi"))) {
            continue; // refused: see below
        }
        EXPECT_EQ(exported(source, kPassthrough, frameRange(31, 52)), "");
        const QList<int> shown = shownFrames();
        EXPECT_EQ(shown.mid(0, 21), numbers(31, 21));
        // Frames after the cut stay if others refer to them.
        EXPECT_LE(shown.size(), 21 + options.bFrames);
        const double lead =
            std::abs(QByteArray::fromStdString(probed("v:0", "stream=start_time")).toDouble());
        EXPECT_LT(lead, 0.002);
        const std::string rotation = probed("v:0", "stream_side_data=rotation");
        EXPECT_EQ(rotation, probedFile(source, "v:0", "stream_side_data=rotation"));
        EXPECT_EQ(rotation.empty(), options.rotation == 0);
        if (options.audioTracks > 0) {
            const auto audio =
                QByteArray::fromStdString(probed("a:0", "stream=start_time,duration")).split(',');
            EXPECT_LT(std::abs(audio.at(0).toDouble()), 0.03);
            EXPECT_NEAR(audio.at(1).toDouble(), 0.84, 0.06);
        }
    }
}

TEST_F(PassthroughSessionTest, ShowsTheLastFrameInARangeThatBeginsDuringIt) {
    const auto range = media::MediaTimeRange::fromSeconds(1.97, 1.99);
    for (const char *name : {"a.mp4", "b.mkv"}) {
        const QString source = clip(name, {.gop = 20, .bFrames = 2, .audioTracks = 1});
        EXPECT_EQ(exported(source, kPassthrough, range), "") << name;
        EXPECT_EQ(shownFrames().mid(0, 1), numbers(49, 1)) << name;
        EXPECT_EQ(exported(source, ExportPreset::highestQuality, range), "") << name;
        EXPECT_EQ(shownFrames(), numbers(49, 1)) << name;
        EXPECT_EQ(exported(source, kPassthrough, media::MediaTimeRange::fromSeconds(3, 4)),
                  "The source shows nothing in this range.");
    }
}

TEST_F(PassthroughSessionTest, ContinuesWhenTimestampsRestart) {
    clip("a.ts", {.frames = 60, .bFrames = 2, .audioTracks = 1});
    const QByteArray once = folder.read("a.ts");
    const QString twice = folder.write("b.ts", once + once);
    for (const ExportPreset preset : {kPassthrough, ExportPreset::highestQuality}) {
        EXPECT_EQ(exported(twice, preset), "");
        EXPECT_GE(shownFrames().size(), 118);
        EXPECT_EQ(shownFrames().mid(0, 58) + shownFrames().last(50),
                  numbers(0, 58) + numbers(10, 50));
        for (const char *stream : {"v:0", "a:0"}) {
            EXPECT_NEAR(std::atof(probed(stream, "stream=duration").c_str()), 4.8, 0.2) << stream;
        }
    }
}

TEST_F(PassthroughSessionTest, CopiesItsOwnOutput) {
    const QString source = clip("b.mov", {.frames = 60, .gop = 60, .bFrames = 2, .audioTracks = 1});
    EXPECT_EQ(exported(source, kPassthrough, frameRange(25, 50)), "");
    const QString cut = folder.write("cut.mp4", folder.read("out.mp4"));
    const QList<int> shown = shownFrames();
    EXPECT_EQ(exported(cut, kPassthrough), "");
    EXPECT_EQ(shownFrames(), shown);
    EXPECT_EQ(exported(cut, ExportPreset::highestQuality, frameRange(5, 10)), "");
    EXPECT_EQ(shownFrames(), numbers(30, 5)) << "time 0 is the cut's, not the hidden keyframe's";
}

TEST_F(PassthroughSessionTest, RefusesCodecsThatMpeg4DoesNotSupportBeforeWriting) {
    const std::tuple<const char *, ClipOptions> sources[] = {
        {"prores.mov", {.codec = "prores_ks", .frames = 2, .pixelFormat = "yuv422p10le"}},
        {"dnx.mov",
         {.codec = "dnxhd",
          .size = {1920, 1080},
          .frames = 2,
          .pixelFormat = "yuv422p",
          .arguments = "-b:v 120M"}},
        {"ffv1.mkv", {.codec = "ffv1", .frames = 2}},
        {"pcm.mov", {.frames = 2, .audioTracks = 1, .audioCodec = "pcm_s24le"}},
    };
    for (const auto &[name, options] : sources) {
        const QString source = clip(name, options);
        EXPECT_THROW(media::ffmpegExportSessions().create(source, kPassthrough),
                     media::UnsupportedSource)
            << name;
        EXPECT_TRUE(media::ffmpegExportSessions().create(source, ExportPreset::hd1920x1080))
            << name;
    }
    EXPECT_EQ(exported(clip("b.avi", {.bFrames = 2}), kPassthrough),
              "The source doesn't tell when its frames are shown.");
}

TEST_F(PassthroughSessionTest, KeepsTheCameraMetadataAndAdvancesTheTimecode) {
    const QByteArray facts =
        "-metadata creation_time=2024-05-01T09:30:00Z -movflags use_metadata_tags "
        "-metadata com.apple.quicktime.make=Maker -metadata com.apple.quicktime.model=M-1 "
        "-metadata com.apple.quicktime.location.ISO6709=+48.1+011.5/ -timecode ";
    const std::tuple<const char *, const char *, const char *, double> table[] = {
        {"24000/1001", "01:00:00:00", "01:00:01:06", 24000 / 1001.0},
        {"30000/1001", "01:00:59;10", "01:01:00;12", 30000 / 1001.0},
        {"25", "23:59:59:20", "00:00:01:00", 25},
    };
    for (const auto &[rate, start, expected, perSecond] : table) {
        const QString source =
            clip("tc.mov", {.frames = 60, .rate = rate, .bFrames = 1, .arguments = facts + start});
        for (const ExportPreset preset : {kPassthrough, ExportPreset::highestQuality}) {
            EXPECT_EQ(exported(source, preset, frameRange(30, 50, perSecond)), "");
            EXPECT_EQ(probed("v:0", "stream_tags=timecode"), expected) << rate;
            const std::string tags = probed("v:0", "format_tags");
            for (const char *fact : {"2024-05-01T09:30:00", "Maker", "M-1", "+48.1+011.5/"}) {
                EXPECT_THAT(tags, HasSubstr(fact));
            }
        }
    }
}

TEST_F(PassthroughSessionTest, ReportsEveryFailedAccessToTheOutput) {
    const QString source =
        clip("big.mp4", {.size = {640, 360}, .frames = 50, .arguments = "-qp 1"});
    const std::pair<const char *, std::function<void(FaultyFileSystem &)>> faults[] = {
        {"No space left on device", [](auto &files) { files.setFreeSpace(2'000); }},
        {"Input/output error", [](auto &files) { files.setBytesPerWrite(0); }},
        {"Input/output error", [](auto &files) { files.setBytesPerWrite(1); }},
    };
    for (const ExportPreset preset : {kPassthrough, ExportPreset::highestQuality}) {
        for (const auto &[error, inject] : faults) {
            FaultyFileSystem files;
            inject(files);
            const FileSystemScope scope(files);
            EXPECT_EQ(exported(source, preset),
                      std::string("The output can't be written: ") + error);
        }
    }
    FaultyFileSystem files;
    const FileSystemScope scope(files);
    int call = 0;
    do {
        files.failAt(++call, EIO);
    } while (!exported(source, kPassthrough).empty());
    EXPECT_GT(call, files.calls()) << "only a run without a failure succeeds";
}

TEST_F(PassthroughSessionTest, RefusesAnOutputThatCannotBeReadBackToItsEnd) {
    const QString source = clip("a.mp4", {.frames = 80, .audioTracks = 1});
    FaultyFileSystem files;
    const FileSystemScope scope(files);
    files.setObserver([&](const QString &operation, const QString &path) {
        if (operation == QLatin1String("close") && path == output) {
            QFile::resize(path, QFileInfo(path).size() - 100);
        }
    });
    EXPECT_THAT(exported(source, kPassthrough), HasSubstr("The finished file is incomplete"));
}

TEST_F(PassthroughSessionTest, ReportsASourceThatEndsBeforeItsSize) {
    const QString source = clip(
        "long.mp4", {.size = {640, 360}, .frames = 80, .arguments = "-qp 1 -movflags +faststart"});
    FaultyFileSystem files;
    files.setReadableBytes(QFileInfo(source).size() / 2);
    const FileSystemScope scope(files);
    for (const ExportPreset preset : {kPassthrough, ExportPreset::highestQuality}) {
        EXPECT_EQ(exported(source, preset), "The source can't be read: Input/output error");
    }
}

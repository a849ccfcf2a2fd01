#include "SessionFixture.h"

#include "media/FrameGenerator.h"

#include <gmock/gmock.h>

#include <cmath>
#include <thread>

using namespace corvane;
using namespace corvane::test;
using media::ExportPreset;
using testing::HasSubstr;

namespace {

constexpr auto kAccurate = ExportPreset::highestQuality;
constexpr auto kHD = ExportPreset::hd1920x1080;

class TranscodeSessionTest : public SessionTest {
  protected:
    /// The first loud sample of the output's audio at 48 kHz; -1 if there is none.
    qsizetype clickSample() const {
        const QByteArray sound =
            ran("ffmpeg",
                QStringLiteral("-v error -i %1 -map 0:a:0 -f s16le -ar 48000 -ac 1 -").arg(output));
        const auto *samples = reinterpret_cast<const qint16 *>(sound.constData());
        for (qsizetype i = 0; i < sound.size() / 2; ++i) {
            if (std::abs(samples[i]) > 8000) {
                return i;
            }
        }
        return -1;
    }
};

} // namespace

TEST_F(TranscodeSessionTest, KeepsTheTimestampsOfAVariableFrameRate) {
    // Pairs 20 ms apart, 100 ms from pair to pair; then one frame of two seconds.
    const QString source =
        clip("vfr.mkv", {.frames = 30,
                         .gop = 300,
                         .bFrames = 2,
                         .milliseconds = "floor(N/2)*100+mod(N,2)*20+gte(N,20)*2000"});
    EXPECT_EQ(exported(source, kAccurate, media::MediaTimeRange{{120}, {420}}), "");
    EXPECT_EQ(shownFrames(), numbers(4, 10));
    const std::string times = probed("v:0", "frame=pts_time");
    EXPECT_THAT(times, testing::StartsWith("0.000000, 0.020000 0.100000 0.120000 0.200000"));
    // In point in the middle of the long frame.
    EXPECT_EQ(exported(source, kAccurate, media::MediaTimeRange{{1200}, {1860}}), "");
    EXPECT_EQ(shownFrames(), numbers(19, 3));
    EXPECT_THAT(probed("v:0", "frame=pts_time"), HasSubstr("1.000000 1.020000"));
    EXPECT_EQ(exported(source, kAccurate, media::MediaTimeRange{{900}, {1200}}), "");
    EXPECT_EQ(shownFrames(), numbers(19, 1));
    EXPECT_EQ(probed("v:0", "stream=duration"), "0.500000") << "no longer than the range";
}

TEST_F(TranscodeSessionTest, CutsTheAudioSampleAccurately) {
    const QString source = folder.at("click.mov");
    for (const char *codec : {"pcm_s16le", "aac"}) {
        clip("video.mp4", {.frames = 100, .gop = 50, .bFrames = 2});
        // A click of one millisecond at 2 s.
        runFFmpeg(QStringLiteral("-i %1 -f lavfi -i aevalsrc=exprs='gte(t\\,2)*lt(t\\,2.001)*0.8':"
                                 "s=48000:d=4 -map 0:v -map 1:a -c:v copy -c:a %2 %3")
                      .arg(folder.at("video.mp4"), QLatin1String(codec), source));
        EXPECT_EQ(exported(source, kAccurate, frameRange(33, 90)), "");
        // Frame 33 begins at 1.32 s, so the click is 0.68 s later. Lossy coding blurs it a little.
        EXPECT_NEAR(double(clickSample()), 0.68 * 48000, 24) << codec;
        EXPECT_EQ(probed("a:0", "stream=duration"), "2.280000") << codec;
    }
}

TEST_F(TranscodeSessionTest, ScalesDownToHDButNeverUp) {
    const std::tuple<ClipOptions, const char *, const char *> table[] = {
        {{.size = {3840, 2160}, .frames = 2}, "1920,1080,N/A", "3840,2160,N/A"},
        {{.size = {1080, 1920}, .frames = 2}, "608,1080,N/A", "1080,1920,N/A"},
        {{.size = {2048, 858}, .frames = 2}, "1920,804,N/A", "2048,858,N/A"},
        {{.size = {320, 180}, .frames = 2}, "320,180,N/A", "320,180,N/A"},
        {{.size = {1920, 1080}, .frames = 2, .rotation = 90}, "1080,608,N/A", "1920,1080,N/A"},
        {{.codec = "ffv1", .size = {641, 361}, .frames = 2, .pixelFormat = "yuv444p"},
         "640,360,N/A",
         "640,360,N/A"},
        {{.size = {1440, 1080}, .frames = 2, .arguments = "-aspect 16:9"},
         "1440,1080,4:3",
         "1440,1080,4:3"},
    };
    const char *size = "stream=width,height,sample_aspect_ratio";
    int number = 0;
    for (const auto &[options, hd, full] : table) {
        const QByteArray name =
            QByteArray::number(++number) + (options.codec == "ffv1" ? ".mkv" : ".mov");
        const QString source = clip(name.constData(), options);
        EXPECT_EQ(exported(source, kHD), "");
        EXPECT_THAT(probed("v:0", size), testing::StartsWith(hd));
        const std::string turned = probed("v:0", "stream_side_data=rotation");
        EXPECT_EQ(turned,
                  options.rotation ? probedFile(source, "v:0", "stream_side_data=rotation") : "");
        EXPECT_EQ(exported(source, kAccurate), "");
        EXPECT_THAT(probed("v:0", size), testing::StartsWith(full));
    }
}

TEST_F(TranscodeSessionTest, WritesColoursFieldsAndPixelsThatEveryPlayerSupports) {
    const auto bt2020 = [](const QByteArray &transfer) {
        return "-color_primaries bt2020 -colorspace bt2020nc -color_range tv -color_trc " +
               transfer;
    };
    const auto hdr = [&](const char *transfer) {
        return ClipOptions{.codec = "libx265",
                           .frames = 3,
                           .pixelFormat = "yuv420p10le",
                           .arguments = bt2020(transfer)};
    };
    const char *entries =
        "stream=profile,pix_fmt,color_range,color_space,color_transfer,color_primaries,field_order";
    const std::tuple<const char *, ClipOptions, const char *> table[] = {
        {"sdr.mov",
         {.frames = 3, .pixelFormat = "yuv422p", .arguments = bt2020("bt2020-10")},
         "High,yuv420p,tv,bt2020nc,bt2020-10,bt2020,progressive"},
        {"pq.mov", hdr("smpte2084"), "High,yuv420p,tv,bt709,bt709,bt709,progressive"},
        {"hlg.mkv", hdr("arib-std-b67"), "High,yuv420p,tv,bt709,bt709,bt709,progressive"},
        {"fields.mxf",
         {.codec = "mpeg2video", .frames = 3, .interlaced = true},
         "High,yuv420p,unknown,unknown,unknown,unknown,tt"},
        {"full.mov",
         {.codec = "mjpeg", .frames = 3, .pixelFormat = "yuvj422p"},
         "High,yuvj420p,pc,bt470bg,unknown,unknown,progressive"},
    };
    for (const auto &[name, options, expected] : table) {
        EXPECT_EQ(exported(clip(name, options), kAccurate), "") << name;
        EXPECT_EQ(probed("v:0", entries), expected) << name;
        EXPECT_EQ(shownFrames().size(), 3) << name;
    }
}

TEST_F(TranscodeSessionTest, ToneMapsHighDynamicRangeLikeStills) {
    for (const char *transfer : {"smpte2084", "arib-std-b67"}) {
        const QString source = makeHDRClip(folder.at("source.mp4"), transfer);
        EXPECT_EQ(exported(source, kAccurate), "");
        const auto still = [](const QString &path) {
            return media::FrameGenerator(path, {}).imageAt({});
        };
        const media::RGBImage own = still(source);
        const media::RGBImage exported = still(output);
        ASSERT_EQ(own.pixels.size(), exported.pixels.size());
        double sum = 0;
        for (qsizetype at = 0; at < own.pixels.size(); ++at) {
            sum += std::abs(uchar(own.pixels.at(at)) - uchar(exported.pixels.at(at)));
        }
        EXPECT_LT(sum / double(own.pixels.size()), 6) << transfer;
        const media::FrameGenerator::Options odd{.maximumSize = {161, 91}};
        EXPECT_EQ(media::FrameGenerator(source, odd).imageAt({}).width, 161);
    }
}

TEST_F(TranscodeSessionTest, KeepsAllAudioTracksAndChannels) {
    const QString source =
        clip("three.mkv", {.frames = 50, .audioTracks = 2, .audioCodec = "flac"});
    const QString all = folder.at("all.mkv");
    runFFmpeg(QStringLiteral("-i %1 -f lavfi -t 2 -i anullsrc=cl=5.1(side):r=48000 -map 0 -map 1 "
                             "-c copy -c:a:2 flac -metadata:s:a:1 language=fra %2")
                  .arg(source, all));
    EXPECT_EQ(exported(all, kAccurate), "");
    EXPECT_EQ(probed("a", "stream=codec_name,channel_layout:stream_tags=language"),
              "aac,mono,und aac,mono,fra aac,5.1,und");
    const QString soundOnly = clip("sound.m4a", {.frames = 0, .audioTracks = 1, .audioSeconds = 3});
    EXPECT_EQ(exported(soundOnly, kHD, media::MediaTimeRange{{600}, {1500}}), "");
    EXPECT_EQ(probed("a:0", "stream=duration"), "1.500000");
    const QString fine = folder.at("fine.wav"); // at a rate that AAC doesn't support
    runFFmpeg(QStringLiteral("-f lavfi -i sine=r=192000:d=2 ") + fine);
    EXPECT_EQ(exported(fine, kAccurate), "");
    EXPECT_EQ(probed("a:0", "stream=sample_rate,duration"), "96000,2.000000");
}

TEST_F(TranscodeSessionTest, EndsEarlyWhenStopped) {
    const QString source = clip("long.mp4", {.size = {1280, 720}, .frames = 300});
    const auto session = media::ffmpegExportSessions().create(source, kAccurate);
    folder.write("out.mp4", {});
    std::jthread stopper([&] {
        while (session->progress() < 0.1) {
            std::this_thread::yield();
        }
        stop.request_stop();
    });
    EXPECT_THROW(session->run(output, std::nullopt, stop.get_token()), Cancelled);
    EXPECT_LT(session->progress(), 1);
}

TEST_F(TranscodeSessionTest, ExportsWhatDamagedSourcesContain) {
    const QString good = clip("good.mts", {.frames = 60, .audioTracks = 1, .audioCodec = "ac3"});
    const QByteArray bytes = folder.read("good.mts");
    EXPECT_EQ(exported(folder.write("half.mts", bytes.left(bytes.size() / 2)), kAccurate), "");
    EXPECT_EQ(shownFrames().mid(0, 20), numbers(0, 20)) << "to the damage";

    QByteArray hole = bytes;
    hole.replace(bytes.size() / 2, 3000, noise(3000));
    EXPECT_EQ(exported(folder.write("hole.mts", hole), kAccurate), "");
    EXPECT_EQ(shownFrames().last(), 59) << "beyond the damage";

    const QString torn =
        clip("torn.mkv",
             {.frames = 50, .audioTracks = 1, .arguments = "-bsf:a setts=ts='TS+gt(N,20)*1e12'"});
    EXPECT_EQ(exported(torn, kAccurate), "");
    EXPECT_EQ(probed("v:0", "stream=nb_frames"), "50") << "audio timestamps that are years later";

    for (const QByteArray &broken :
         {QByteArray(), noise(50'000), QByteArray("#EXTM3U\n/etc/passwd\n")}) {
        for (const ExportPreset preset : {kAccurate, kHD, ExportPreset::passthrough}) {
            EXPECT_EQ(exported(folder.write("broken.mp4", broken), preset), "none");
        }
    }
    EXPECT_EQ(exported(good, kAccurate, media::MediaTimeRange{{60'000}, {66'000}}),
              "The source shows nothing in this range.");
    EXPECT_EQ(exported(good, kAccurate, media::MediaTimeRange{{1200}, {66'000}}), "");
    EXPECT_EQ(shownFrames(), numbers(50, 10)) << "clamped to the end";
}

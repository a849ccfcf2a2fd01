#include "media/MediaAsset.h"

#include "media/MediaError.h"
#include "media/VideoReader.h"
#include "support/TestFolder.h"
#include "support/TestMedia.h"

#include <gtest/gtest.h>

#include <QtEndian>

#include <random>

#include <sys/stat.h>

using namespace corvane;
using namespace corvane::media;
using corvane::test::ClipOptions;
using corvane::test::makeClip;
using corvane::test::TestFolder;

namespace {

QString ascii(const char *text) {
    return QString::fromLatin1(text);
}

std::string codeText(quint32 code) {
    const auto bytes = qToBigEndian(code);
    return {reinterpret_cast<const char *>(&bytes), sizeof bytes};
}

struct Facts {
    const char *name;
    ClipOptions options;
    const char *codec;
    const char *audioCodec;
};

/// Reads all there is of a file that may be no file at all. Failing is fine.
void readAll(const QString &path) {
    try {
        (void)MediaAsset::read(path);
        VideoReader reader(path, {.threads = 1});
        (void)reader.frameAt({1, 2});
        for (int frame = 0; frame < 5 && reader.next(); ++frame) {
        }
        (void)reader.frameAt({});
    } catch (const MediaError &) {
    }
}

} // namespace

TEST(MediaAssetTest, TellsWhatEveryKindOfFileHolds) {
    const QString pcm = ascii("pcm_s16le");
    const Facts kinds[] = {
        {"a.mp4", {.audioTracks = 2}, "avc1", "mp4a"},
        {"a.mov",
         {.rate = ascii("24000/1001"), .audioTracks = 1, .audioCodec = pcm},
         "avc1",
         "sowt"},
        {"b.mov",
         {.codec = ascii("libx265"),
          .audioTracks = 1,
          .arguments = {ascii("-tag:v"), ascii("hvc1")}},
         "hvc1",
         "mp4a"},
        {"c.mov", {.codec = ascii("prores_ks"), .pixelFormat = ascii("yuv422p10le")}, "apch", ""},
        {"a.mkv", {.codec = ascii("libx265"), .audioTracks = 1}, "hvc1", "mp4a"},
        {"a.avi", {.codec = ascii("mpeg4"), .audioTracks = 1, .audioCodec = pcm}, "FMP4", "lpcm"},
        {"a.ts", {.audioTracks = 1}, "avc1", "mp4a"},
        {"a.mxf",
         {.codec = ascii("mpeg2video"),
          .size = {1920, 1080},
          .frames = 5,
          .audioTracks = 1,
          .audioCodec = pcm},
         "mp2v",
         "lpcm"},
        // Written as a camera does that may lose power.
        {"fragments.mp4",
         {.arguments = {ascii("-movflags"), ascii("frag_keyframe+empty_moov")}},
         "avc1",
         ""},
        {"odd.mkv", {.codec = ascii("ffv1"), .size = {37, 21}}, "FFV1", ""},
    };
    const TestFolder folder;
    for (const Facts &kind : kinds) {
        SCOPED_TRACE(kind.name);
        const MediaAsset asset =
            MediaAsset::read(makeClip(folder.at(ascii(kind.name)), kind.options));
        const double rate = kind.options.rate == ascii("25") ? 25 : 24000 / 1001.0;
        ASSERT_TRUE(asset.duration);
        EXPECT_NEAR(asset.duration->seconds(), kind.options.frames / rate, 0.08);
        ASSERT_EQ(asset.videoTracks.size(), 1);
        const VideoTrack &video = asset.videoTracks.first();
        EXPECT_EQ(video.naturalSize, kind.options.size);
        EXPECT_NEAR(video.nominalFrameRate, rate, 1e-3);
        EXPECT_GT(video.estimatedDataRate, 1000);
        EXPECT_EQ(codeText(video.mediaSubType), kind.codec);
        ASSERT_EQ(asset.audioTracks.size(), kind.options.audioTracks);
        if (!asset.audioTracks.isEmpty()) {
            EXPECT_EQ(codeText(asset.audioTracks.first().mediaSubType), kind.audioCodec);
        }
    }
}

TEST(MediaAssetTest, RefusesWhatIsNoMediaFile) {
    const TestFolder folder;
    const QString clip = makeClip(folder.at(ascii("a.mp4")));
    const QByteArray list = "ffconcat version 1.0\nfile a.mp4\n";
    const QByteArray playlist = "#EXTM3U\n#EXT-X-TARGETDURATION:2\n#EXTINF:2,\na.mp4\n";
    for (const QByteArray &bytes : {QByteArray(), QByteArray("no film"), list, playlist}) {
        EXPECT_THROW(MediaAsset::read(folder.write(ascii("b.mp4"), bytes)), MediaError);
    }
    const QString pipe = folder.at(ascii("pipe.mp4"));
    ASSERT_EQ(::mkfifo(pipe.toUtf8().constData(), 0600), 0);
    for (const QString &path : {pipe, folder.path(), folder.at(ascii("none")), QString()}) {
        EXPECT_THROW(MediaAsset::read(path), MediaError);
    }
}

TEST(MediaAssetTest, SurvivesDamageOfEveryKindOfFile) {
    const TestFolder folder;
    for (const char *name : {"a.mp4", "a.mkv", "a.avi", "a.ts", "a.mxf", "a.mpg", "b.mov"}) {
        SCOPED_TRACE(name);
        ClipOptions options{.size = {160, 90}, .frames = 25, .bFrames = 2, .audioTracks = 1};
        options.audioCodec = name[2] == 'm' && name[3] == 'x' ? ascii("pcm_s16le") : ascii("mp2");
        if (ascii(name).endsWith(ascii("mxf")) || ascii(name).endsWith(ascii("mpg"))) {
            options.codec = ascii("mpeg2video");
        }
        makeClip(folder.at(ascii(name)), options);
        const QByteArray whole = folder.read(ascii(name));
        const QString damaged = ascii("damaged") + ascii(name).mid(1);
        std::mt19937 random(3); // NOLINT: the same at every run
        for (int round = 0; round < 30; ++round) {
            QByteArray bytes = whole;
            // Every third is cut off; the others lose bytes, half of them where the tables are.
            if (round % 3 == 0) {
                bytes.truncate(qsizetype(random() % unsigned(whole.size())));
            }
            const qsizetype reach =
                std::min<qsizetype>(round % 2 ? 3000 : whole.size(), bytes.size());
            for (int flip = 0; flip < round && reach > 0; ++flip) {
                const auto at = qsizetype(random() % unsigned(reach));
                bytes[round % 4 ? at : bytes.size() - 1 - at] = char(random());
            }
            readAll(folder.write(damaged, bytes));
        }
    }
}

TEST(MediaAssetTest, GivesNoMemoryForLies) {
    const TestFolder folder;
    const QByteArray whole =
        folder.read(makeClip(folder.at(ascii("a.mp4"))).mid(folder.path().size() + 1));
    const auto lying = [&](const char *box, int offset, const QByteArray &lie) {
        QByteArray bytes = whole;
        bytes.replace(bytes.indexOf(box) + offset, lie.size(), lie);
        return folder.write(ascii("b.mp4"), bytes);
    };
    // Each of a billion samples one byte long; then a picture of 65,535 by 65,535.
    readAll(lying("stsz", 8, QByteArray::fromHex("0000000140000000")));
    readAll(lying("stsz", 8, QByteArray::fromHex("0000000001000000")));
    readAll(lying("avc1", 28, QByteArray::fromHex("ffffffff")));
    readAll(lying("mvhd", 16, QByteArray::fromHex("00000001ffffffff")));
}

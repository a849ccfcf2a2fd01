#include "media/MediaAsset.h"

#include "media/MediaError.h"
#include "media/VideoReader.h"
#include "support/TestFolder.h"
#include "support/TestMedia.h"

#include <gmock/gmock.h>

#include <QFile>
#include <QtEndian>

#include <sys/resource.h>
#include <sys/stat.h>

using namespace corvane;
using namespace corvane::media;
using namespace corvane::test;

namespace {

QByteArray number(quint32 value) {
    QByteArray bytes(4, 0);
    qToBigEndian(value, bytes.data());
    return bytes;
}

QByteArray box(const char *type, const QByteArray &content) {
    return number(quint32(content.size()) + 8) + type + content;
}

/// A movie header with this many tracks, each with the same sample tables.
QByteArray header(int tracks, const QByteArray &tables, const QByteArray &editList = {}) {
    const QByteArray description =
        number(0) + number(1) +
        box("avc1", QByteArray(24, 0) + QByteArray::fromHex("01400090") + QByteArray(50, 0));
    const QByteArray times = number(0) + number(0) + number(0) + number(25);
    const QByteArray media = box("mdhd", times + number(1000) + number(0)) +
                             box("hdlr", number(0) + "mhlrvide" + QByteArray(13, 0)) +
                             box("minf", box("stbl", box("stsd", description) + tables));
    QByteArray movie = box("mvhd", times + number(1000) + QByteArray(80, 0));
    for (int track = 0; track < tracks; ++track) {
        movie += box("trak", box("tkhd", QByteArray(12, 0) + number(quint32(track) + 1) +
                                             QByteArray(68, 0)) +
                                 editList + box("mdia", media));
    }
    return box("ftyp", "isom" + number(0) + "isom") + box("moov", movie);
}

QByteArray tables(quint32 samples, quint32 size) {
    return box("stts", number(0) + number(1) + number(samples) + number(1)) +
           box("stsc", number(0) + number(1) + number(1) + number(samples) + number(1)) +
           box("stsz", number(0) + number(size) + number(samples)) +
           box("stco", number(0) + number(1) + number(4096));
}

/// Peak memory of the process in bytes.
qint64 peakMemory() {
    rusage usage{};
    ::getrusage(RUSAGE_SELF, &usage);
    return qint64(usage.ru_maxrss) * 1024;
}

} // namespace

TEST(MediaAssetTest, MeasuresBareAudioWhoseHeaderHasNoDuration) {
    const TestFolder folder;
    const ClipOptions options{.frames = 0, .audioTracks = 1, .audioSeconds = 7};
    const MediaAsset asset = MediaAsset::read(makeClip(folder.at("a.aac"), options));
    EXPECT_EQ(asset.audioTracks.size(), 1);
    ASSERT_TRUE(asset.duration);
    EXPECT_NEAR(asset.duration->seconds(), 7, 0.1);
}

TEST(MediaAssetTest, RefusesFilesThatAreNotMedia) {
    const TestFolder folder;
    const QString clip = makeClip(folder.at("a.mp4"));
    const QByteArray list = "ffconcat version 1.0\nfile a.mp4\n";
    const QByteArray playlist = "#EXTM3U\n#EXT-X-TARGETDURATION:2\n#EXTINF:2,\na.mp4\n";
    for (const QByteArray &bytes : {QByteArray(), QByteArray("no video"), list, playlist}) {
        EXPECT_THROW(MediaAsset::read(folder.write("b.mp4", bytes)), MediaError);
    }
    const QString pipe = folder.at("pipe.mp4");
    ASSERT_EQ(::mkfifo(pipe.toUtf8().constData(), 0600), 0);
    for (const QString &path : {pipe, folder.path(), folder.at("none"), QString()}) {
        EXPECT_THROW(MediaAsset::read(path), MediaError);
    }
}

TEST(MediaAssetTest, RefusesAHeaderThatClaimsMoreThanTheFileHolds) {
    const TestFolder folder;
    constexpr quint32 kFalseCount = 20'000'000;
    QByteArray manyEdits = number(0) + number(5000);
    for (int edit = 0; edit < 5000; ++edit) {
        manyEdits += number(1000) + number(0) + number(0x10000);
    }
    const QByteArray fragment =
        box("moof", box("traf", box("tfhd", number(0) + number(1)) +
                                    box("trun", number(0) + number(kFalseCount))));
    const QByteArray encrypted = tables(10, 1) + box("senc", number(0) + number(kFalseCount));
    const QByteArray movie = header(8, tables(kFalseCount, 1)).mid(20);
    const QByteArray compressed =
        box("moov", box("cmov", box("dcom", "zlib") + box("cmvd", qCompress(movie))));
    const QByteArray headers[] = {
        header(8, tables(kFalseCount, 1)),
        header(8, tables(kFalseCount, 0)),
        header(1, tables(20'000, 1), box("edts", box("elst", manyEdits))),
        header(8, tables(10, 1)) + fragment.repeated(40),
        header(8, encrypted),
        box("ftyp", "isom" + number(0) + "isom") + compressed,
        box("free", movie.mid(8)) + box("mdat", number(0)),
    };
    const qint64 before = peakMemory();
    for (const QByteArray &bytes : headers) {
        SCOPED_TRACE(&bytes - headers);
        EXPECT_THAT(
            [&] { (void)MediaAsset::read(folder.write("b.mp4", bytes)); },
            testing::ThrowsMessage<MediaError>("Its header claims more than the file can hold."));
    }
    EXPECT_LT(peakMemory() - before, qint64(100) << 20);
    EXPECT_THROW(MediaAsset::read(folder.write("b.mp4", header(1000, tables(1, 1)))), MediaError);
}

TEST(MediaAssetTest, LeavesOutImplausibleRates) {
    const TestFolder folder;
    makeClip(folder.at("a.mp4"));
    QByteArray bytes = folder.read("a.mp4");
    // Every frame lasts 1/12,800 s, and the clip no longer than all of them.
    const qsizetype lengths = bytes.indexOf("stts") + 16;
    const quint32 frames = 50;
    ASSERT_EQ(bytes.mid(lengths - 4, 4), number(frames));
    bytes.replace(lengths, 4, number(1));
    bytes.replace(bytes.indexOf("mdhd") + 20, 4, number(frames));
    const MediaAsset asset = MediaAsset::read(folder.write("b.mp4", bytes));
    ASSERT_EQ(asset.videoTracks.size(), 1);
    EXPECT_EQ(asset.videoTracks.first().nominalFrameRate, 0);
    EXPECT_EQ(VideoReader(folder.at("b.mp4"), {}).nominalFrameRate(), 0);
    ASSERT_TRUE(asset.duration);
    EXPECT_LE(asset.videoTracks.first().estimatedDataRate,
              double(bytes.size()) * 8 / asset.duration->seconds());
}

TEST(MediaAssetTest, OpensALongClipWithLargeTables) {
    const TestFolder folder;
    const QString path = folder.write("long.mp4", header(2, tables(500'000, 100)));
    ASSERT_TRUE(QFile::resize(path, qint64(150) << 20)); // sparse
    const MediaAsset asset = MediaAsset::read(path);
    ASSERT_EQ(asset.videoTracks.size(), 2);
    EXPECT_EQ(asset.videoTracks.first().naturalSize, QSizeF(320, 144));
}

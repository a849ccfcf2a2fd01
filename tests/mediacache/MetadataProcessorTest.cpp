#include "mediacache/MetadataProcessor.h"
#include "mediacache/FilmstripService.h"
#include "mediacache/ImageIOHelper.h"

#include "support/Await.h"
#include "support/FaultyFileSystem.h"
#include "support/TestFolder.h"
#include "support/TestMedia.h"

#include <gmock/gmock.h>

#include <QFile>

#include <cerrno>

using namespace corvane;
using namespace corvane::test;

namespace {

class ClipCacheTest : public testing::Test {
  protected:
    MetadataProcessor::Outcome process(const QString &clip) {
        return await(MetadataProcessor::process(QStringLiteral("V"), clip, cache));
    }
    QStringList filmstrip(const QString &clip, std::stop_token stop = {}) {
        return await(FilmstripService::generate(QStringLiteral("V"), clip, cache, std::move(stop)));
    }
    QString createClip(const char *name, const test::ClipOptions &options = {}) {
        return makeClip(folder.at(name), options);
    }

    TestFolder folder;
    QString cache = folder.at("p/.corvane-cache");
};

} // namespace

TEST_F(ClipCacheTest, ReadsFactsAndWritesAnUprightThumbnail) {
    const auto outcome = process(
        createClip("a.mov", {.size = {640, 360}, .rate = "50", .rotation = 90, .audioTracks = 1}));
    EXPECT_EQ(outcome.durationSeconds, 1);
    EXPECT_EQ(outcome.width, 640);
    EXPECT_EQ(outcome.height, 360);
    EXPECT_EQ(outcome.fps, 50);
    EXPECT_EQ(outcome.codec, QStringLiteral("avc1"));
    EXPECT_EQ(outcome.audioCodec, QStringLiteral("mp4a"));
    EXPECT_GT(outcome.bitRateBps.value_or(0), 1000);
    EXPECT_EQ(outcome.thumbnailRelativePath, QStringLiteral("thumbnails/V.jpg"));
    const auto thumbnail = decodedJPEG(folder.read("p/.corvane-cache/thumbnails/V.jpg"));
    EXPECT_EQ(thumbnail.height, 270);
    EXPECT_NEAR(frameNumber(thumbnail, 1).value_or(-99) / 50.0, 0.1, 0.5);
    EXPECT_TRUE(folder.temporaries().isEmpty());
}

TEST_F(ClipCacheTest, LeavesUnreadableFieldsEmpty) {
    auto sound = process(createClip("a.m4a", {.frames = 0, .audioTracks = 1, .audioSeconds = 2}));
    EXPECT_EQ(sound.durationSeconds, 2);
    EXPECT_EQ(std::exchange(sound.audioCodec, {}), QStringLiteral("mp4a"));
    EXPECT_EQ(sound,
              (MetadataProcessor::Outcome{.videoId = QStringLiteral("V"), .durationSeconds = 2}));
    const QString noise = folder.write("noise.mp4", test::noise(5000));
    EXPECT_EQ(process(noise), MetadataProcessor::Outcome{.videoId = QStringLiteral("V")});
    // An id that is not a file name is not used as one.
    const QString clip = createClip("b.mp4");
    const QString unusable = QStringLiteral("../x");
    EXPECT_FALSE(
        await(MetadataProcessor::process(unusable, clip, folder.at("q"))).thumbnailRelativePath);
    EXPECT_FALSE(QFile::exists(folder.at("q/x.jpg")));
    // A cache that is a link is not followed.
    folder.folder("elsewhere");
    folder.link("p/.corvane-cache", folder.at("elsewhere"));
    const auto outcome = process(clip);
    EXPECT_EQ(outcome.durationSeconds, 2);
    EXPECT_FALSE(outcome.thumbnailRelativePath);
    EXPECT_TRUE(folder.names("elsewhere").isEmpty());
}

TEST(MetadataProcessorTest, ThumbnailsAreATenthIntoTheClipAndCodecsAreNamed) {
    EXPECT_EQ(MetadataProcessor::thumbnailSeconds(0.05), 0);
    EXPECT_DOUBLE_EQ(MetadataProcessor::thumbnailSeconds(0.5), 0.05);
    EXPECT_DOUBLE_EQ(MetadataProcessor::thumbnailSeconds(60), 6);
    EXPECT_EQ(MetadataProcessor::codecText(0x61766331), QStringLiteral("avc1"));
    EXPECT_EQ(MetadataProcessor::codecText(0x617663b1), QStringLiteral("????"));
}

TEST_F(ClipCacheTest, CreatesAFilmstripOnceAndAgainIfAFrameIsMissing) {
    for (const int gop : {12, 300}) {
        SCOPED_TRACE(gop);
        const QString clip = createClip("a.mp4", {.frames = 375, .gop = gop, .bFrames = 2});
        const QStringList files = filmstrip(clip);
        ASSERT_EQ(files, FilmstripService::framePaths(QStringLiteral("V"), cache));
        const QList<double> times = FilmstripService::frameSeconds(15);
        EXPECT_DOUBLE_EQ(times.first(), 0.64);
        EXPECT_DOUBLE_EQ(times.last(), 14.36);
        for (qsizetype index = 0; index < files.size(); ++index) {
            const auto frame =
                decodedJPEG(folder.read(files.at(index).mid(folder.path().size() + 1)));
            EXPECT_EQ(frame.width, 320);
            EXPECT_NEAR(frameNumber(frame).value_or(-99) / 25.0, times.at(index), 0.1 + 1e-3);
        }
        EXPECT_EQ(filmstrip(QStringLiteral("/nowhere.mp4")), files);
        QFile::remove(files.at(7));
        EXPECT_ANY_THROW(filmstrip(QStringLiteral("/nowhere.mp4")));
        EXPECT_EQ(filmstrip(clip), files);
        QFile::remove(files.at(7));
    }
}

TEST_F(ClipCacheTest, ThrowsForClipsWithoutVideoOrDurationAndWhenCancelled) {
    using Error = FilmstripService::Error;
    const auto failsWith = [](Error::Case reason) {
        return testing::Throws<Error>(testing::Property(&Error::reason, reason));
    };
    const QString sound = createClip("a.m4a", {.frames = 0, .audioTracks = 1, .audioSeconds = 1});
    EXPECT_THAT([&] { filmstrip(sound); }, failsWith(Error::Case::noVideoTrack));
    const QString stream = createClip("a.h264", {});
    EXPECT_THAT([&] { filmstrip(stream); }, failsWith(Error::Case::assetHasNoDuration));
    const QString clip = createClip("a.mp4", {.gop = 1});
    std::stop_source stop;
    stop.request_stop();
    EXPECT_THROW(filmstrip(clip, stop.get_token()), Cancelled);
    EXPECT_TRUE(folder.names().filter(QStringLiteral(".jpg")).isEmpty());
    for (const QString &id : {QStringLiteral(".."), QStringLiteral("a/b"), QString()}) {
        EXPECT_THROW(await(FilmstripService::generate(id, clip, cache)), FileError);
    }
    // A frame that cannot be written is left out.
    const QString blocked = folder.folder("p/.corvane-cache/V/filmstrip/frame-03.jpg");
    EXPECT_EQ(filmstrip(clip).size(), 14);
    EXPECT_TRUE(folder.temporaries().isEmpty());
}

TEST(ImageIOHelperTest, ReplacesTheFileAtomicallyWhicheverCallFails) {
    const media::RGBImage image{2, 2, QByteArray(12, char(200))};
    for (int call = 0, calls = 1; call <= calls; ++call) {
        const TestFolder folder;
        const QString target = folder.write("a.jpg", "before");
        test::FaultyFileSystem faulty;
        const FileSystemScope scope(faulty);
        faulty.failAt(call, EIO);
        bool isWritten = true;
        try {
            ImageIOHelper::writeJPEG(image, target, 0.8);
            calls = faulty.calls();
        } catch (const Failure &) {
            isWritten = false;
        }
        EXPECT_EQ(isWritten, call == 0);
        faulty.dropUnsynced();
        const QByteArray bytes = folder.read("a.jpg");
        EXPECT_TRUE(decodedJPEG(bytes).width == 2 || (!isWritten && bytes == "before")) << call;
        EXPECT_EQ(folder.names(), QStringList{QStringLiteral("a.jpg")}) << call;
    }
    const TestFolder folder;
    const QString target = folder.at("deep/b.jpg");
    EXPECT_THAT([&] { ImageIOHelper::writeJPEG({}, target, 0.8); },
                testing::ThrowsMessage<ImageIOHelper::WriteError>(
                    "Image encoder failed to finalize " + target.toStdString() + "."));
    EXPECT_EQ(folder.names(), QStringList{QStringLiteral("deep/")});
}

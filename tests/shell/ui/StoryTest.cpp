// One project from the home screen to a package that is opened again, by what a user can press.

#include "WindowFixture.h"

using namespace corvane;
using namespace corvane::test;
using testing::HasSubstr;
using testing::Not;

namespace {

struct Clip {
    const char *name;
    ClipOptions options;
};

/// The kinds of clips that come from cameras, each a few pictures long.
QList<Clip> clipsOfManyKinds() {
    const auto prores = utf8("prores_ks");
    const auto tenBits = utf8("yuv422p10le");
    const auto mpeg2 = utf8("mpeg2video");
    const auto pcm = utf8("pcm_s16le");
    const auto mjpeg = utf8("mjpeg");
    const auto full = utf8("yuvj420p");
    const auto hevc = utf8("libx265");
    return {
        {"C01.mp4", {.frames = 75, .bFrames = 2, .audioTracks = 1}},
        {"C02.mov", {.frames = 10}},
        {"C03.mkv", {.frames = 10, .audioTracks = 2}},
        {"C04.avi", {.frames = 10, .audioTracks = 1, .audioCodec = pcm}},
        {"C05.mp4", {.codec = hevc, .frames = 10, .bFrames = 2}},
        {"C06.mov", {.codec = hevc, .frames = 10, .arguments = {utf8("-tag:v"), utf8("hvc1")}}},
        {"C07.mov", {.codec = prores, .frames = 10, .pixelFormat = tenBits}},
        {"C08.mkv", {.codec = prores, .frames = 10, .pixelFormat = tenBits}},
        {"C09.mxf", {.codec = mpeg2, .frames = 10, .audioTracks = 1, .audioCodec = pcm}},
        {"C10.avi", {.codec = mpeg2, .frames = 10}},
        {"C11.mov", {.codec = mpeg2, .frames = 10, .interlaced = true}},
        {"C12.avi", {.codec = mjpeg, .frames = 10, .pixelFormat = full}},
        {"C13.mov", {.codec = mjpeg, .frames = 10, .pixelFormat = full}},
        {"C14.m4a", {.frames = 0, .audioTracks = 1, .audioSeconds = 0.5}},
        {"C15.wav", {.frames = 0, .audioTracks = 1, .audioCodec = pcm, .audioSeconds = 0.5}},
        {"C16.mov", {.frames = 10, .rotation = 90}},
        {"C17.mp4", {.frames = 10, .rotation = 180, .audioTracks = 1}},
        {"C18.mp4", {.frames = 1}},
        {"C19.mov", {.frames = 1, .gop = 1, .audioTracks = 1, .audioSeconds = 0.5}},
        {"C20.mp4", {.frames = 10, .milliseconds = utf8("N*40+N*N")}},
    };
}

class StoryTest : public WindowTest {
  protected:
    StoryTest() { show(); }

    void makeClips() {
        for (Clip clip : clipsOfManyKinds()) {
            clip.options.size = kShape;
            makeClip(card + QLatin1Char('/') + utf8(clip.name), clip.options);
        }
    }
    /// Whole clips by their digit and S: 1 to 5 stars in turn, every second one is a select.
    void rateAll() {
        for (int row = 0; row < 20; ++row) {
            screen->key(Qt::Key_Down);
            screen->key(Qt::Key(Qt::Key_1 + row % 5));
            if (row % 2 == 1) {
                screen->key(Qt::Key_S);
            }
        }
        for (int row = 0; row < 20; ++row) {
            EXPECT_EQ(video(row).rating, row % 5 + 1) << row;
            EXPECT_EQ(video(row).selectedForExport, row % 2 == 1) << row;
        }
    }
    void step(int frames) {
        const double to = engine().currentSeconds() + frames / 25.0;
        for (int time = 0; time < frames; ++time) {
            screen->key(Qt::Key_Period);
        }
        ASSERT_TRUE(screen->waitFor(
            [&] { return std::abs(engine().currentSeconds() - to) < 0.001; }, kWork));
    }
    /// Two subclips of the first clip, from 0.4 to 0.8 and from 1.2 to 2 s.
    void markSubclips() {
        click("filter.search");
        screen->type(utf8("c01"));
        screen->key(Qt::Key_Escape);
        ASSERT_TRUE(hasFocus("project.keys"));
        screen->key(Qt::Key_Home);
        ASSERT_TRUE(screen->waitFor([&] { return shownFrame() == 0; }, kWork));
        for (const auto &[before, length] : {std::pair(10, 10), std::pair(10, 20)}) {
            step(before);
            screen->key(Qt::Key_I);
            step(length);
            screen->key(Qt::Key_O);
            screen->key(Qt::Key_Return);
        }
        ASSERT_EQ(video(0).subclips.size(), 2);
        EXPECT_NEAR(video(0).subclips[1].inSeconds, 1.2, 0.001);
        EXPECT_NEAR(video(0).subclips[1].outSeconds, 2, 0.001);
        EXPECT_TRUE(screen->waitFor([&] { return shownFrame() == 50; }, kWork));
        screen->key(Qt::Key_Down); // the first subclip
        screen->key(Qt::Key_5);
        screen->key(Qt::Key_F);
        click("filter.clearSearch");
    }
    void deliverAll(const char *flow) {
        const std::string told = deliver(flow);
        EXPECT_THAT(told, HasSubstr(" complete\n"));
        EXPECT_EQ(std::ranges::count(told, '\n'), 12);
        EXPECT_THAT(told, Not(HasSubstr(": ")));
    }
    void exportTwice() {
        configure("export", folder.folder(utf8("fast")));
        deliverAll("export");
        configure("export", folder.folder(utf8("accurate")));
        click("export.newOnly");
        click("export.mode.1");
        deliverAll("export");
    }
    /// All that was selected lies there, whole, and the manifest says so.
    void checkExport(const char *into) {
        const QStringList names = folder.names(utf8(into));
        ASSERT_EQ(names.size(), 13) << names.join(QLatin1Char(' ')).toStdString();
        const QByteArray told =
            folder.read(utf8(into) + QLatin1Char('/') + names.filter(utf8(".json")).value(0));
        EXPECT_EQ(told.count(R"("status": "succeeded")"), 12);
        for (int row = 1; row < 20; row += 2) {
            const QStringList made = names.filter(video(row).fileName.left(4));
            ASSERT_EQ(made.size(), 1);
            const auto asset =
                media::MediaAsset::read(folder.at(utf8(into) + QLatin1Char('/') + made.first()));
            EXPECT_NEAR(asset.duration->seconds(), video(row).durationSeconds, 0.1) << row;
            EXPECT_EQ(asset.videoTracks.size(), video(row).width ? 1 : 0) << row;
        }
    }
    QByteArray bytesOf(const QString &path) const {
        return folder.read(path.mid(folder.path().size() + 1));
    }
    void checkPackage(const QString &package) {
        const Project made = ProjectFileIO::loadNow(package + utf8("/Tide - Selects.corvane"));
        ASSERT_EQ(made.videos.size(), 12);
        int parts = 0;
        for (const VideoItem &each : made.videos) {
            const QString path = package + QLatin1Char('/') + each->sourcePath;
            EXPECT_TRUE(each->sourcePath.startsWith(utf8("media/")));
            EXPECT_TRUE(QFileInfo::exists(package + utf8("/.corvane-cache/") +
                                          each->thumbnailPath.value_or(utf8("?"))) ||
                        !each->width)
                << path.toStdString();
            const VideoRecord *const source = app.store().video(each->id);
            if (source) {
                EXPECT_EQ(bytesOf(path), bytesOf(source->sourcePath));
                EXPECT_EQ(bytesOf(path), bytesOf(*source->originalSourcePath));
                EXPECT_EQ(each->rating, source->rating);
            } else {
                EXPECT_EQ(each->rating, parts == 0 ? 5 : 1);
                const double length = parts == 0 ? 0.4 : 0.8;
                EXPECT_GE(each->durationSeconds, length - 0.001);
                EXPECT_LE(each->durationSeconds, length + 0.5) << "it may begin at a key frame";
                ++parts;
            }
        }
        EXPECT_EQ(parts, 2);
    }
    void openPackage(const QString &package) {
        click("header.close");
        ASSERT_TRUE(comes("home.openProject"));
        panels.answer = package + utf8("/Tide - Selects.corvane");
        click("home.openProject");
        ASSERT_TRUE(comes("header.projectName"));
        EXPECT_EQ(text("header.projectName"), utf8("Tide - Selects"));
        EXPECT_FALSE(shows("banner.0")) << "every file of a package is its own";
    }
    void playFromTheStart() {
        screen->key(Qt::Key_Home);
        ASSERT_TRUE(screen->waitFor([&] { return shownFrame() >= 0; }, kWork));
        const int first = shownFrame();
        screen->key(Qt::Key_Space);
        EXPECT_TRUE(screen->waitFor([&] { return shownFrame() > first + 3; }, kWork));
        screen->picture(utf8("story-package"));
    }
    const VideoRecord &video(int row) { return *videos().at(row); }
};

} // namespace

TEST_F(StoryTest, AShootIsImportedReviewedDeliveredHandedOverAndPlayedElsewhere) {
    makeClips();
    createProject();
    importCard();
    ASSERT_EQ(videos().size(), 20);
    rateAll();
    markSubclips();
    screen->picture(utf8("story-review"));
    exportTwice();
    checkExport("fast");
    checkExport("accurate");
    configure("handoff", folder.folder(utf8("elsewhere")));
    deliverAll("handoff");
    const QString package = folder.at(utf8("elsewhere/Tide - Selects"));
    checkPackage(package);
    EXPECT_EQ(folder.temporaries(), QStringList());
    openPackage(package);
    playFromTheStart();
}

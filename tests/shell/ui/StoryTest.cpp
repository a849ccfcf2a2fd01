// A project from the home screen to an opened package, with the user's input only.

#include "WindowFixture.h"

#include "support/MainThreadAccesses.h"

using namespace corvane;
using namespace corvane::test;
using testing::HasSubstr;
using testing::Not;

namespace {

struct Clip {
    const char *name;
    ClipOptions options;
};

/// Clips with the containers and codecs that cameras record, each a few frames long.
QList<Clip> clipsOfManyKinds() {
    const char *const prores = "prores_ks";
    const char *const tenBits = "yuv422p10le";
    const char *const mpeg2 = "mpeg2video";
    const char *const pcm = "pcm_s16le";
    const char *const mjpeg = "mjpeg";
    const char *const fullRange = "yuvj420p";
    const char *const hevc = "libx265";
    return {
        {"C01.mp4", {.frames = 75, .bFrames = 2, .audioTracks = 1}},
        {"C02.mov", {.frames = 10}},
        {"C03.mkv", {.frames = 10, .audioTracks = 2}},
        {"C04.avi", {.frames = 10, .audioTracks = 1, .audioCodec = pcm}},
        {"C05.mp4", {.codec = hevc, .frames = 10, .bFrames = 2}},
        {"C06.mov", {.codec = hevc, .frames = 10, .arguments = "-tag:v hvc1"}},
        {"C07.mov", {.codec = prores, .frames = 10, .pixelFormat = tenBits}},
        {"C08.mkv", {.codec = prores, .frames = 10, .pixelFormat = tenBits}},
        {"C09.mxf", {.codec = mpeg2, .frames = 10, .audioTracks = 1, .audioCodec = pcm}},
        {"C10.avi", {.codec = mpeg2, .frames = 10}},
        {"C11.mov", {.codec = mpeg2, .frames = 10, .interlaced = true}},
        {"C12.avi", {.codec = mjpeg, .frames = 10, .pixelFormat = fullRange}},
        {"C13.mov", {.codec = mjpeg, .frames = 10, .pixelFormat = fullRange}},
        {"C14.m4a", {.frames = 0, .audioTracks = 1, .audioSeconds = 0.5}},
        {"C15.wav", {.frames = 0, .audioTracks = 1, .audioCodec = pcm, .audioSeconds = 0.5}},
        {"C16.mov", {.frames = 10, .rotation = 90}},
        {"C17.mp4", {.frames = 10, .rotation = 180, .audioTracks = 1}},
        {"C18.mp4", {.frames = 1}},
        {"C19.mov", {.frames = 1, .gop = 1, .audioTracks = 1, .audioSeconds = 0.5}},
        {"C20.mp4", {.frames = 10, .milliseconds = "N*40+N*N"}},
    };
}

/// Installed before the application starts.
struct WatchedMainThread {
    MainThreadAccesses accesses;
};

class StoryTest : protected WatchedMainThread, public WindowTest {
  protected:
    StoryTest() { show(); }

    void makeClips() {
        for (Clip clip : clipsOfManyKinds()) {
            clip.options.size = kFrameSize;
            makeClip(card + QLatin1Char('/') + utf8(clip.name), clip.options);
        }
    }
    /// Rates the clips 1 to 5 stars in turn and marks every second one for export.
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
        const double target = engine().currentSeconds() + frames / 25.0;
        for (int time = 0; time < frames; ++time) {
            screen->key(Qt::Key_Period);
        }
        ASSERT_TRUE(screen->waitFor(
            [&] { return std::abs(engine().currentSeconds() - target) < 0.001; }, kMediaTimeout));
    }
    /// Creates two subclips of the first clip: 0.4 to 0.8 s and 1.2 to 2 s.
    void markSubclips() {
        click("filter.search");
        screen->type("c01");
        screen->key(Qt::Key_Escape);
        ASSERT_TRUE(hasFocus("project.keys"));
        screen->key(Qt::Key_Home);
        ASSERT_TRUE(screen->waitFor([&] { return displayedFrame() == 0; }, kMediaTimeout));
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
        EXPECT_TRUE(screen->waitFor([&] { return displayedFrame() == 50; }, kMediaTimeout));
        screen->key(Qt::Key_Down); // the first subclip
        screen->key(Qt::Key_5);
        screen->key(Qt::Key_F);
        click("filter.clearSearch");
    }
    void deliverAll(const char *flow) {
        const std::string report = deliver(flow);
        EXPECT_THAT(report, HasSubstr(" complete\n"));
        EXPECT_EQ(std::ranges::count(report, '\n'), 12);
        EXPECT_THAT(report, Not(HasSubstr(": ")));
    }
    void exportTwice() {
        configure("export", folder.folder("fast"));
        deliverAll("export");
        configure("export", folder.folder("accurate"));
        click("export.newOnly");
        click("export.mode.1");
        deliverAll("export");
    }
    /// Expects every selected clip in the folder at full length, and a matching manifest.
    void checkExport(const char *destination) {
        const QStringList names = folder.names(destination);
        ASSERT_EQ(names.size(), 13) << names.join(QLatin1Char(' ')).toStdString();
        const QByteArray manifest = folder.read(utf8(destination) + QLatin1Char('/') +
                                                names.filter(utf8(".json")).value(0));
        EXPECT_EQ(manifest.count(R"("status": "succeeded")"), 12);
        for (int row = 1; row < 20; row += 2) {
            const QStringList exported = names.filter(video(row).fileName.left(4));
            ASSERT_EQ(exported.size(), 1);
            const auto asset = media::MediaAsset::read(
                folder.at(utf8(destination) + QLatin1Char('/') + exported.first()));
            EXPECT_NEAR(asset.duration->seconds(), video(row).durationSeconds, 0.1) << row;
            EXPECT_EQ(asset.videoTracks.size(), video(row).width ? 1 : 0) << row;
        }
    }
    QByteArray bytesOf(const QString &path) const {
        return folder.read(path.mid(folder.path().size() + 1));
    }
    void checkPackage(const QString &package) {
        const Project packaged = ProjectFileIO::loadNow(package + utf8("/Tide - Selects.corvane"));
        ASSERT_EQ(packaged.videos.size(), 12);
        int subclips = 0;
        for (const VideoItem &each : packaged.videos) {
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
                EXPECT_EQ(each->rating, subclips == 0 ? 5 : 1);
                const double length = subclips == 0 ? 0.4 : 0.8;
                EXPECT_GE(each->durationSeconds, length - 0.001);
                EXPECT_LE(each->durationSeconds, length + 0.5)
                    << "the cut may start at the previous keyframe";
                ++subclips;
            }
        }
        EXPECT_EQ(subclips, 2);
    }
    void openPackage(const QString &package) {
        click("header.close");
        ASSERT_TRUE(appears("home.openProject"));
        panels.answer = package + utf8("/Tide - Selects.corvane");
        click("home.openProject");
        ASSERT_TRUE(appears("header.projectName"));
        EXPECT_EQ(text("header.projectName"), utf8("Tide - Selects"));
        EXPECT_FALSE(shows("banner.0")) << "a package contains all its media";
    }
    void playFromTheStart() {
        screen->key(Qt::Key_Home);
        ASSERT_TRUE(screen->waitFor([&] { return displayedFrame() >= 0; }, kMediaTimeout));
        const int first = displayedFrame();
        screen->key(Qt::Key_Space);
        EXPECT_TRUE(screen->waitFor([&] { return displayedFrame() > first + 3; }, kMediaTimeout));
        screen->picture("story-package");
    }
    const VideoRecord &video(int row) { return *videos().at(row); }
};

} // namespace

TEST_F(StoryTest, ImportsReviewsExportsAndHandsOffAShootAndPlaysThePackage) {
    makeClips();
    createProject();
    importCard();
    ASSERT_EQ(videos().size(), 20);
    rateAll();
    markSubclips();
    screen->picture("story-review");
    exportTwice();
    configure("handoff", folder.folder("elsewhere"));
    deliverAll("handoff");
    // The preview of copies and a delivery that starts at once look at their destination, or at
    // the folder that will contain it.
    const QStringList destinations{QStringLiteral("shoot"), QStringLiteral("media"),
                                   QStringLiteral("fast"), QStringLiteral("accurate"),
                                   QStringLiteral("elsewhere")};
    const QStringList accessed = accesses.take();
    for (const QString &access : accessed) {
        EXPECT_TRUE(destinations.contains(access.section(u'/', -1))) << access.toStdString();
    }
    checkExport("fast");
    checkExport("accurate");
    const QString package = folder.at("elsewhere/Tide - Selects");
    checkPackage(package);
    accesses.take();
    EXPECT_EQ(folder.temporaries(), QStringList());
    openPackage(package);
    playFromTheStart();
    EXPECT_EQ(accesses.take().join(u'\n').toStdString(), "");
}

#include "platform/SerialExecutor.h"
#include "review/list/ReviewFormats.h"
#include "review/MediaBanners.h"
#include "review/ScrubberGeometry.h"
#include "ReviewScreenFixture.h"

#include <limits>

namespace corvane {

namespace {

using test::ReviewScreenTest;

QStringList titles(const QVariantList &items, const char *wanted = nullptr) {
    QStringList titles;
    for (const QVariant &item : items) {
        const QVariantMap map = item.toMap();
        if (!wanted || map.value(QString::fromLatin1(wanted)).toBool()) {
            titles.append(map.value(QStringLiteral("title")).toString());
        }
    }
    return titles;
}

} // namespace

TEST(ScrubberGeometry, ConvertsBetweenTimesAndPositions) {
    using namespace ScrubberGeometry;
    EXPECT_EQ(fraction(50, 200), 0.25);
    EXPECT_EQ(fraction(-3, 200), 0);
    EXPECT_EQ(fraction(900, 200), 1);
    EXPECT_EQ(fraction(0.5, 1), 0.5) << "a track of one point";
    EXPECT_EQ(bar(2, 4, 8, 100), QRectF(25, 3, 25, 6));
    EXPECT_EQ(bar(0, 0.1, 3600, 100)->width(), 2);
    EXPECT_FALSE(bar(0, 1, 0, 100));
}

TEST_F(ReviewScreenTest, ShowsTheFilterRow) {
    FilterBar &bar = *screen.filterBar();
    EXPECT_EQ(titles(bar.chips(), "isActive"), QStringList{QStringLiteral("All")});
    EXPECT_EQ(bar.countLabel(), QStringLiteral("4 clips"));
    EXPECT_EQ(titles(bar.ratingItems()).join(QLatin1Char(',')),
              QStringLiteral("Off,,1★+,2★+,3★+,4★+,5★ only"));
    bar.chooseRating(6);
    EXPECT_EQ(bar.ratingLabel(), QStringLiteral("5★"));
    bar.chooseRating(1);
    EXPECT_EQ(bar.ratingLabel(), QStringLiteral("5★")) << "the divider can't be chosen";
    bar.chooseRating(4);
    EXPECT_EQ(bar.ratingLabel(), QStringLiteral("3★+"));
    bar.click(FilterBar::Chip::favorites);
    bar.chooseSort(3);
    EXPECT_EQ(bar.sortLabel(), QStringLiteral("Sort: Duration"));
    EXPECT_TRUE(screen.showsNoMatches());
    bar.click(FilterBar::Chip::all);
    int countReports = 0;
    QObject::connect(&bar, &FilterBar::countsChanged, [&countReports] { ++countReports; });
    bar.click(FilterBar::Chip::showRejects);
    EXPECT_EQ(bar.countLabel(), QStringLiteral("4 of 4 visible"));
    bar.click(FilterBar::Chip::showRejects);
    EXPECT_EQ(countReports, 2) << "other texts for the same counts";
    EXPECT_EQ(titles(bar.chips(), "isActive"), QStringList{QStringLiteral("All")});
    EXPECT_EQ(bar.sortLabel(), QStringLiteral("Sort: Duration"));
}

TEST_F(ReviewScreenTest, InspectsTheClip) {
    ClipInspector &inspector = *screen.inspector();
    screen.panes()->toggleInspector();
    EXPECT_FALSE(screen.panes()->showsInspector());
    click("clip-0");
    screen.panes()->toggleInspector();
    EXPECT_EQ(screen.panes()->inspectorHelp(), QStringLiteral("Back to clip list"));
    EXPECT_EQ(inspector.facts(), QStringList{QStringLiteral("0:12")});
    store.updateProject([&] {
        Project project = *store.project();
        VideoRecord &video = project.videos[0].edit();
        video.codec = QStringLiteral("avc1");
        video.width = 3840;
        video.height = 2160;
        video.fps = 23.976;
        return project;
    }());
    EXPECT_EQ(inspector.facts().join(QLatin1Char(' ')),
              QStringLiteral("avc1 3840×2160 23.98fps 0:12"));
    inspector.setNotes(QStringLiteral("word ").repeated(1000));
    EXPECT_FALSE(inspector.notesBreakInWords());
    inspector.setNotes(inspector.notes() + QString(3000, QLatin1Char('n')));
    EXPECT_TRUE(inspector.notesBreakInWords());
    inspector.toggleFlag(1);
    EXPECT_EQ(titles(inspector.flags(), "isOn").first(), QStringLiteral("Selected"));
}

TEST_F(ReviewScreenTest, ResetsWhenAnotherProjectIsOpened) {
    click("clip-0-sub-0");
    player.becomeReady();
    type("io");
    screen.filterBar()->setSearchQuery(QStringLiteral("clip"));
    int requestedImports = 0;
    QObject::connect(&screen, &ReviewScreenState::importRequested, [&] { ++requestedImports; });
    const QString other = folder.at("Other.corvane");
    test::await(store.createProject({.name = QStringLiteral("Other")}, other));
    EXPECT_FALSE(screen.selection()->selectedVideoId() || screen.marking()->draftIn() ||
                 screen.selection()->activeSubclipId());
    EXPECT_FALSE(player.range);
    EXPECT_EQ(screen.filterBar()->countLabel(), QStringLiteral("No clips yet"));
    EXPECT_FALSE(screen.showsNoMatches());
    EXPECT_EQ(requestedImports, 1) << "a new project starts with the import";
    screen.disappear();
    screen.appear();
    EXPECT_EQ(requestedImports, 1);
}

TEST_F(ReviewScreenTest, ResetsWhenTheOpenProjectIsOpenedAgain) {
    MediaBanners banners(store);
    const auto isShown = [&banners] {
        return banners.banners().first().toMap().value(QStringLiteral("isShown")).toBool();
    };
    folder.write(QStringLiteral("media/clip.mov"), "frames");
    Project packaged = test::sampleProject(1);
    packaged.videos[0].edit().sourcePath = folder.at(QStringLiteral("media/clip.mov"));
    const QString file = folder.at(QStringLiteral("Packaged.corvane"));
    test::await(io.save(packaged, file, false));
    test::await(store.openProject(file));
    ASSERT_TRUE(isShown());
    banners.close(0);
    click("clip-0");
    screen.filterBar()->setSearchQuery(QStringLiteral("clip"));
    test::await(store.openProject(file));
    EXPECT_TRUE(isShown());
    EXPECT_FALSE(screen.selection()->selectedVideoId());
    EXPECT_EQ(screen.filterBar()->searchQuery(), QString());
}

TEST(FilmstripLoader, DiscardsTheFramesOfThePreviousClip) {
    const test::TestFolder folder;
    QList<std::stop_token> stops;
    FilmstripLoader loader(
        [&](QString id, QString, QString, std::stop_token stop) -> QCoro::Task<QStringList> {
            stops.append(stop);
            SerialExecutor executor(QStringLiteral("test"));
            co_await executor.run([] {});
            co_return QStringList{id};
        });
    const QString first = newIdentifier();
    const QString second = newIdentifier();
    QEventLoop loop;
    QObject::connect(&loader, &FilmstripLoader::changed, &loop, [&] {
        EXPECT_FALSE(loader.filmstripURLs().contains(first));
        if (!loader.filmstripGenerating() && !loader.filmstripURLs().isEmpty()) {
            loop.quit();
        }
    });
    loader.start(first, {}, folder.path());
    EXPECT_EQ(loader.placeholderText(), QStringLiteral("Generating filmstrip…"));
    loader.start(second, {}, folder.path());
    EXPECT_TRUE(stops.first().stop_requested());
    loop.exec();
    EXPECT_EQ(loader.filmstripURLs(), QStringList{second});
    loader.start(QStringLiteral("no UUID"), {}, folder.path());
    EXPECT_TRUE(loader.filmstripURLs().isEmpty() && !loader.filmstripGenerating());
}

TEST(SubclipThumbnails, AreCreatedOnceAndOnlyForAnIdThatIsAFileName) {
    const test::TestFolder folder;
    Subclip subclip = test::sampleSubclip(newIdentifier(), QStringLiteral("clip"));
    subclip.inSeconds = -1;
    int written = 0;
    const auto writer = [&](const QString &, double seconds, const QString &file) {
        EXPECT_EQ(seconds, 0);
        EXPECT_EQ(
            folder.write(QStringLiteral(".corvane-cache/subclip-thumbs/%1.jpg").arg(subclip.id),
                         "jpeg"),
            file);
        ++written;
    };
    SubclipThumbnails::generate(subclip, {}, folder.path(), writer);
    SubclipThumbnails::generate(subclip, {}, folder.path(), writer);
    EXPECT_EQ(written, 1);
    subclip.id = QStringLiteral("../x");
    SubclipThumbnails::generate(subclip, {}, folder.path(), writer);
    EXPECT_EQ(written, 1);
}

} // namespace corvane

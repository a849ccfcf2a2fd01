// The review screen with the real player engine and services.

#include "review/PlayerEngine.h"
#include "review/ReviewScreenState.h"
#include "ReviewScreenFixture.h"
#include "support/TestMedia.h"
#include "support/TestPlayer.h"

#include <QFile>

#include <future>

namespace corvane {

namespace {

using test::eventually;

/// A project with one clip: two seconds at 25 frames per second, stored with a relative path.
class ReviewPlaybackTest : public test::ReviewScreenTest {
  protected:
    ReviewPlaybackTest() : ReviewScreenTest(test::sampleProject(1)) {
        test::makeClip(folder.at("clip.mov"), {.size = {640, 480}, .frames = 50});
        Project project = *store.project();
        project.videos[0].edit().id = id.toLower();
        project.videos[0].edit().sourcePath = QStringLiteral("clip.mov");
        project.videos[0].edit().durationSeconds = 2;
        store.updateProject(project);
        engine.player().setSink(sink);
        real.appear();
        real.selection()->selectClip(id.toLower());
    }

    ~ReviewPlaybackTest() override { // waits for writes to the test folder
        EXPECT_TRUE(eventually([&] { return !real.filmstrip()->filmstripGenerating(); }));
    }

    void press(int key) { EXPECT_TRUE(real.handleKeyDown(key, {}, false)); }
    bool isAtFrame(int number) {
        return eventually([&] { return engine.rate() == 0 && sink->number() == number; });
    }
    QString cached(const QString &path) const {
        return folder.at(QStringLiteral(".corvane-cache/") + path);
    }
    /// The frame number shown in an image, which must be as large as the bounding box allows.
    int numberOf(const QString &path) const {
        const auto image = test::decodedJPEG(folder.read(QStringLiteral(".corvane-cache/") + path));
        EXPECT_EQ(QSize(image.width, image.height), QSize(240, 180));
        return test::frameNumber(image).value_or(-1);
    }

    const QString id = QStringLiteral("0D0E0F00-1111-4222-8333-444455556666");
    test::TestMonotonicClock clock;
    std::shared_ptr<test::TestSink> sink = std::make_shared<test::TestSink>();
    PlayerEngine engine{media::MediaPlayer::Options{.clock = &clock}};
    ReviewScreenState real{store, engine, ReviewScreenState::mediaServices()};
};

} // namespace

TEST_F(ReviewPlaybackTest, WritesTheThumbnailOfASavedRange) {
    ASSERT_TRUE(eventually([&] { return engine.isReady(); }));
    engine.seek(0.4);
    press(Qt::Key_I);
    engine.seek(1.2);
    press(Qt::Key_O);
    press(Qt::Key_Return);
    ASSERT_EQ(clip(0).subclips.size(), 1);
    const QString thumbnail =
        QStringLiteral("subclip-thumbs/%1.jpg").arg(clip(0).subclips.first().id);
    ASSERT_TRUE(eventually([&] { return QFile::exists(cached(thumbnail)); }));
    EXPECT_NEAR(numberOf(thumbnail), 10, 2);
}

TEST_F(ReviewPlaybackTest, ShowsTheClipsThumbnailForASubclipUntilItHasItsOwn) {
    std::promise<void> mayWrite;
    ReviewScreenState slow(
        store, engine,
        {.subclipThumbnail = [written = mayWrite.get_future().share()](
                                 const QString &, double, const QString &) { written.wait(); }});
    const auto shown = [&] {
        const QModelIndex row = slow.list()->index(1);
        const QModelIndex below = slow.subclips()->index(0);
        EXPECT_EQ(row.data(ReviewListModel::ThumbnailRole),
                  below.data(SubclipListModel::ThumbnailRole));
        return row.data(ReviewListModel::ThumbnailRole).toString();
    };
    int changes = 0;
    for (ListModelBase *const list :
         std::initializer_list<ListModelBase *>{slow.list(), slow.subclips()}) {
        QObject::connect(list, &ListModelBase::dataChanged, &slow, [&] { ++changes; });
    }
    slow.selection()->selectClip(clip(0).id);
    ASSERT_TRUE(eventually([&] { return engine.isReady(); }));
    engine.seek(1);
    EXPECT_TRUE(slow.handleKeyDown(Qt::Key_O, {}, false));
    EXPECT_TRUE(slow.handleKeyDown(Qt::Key_Return, {}, false));
    ASSERT_EQ(clip(0).subclips.size(), 1);
    EXPECT_EQ(shown(), QString());
    changes = 0;

    mayWrite.set_value();
    EXPECT_TRUE(eventually([&] { return changes == 2; }))
        << "the rows in the side pane and in the drawer";
    EXPECT_EQ(shown(),
              cached(QStringLiteral("subclip-thumbs/%1.jpg").arg(clip(0).subclips.first().id)));
}

TEST_F(ReviewPlaybackTest, SeeksToTheInPointOfASubclipSelectedBeforeThePlayerIsReady) {
    const QString subclip = store.addSubclip(clip(0).id, 0.4, 1.2);
    ASSERT_FALSE(engine.isReady());
    real.selection()->selectSubclip(clip(0).id, subclip);
    EXPECT_TRUE(isAtFrame(10));
}

TEST_F(ReviewPlaybackTest, ShowsTheFilmstripOfTheClip) {
    EXPECT_TRUE(real.filmstrip()->filmstripGenerating());
    ASSERT_TRUE(eventually([&] { return !real.filmstrip()->filmstripGenerating(); }));
    const QStringList frames = real.filmstrip()->filmstripURLs();
    ASSERT_EQ(frames.size(), 15);
    const QString middle = id + QStringLiteral("/filmstrip/frame-07.jpg");
    EXPECT_EQ(frames.at(7), cached(middle));
    EXPECT_NEAR(numberOf(middle), 25, 3);
}

} // namespace corvane

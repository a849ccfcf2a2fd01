#include "review/ReviewScreenFixture.h"
#include "support/screens/Screen.h"

#include <gmock/gmock.h>

#include <QAccessible>

namespace corvane::test {
namespace {

/// The pane in a screen that counts unhandled keys.
constexpr auto kPane = R"(
    import QtQuick
    import Corvane.Kit
    import Corvane.Review
    AppWindow {
        id: window
        property var review
        property alias keys: scope.keys
        FocusScope {
            id: scope
            objectName: "screen"
            property int keys: 0
            anchors.fill: parent
            focus: true
            Keys.onPressed: event => keys += 1
            MainPane {
                anchors.fill: parent
                review: window.review
                engine: null
            }
        }
    })";

constexpr QSize kSize(1060, 700);

QString text(const char *latin) {
    return QString::fromUtf8(latin);
}

QRect rectOf(const Screen &view, const char *name) {
    const QQuickItem *item = view.item(name);
    return item->mapRectToScene(QRectF(QPointF(0, 0), item->size())).toRect();
}

class MainPaneTest : public ReviewScreenTest {
  protected:
    /// The second clip has two subclips, from 1.25 to 2.25 and from 2.5 to 3.5 s.
    MainPaneTest() {
        click("clip-1");
        player.becomeReady();
    }

    Screen open() { return Screen(kPane, kSize, {{text("review"), QVariant::fromValue(&screen)}}); }
    const Subclip &subclip(int index) const { return clip(1).subclips.at(index); }
    void openDrawer(Screen &view) {
        view.click("drawer.head");
        EXPECT_TRUE(view.waitFor([&] {
            return view.shows("drawer.keys") &&
                   rectOf(view, "drawer.keys").bottom() < kSize.height();
        }));
    }
    static int keysOfScreen(const Screen &view) { return view.root()->property("keys").toInt(); }
};

} // namespace

TEST_F(MainPaneTest, SeeksOnceForAClickAndAtEveryChangeOfADragEvenOutside) {
    ReviewScreenState state(
        store, player,
        {.filmstrip = [](QString, QString, QString, std::stop_token) -> QCoro::Task<QStringList> {
            co_return QStringList{text("0.jpg"), text("1.jpg")};
        }});
    state.selection()->selectClip(text("clip-1"));
    Screen view(kPane, kSize, {{text("review"), QVariant::fromValue(&state)}});
    EXPECT_FALSE(view.shows("filmstrip")) << "no filmstrip for an id that is not a UUID";
    state.filmstrip()->start(newIdentifier(), {}, folder.path());
    state.selection()->selectSubclip(text("clip-1"), subclip(1).id);
    QList<double> seeks;
    QObject::connect(&player, &ReviewPlayer::currentTimeChanged, &player,
                     [&] { seeks.append(player.current); });
    const auto near = [](double seconds) { return testing::DoubleNear(seconds, 0.02); };
    player.range.reset(); // the fake player would clamp seeks to it
    const struct {
        const char *track;
        double begin, end;
    } tracks[] = {{"scrubber", 2.5, 3.5}, {"filmstrip", 0, 12.5}};
    for (const auto &[track, begin, end] : tracks) {
        const QRect rect = rectOf(view, track);
        seeks.clear();
        view.click(track);
        view.drag(rect.center(), {rect.right() + 10, rect.center().y() - 80});
        view.drag(rect.center(), {rect.left() - 10, rect.center().y()});
        const double middle = (begin + end) / 2;
        EXPECT_THAT(seeks, testing::ElementsAre(near(middle), near(middle), testing::_, near(end),
                                                near(middle), testing::_, near(begin)))
            << track;
    }
    EXPECT_EQ(keysOfScreen(view) + player.shownRate, 0);
}

TEST_F(MainPaneTest, DescribesTheTracksToScreenReadersAndStepsByFrames) {
    Screen view = open();
    player.seek(3.2);
    QAccessibleInterface *face = QAccessible::queryAccessibleInterface(view.item("scrubber"));
    ASSERT_TRUE(face && face->valueInterface() && face->actionInterface());
    EXPECT_EQ(face->role(), QAccessible::Slider);
    EXPECT_EQ(face->valueInterface()->currentValue().toDouble(), 3.2);
    EXPECT_EQ(face->valueInterface()->maximumValue().toDouble(), 12.5);
    EXPECT_EQ(face->text(QAccessible::Description), text("00:00:03  /  00:00:12"));
    face->actionInterface()->doAction(QAccessibleActionInterface::increaseAction());
    EXPECT_DOUBLE_EQ(player.current, 3.24);
    view.click("transport.back");
    view.click("transport.back");
    EXPECT_DOUBLE_EQ(player.current, 3.16);
    view.click("transport.forward");
    EXPECT_DOUBLE_EQ(player.current, 3.2);
}

TEST_F(MainPaneTest, ShowsTheDraftMarksUnlessTheDurationIsUnknown) {
    Screen view = open();
    type("i");
    player.seek(10);
    EXPECT_TRUE(view.shows("scrubber.in") && !view.shows("scrubber.out"));
    type("o");
    EXPECT_TRUE(view.shows("scrubber.out") && view.shows("scrubber.range"));
    const QRect track = rectOf(view, "scrubber");
    EXPECT_NEAR(rectOf(view, "scrubber.range").width(), track.width() * 0.8, 1);
    EXPECT_NEAR(rectOf(view, "scrubber.knob").center().x(),
                rectOf(view, "scrubber.out").center().x(), 1);
    view.picture("mainpane-marks");
    player.duration = 0;
    Q_EMIT player.durationChanged();
    for (const char *mark : {"scrubber.in", "scrubber.range", "scrubber.knob", "bars.0"}) {
        EXPECT_FALSE(view.shows(mark)) << mark;
    }
}

TEST_F(MainPaneTest, PlaysASubclipFromItsBarWithoutResizingTheVideo) {
    Screen view = open();
    const QRect picture = rectOf(view, "playerView");
    const QRect track = rectOf(view, "scrubber");
    EXPECT_NEAR(rectOf(view, "bars.1").left(), track.left() + track.width() * 0.2, 1);
    EXPECT_EQ(Screen::accessibleName(view.item("bars.1")), text("Subclip 2"));
    view.click("bars.1");
    EXPECT_EQ(screen.selection()->activeSubclipId(), subclip(1).id);
    EXPECT_FALSE(view.shows("bars.0"));
    EXPECT_EQ(rectOf(view, "playerView"), picture);
    EXPECT_EQ(Screen::accessibleName(view.item("subclipBanner.name")), text("Subclip 2"));
    view.picture("mainpane-subclip");
    view.click("subclipBanner.close");
    EXPECT_FALSE(view.shows("subclipBanner"));
    EXPECT_TRUE(view.shows("bars.0"));
}

TEST_F(MainPaneTest, TabFollowsReadingOrderAndHiddenControlsReturnTheFocus) {
    Screen view = open();
    QStringList reached;
    for (int press = 0; press < 7; ++press) {
        view.key(Qt::Key_Tab);
        reached.append(view.focused()->objectName());
    }
    EXPECT_EQ(
        reached.join(QLatin1Char(' ')),
        text("scrubber bars.0 bars.1 transport.back transport.play transport.forward drawer.head"));
    for (int press = 0; press < 5; ++press) {
        view.key(Qt::Key_Backtab);
    }
    view.key(Qt::Key_Return);
    EXPECT_TRUE(view.shows("subclipBanner"));
    EXPECT_EQ(view.focused()->objectName(), text("screen"));
    view.key(Qt::Key_Tab);
    EXPECT_EQ(view.focused()->objectName(), text("subclipBanner.close"));
    view.key(Qt::Key_Space);
    EXPECT_FALSE(screen.selection()->isInSubclipMode());
    EXPECT_EQ(view.focused()->objectName(), text("screen"));
}

TEST_F(MainPaneTest, HidesTheOverlayButtonDuringPlaybackUnlessThePointerIsOverIt) {
    Screen view = open();
    const auto button = text("playerOverlayButton");
    const QRect play = rectOf(view, "transport.play");
    EXPECT_EQ(Screen::accessibleName(view.item(button)), text("Play"));
    view.click(button);
    EXPECT_EQ(player.shownRate, 1);
    EXPECT_EQ(Screen::accessibleName(view.item(button)), text("Pause"));
    EXPECT_TRUE(view.shows(button)) << "the pointer is over the player";
    view.hover("drawer.head");
    EXPECT_FALSE(view.shows(button));
    EXPECT_EQ(Screen::accessibleName(view.item("transport.play")), text("Pause (Space)"));
    player.seek(12);
    EXPECT_EQ(rectOf(view, "transport.play"), play);
    EXPECT_NEAR(play.center().x(), rectOf(view, "playerView").center().x(), 1);
    view.click("transport.play");
    EXPECT_EQ(player.shownRate, 0);
    EXPECT_TRUE(view.shows(button));
    EXPECT_EQ(view.focused()->objectName(), text("screen")) << "clicks don't move the focus";
}

TEST_F(MainPaneTest, EditsANameWithoutPassingKeysToTheScreen) {
    Screen view = open();
    openDrawer(view);
    const auto field = text("subclip.0.field");
    const auto edit = [&](const char *typed) {
        view.click("subclip.0.name");
        ASSERT_TRUE(view.shows(field));
        view.key(Qt::Key_A, Qt::ControlModifier);
        view.type(typed);
    };
    edit("  Pole lift, wide ");
    view.picture("mainpane-editing");
    view.key(Qt::Key_Up);
    view.key(Qt::Key_F5);
    view.key(Qt::Key_Return);
    EXPECT_EQ(subclip(0).label, text("Pole lift, wide"));
    EXPECT_FALSE(view.shows(field));
    EXPECT_EQ(keysOfScreen(view), 0);
    view.key(Qt::Key_I);
    EXPECT_EQ(keysOfScreen(view), 1) << "the focus is back at the screen";

    edit("Lost");
    view.key(Qt::Key_Escape);
    EXPECT_FALSE(view.shows(field));
    EXPECT_EQ(subclip(0).label, text("Pole lift, wide"));
    edit("Low tide");
    view.click("subclip.1.name");
    EXPECT_FALSE(view.shows(field));
    EXPECT_EQ(subclip(0).label, text("Low tide")) << "the focus left the field";
    EXPECT_TRUE(view.shows("subclip.1.field"));
    view.key(Qt::Key_Escape);
    edit("High tide");
    view.click(rectOf(view, "subclip.0").topLeft() + QPoint(20, 20)); // the thumbnail
    EXPECT_EQ(subclip(0).label, text("High tide"));
    screen.selection()->exitSubclipMode();
    const auto lastEdit = store.project()->updatedAt;
    clock.advance(std::chrono::seconds(1));
    view.click("subclip.0.name");
    view.click("subclip.1.name");
    view.key(Qt::Key_Escape);
    EXPECT_EQ(store.project()->updatedAt, lastEdit) << "an unchanged name is not an edit";
    edit("");
    view.key(Qt::Key_Backspace);
    view.key(Qt::Key_Return);
    EXPECT_EQ(subclip(0).label, std::nullopt);
    EXPECT_EQ(keysOfScreen(view), 1);
    EXPECT_FALSE(screen.selection()->isInSubclipMode())
        << "clicking the name doesn't play the subclip";
}

TEST_F(MainPaneTest, RatesMarksPlaysAndDeletesASubclipByPointerAndByKeys) {
    Screen view = open();
    openDrawer(view);
    const QRect stars = rectOf(view, "subclip.0.rating");
    view.click(QPoint(stars.left() + 4 * 18 - 5, stars.center().y()));
    EXPECT_EQ(subclip(0).rating, 4);
    view.click("subclip.0.rating.clear");
    EXPECT_EQ(subclip(0).rating, 0);
    const bool wasMarked = subclip(0).selectedForExport;
    view.click("subclip.0.favorite");
    view.click("subclip.0.selected");
    EXPECT_TRUE(subclip(0).favorite && subclip(0).selectedForExport != wasMarked);
    EXPECT_FALSE(screen.selection()->isInSubclipMode()) << "its buttons don't play the subclip";
    EXPECT_EQ(view.focused()->objectName(), text("screen")) << "they don't take the focus";

    view.click("subclip.1.delete");
    ASSERT_EQ(clip(1).subclips.size(), 1);
    EXPECT_FALSE(view.shows("subclip.1"));
    view.click("subclip.0");
    EXPECT_EQ(screen.selection()->activeSubclipId(), subclip(0).id);
    EXPECT_TRUE(view.shows("subclipBanner"));
    screen.selection()->exitSubclipMode();

    view.item("subclip.0")->forceActiveFocus(Qt::TabFocusReason);
    view.key(Qt::Key_Return);
    EXPECT_TRUE(screen.selection()->isInSubclipMode());
    screen.selection()->exitSubclipMode();
    view.key(Qt::Key_Tab);
    view.key(Qt::Key_Tab);
    view.key(Qt::Key_5);
    EXPECT_EQ(subclip(0).rating, 5);
    view.key(Qt::Key_Space);
    EXPECT_FALSE(screen.selection()->isInSubclipMode())
        << "stars ignore the key, so the screen handles it";
    view.key(Qt::Key_Tab);
    view.key(Qt::Key_Space);
    EXPECT_FALSE(subclip(0).favorite);
    view.click("subclip.0.delete");
    EXPECT_TRUE(view.waitFor([&] { return view.shows("drawer.none"); }));
    EXPECT_EQ(player.range, std::nullopt);
}

TEST_F(MainPaneTest, ShowsAnAudioIconForAClipWithoutVideo) {
    Screen view = open();
    EXPECT_FALSE(view.shows("player.audio"));
    store.updateVideo(text("clip-1"), [](VideoRecord &video) { video.audioCodec = text("mp4a"); });
    EXPECT_TRUE(view.shows("player.audio") && view.shows("scrubber.knob"));
    view.picture("mainpane-audio");
}

TEST_F(MainPaneTest, StopsARemovedClipUntilItIsRestored) {
    Screen view = open();
    EXPECT_TRUE(view.shows("picture"));
    screen.transport()->togglePlayback();
    const Project whole = *store.project();
    Project without = whole;
    without.videos.removeAt(1);
    store.updateProject(without);
    EXPECT_FALSE(screen.transport()->isPlaying());
    EXPECT_FALSE(view.shows("picture"));
    EXPECT_TRUE(view.shows("player.none"));
    EXPECT_FALSE(view.shows("transport.play") || view.shows("drawer.head") ||
                 view.shows("playerOverlayButton"));
    view.picture("mainpane-empty");
    store.updateProject(whole);
    EXPECT_TRUE(view.shows("picture"));
    EXPECT_TRUE(screen.selection()->hasSelectedVideo());
}

} // namespace corvane::test

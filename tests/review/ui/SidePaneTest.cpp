#include "platform/TextFormat.h"
#include "review/MediaBanners.h"
#include "review/ReviewScreenFixture.h"
#include "support/screens/Screen.h"

#include <QAccessible>

namespace corvane::test {
namespace {

/// The side pane in a screen that has the focus and records unhandled keys.
constexpr auto kScreen = R"(
    import QtQuick
    import Corvane.Kit
    import Corvane.Review
    FocusScope {
        id: root
        required property ReviewScreenState review
        property int paneWidth: 300
        property list<int> keys
        property alias inspectorSource: pane.inspectorSource
        objectName: "screen"
        focus: true
        Item {
            objectName: "keys"
            anchors.fill: parent
            focus: true
            Keys.onPressed: event => root.keys.push(event.key)
            FilterRow {
                id: filters
                width: parent.width
                review: root.review
                onFocusLeft: parent.forceActiveFocus()
            }
            SidePane {
                id: pane
                objectName: "pane"
                anchors.top: filters.bottom
                anchors.bottom: parent.bottom
                width: root.paneWidth
                review: root.review
            }
        }
        HelpTip { objectName: "tip" }
    })";

Project manyClips() {
    Project project = sampleProject(300, 0);
    VideoRecord &first = project.videos[0].edit();
    first.fileName = QStringLiteral("clip-0\nlines ") + QString(300, QLatin1Char('n'));
    first.rating = 4;
    project.videos[1].edit().subclips = sampleProject(2, 2).videos[1]->subclips;
    return project;
}

class SidePaneTest : public ReviewScreenTest {
  protected:
    SidePaneTest() : ReviewScreenTest(manyClips()) {}

    QQuickItem *list() { return window.item("review.list"); }
    QQuickItem *row(const char *id) { return window.item(id); }
    void clickOn(const char *id, Qt::KeyboardModifiers modifiers = {}) {
        window.click(id, modifiers);
    }
    /// True if the screen itself has the focus.
    bool hasKeys() { return window.focused()->objectName() == QStringLiteral("keys"); }
    int current() { return list()->property("currentIndex").toInt(); }
    double top() { return list()->property("contentY").toDouble(); }
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) { window.key(key, modifiers); }
    void focusList() {
        list()->forceActiveFocus(Qt::TabFocusReason);
        QCoreApplication::processEvents();
    }
    QQuickItem *partOf(const char *row, const char *part) {
        auto *item = this->row(row);
        return item ? item->findChild<QQuickItem *>(QString::fromLatin1(part)) : nullptr;
    }
    /// A replacement for the inspector.
    void giveInspector() {
        const QString file = folder.write("Stub.qml", R"(
            import QtQuick
            Item { objectName: "inspector"; required property var inspector })");
        window.root()->setProperty("inspectorSource", QUrl::fromLocalFile(file));
    }

    Screen window{kScreen, {1280, 800}, {{QStringLiteral("review"), QVariant::fromValue(&screen)}}};
};

} // namespace

TEST_F(SidePaneTest, ClicksSelectRowsAndMarkRangesWithoutMovingTheFocus) {
    clickOn("clip-clip-0");
    EXPECT_EQ(screen.selection()->selectedVideoId(), QStringLiteral("clip-0"));
    EXPECT_TRUE(row("clip-clip-0")->property("current").toBool());
    clickOn("clip-clip-1", Qt::ControlModifier);
    clickOn("clip-clip-2", Qt::ShiftModifier);
    EXPECT_EQ(marked(), (QStringList{QStringLiteral("clip-1"), QStringLiteral("clip-1-sub-0"),
                                     QStringLiteral("clip-1-sub-1"), QStringLiteral("clip-2")}));
    EXPECT_TRUE(row("sub-clip-1-sub-0")->property("selected").toBool());
    EXPECT_EQ(screen.selection()->selectedVideoId(), QStringLiteral("clip-0"));
    clickOn("clip-clip-3");
    EXPECT_EQ(marked(), QStringList());
    EXPECT_TRUE(hasKeys());
    key(Qt::Key_Space);
    EXPECT_EQ(window.root()->property("keys").toList().size(), 1) << "only the key for the screen";
}

TEST_F(SidePaneTest, ClicksTheCurrentRowByReturnAndLeavesOtherKeysToTheScreen) {
    focusList();
    EXPECT_TRUE(window.shows("review.list.ring"));
    key(Qt::Key_Return);
    EXPECT_EQ(screen.selection()->selectedVideoId(), QStringLiteral("clip-0"));
    key(Qt::Key_Space, Qt::ControlModifier);
    EXPECT_EQ(marked(), QStringList{QStringLiteral("clip-0")});
    screen.selection()->moveSelection(301);
    EXPECT_EQ(current(), 301);
    EXPECT_TRUE(window.shows("clip-clip-299"));
    list()->setProperty("contentY", 0);
    window.root()->findChild<QQuickItem *>(QStringLiteral("keys"))->forceActiveFocus();
    focusList();
    EXPECT_TRUE(window.shows("clip-clip-299")) << "the current row is in view";
    window.root()->setProperty("keys", QVariant::fromValue(QList<int>()));
    QList<int> expected;
    for (const auto left : {Qt::Key_Return, Qt::Key_Space, Qt::Key_Up, Qt::Key_Down, Qt::Key_Home,
                            Qt::Key_End, Qt::Key_PageUp, Qt::Key_PageDown, Qt::Key_5}) {
        key(left);
        expected.append(left);
    }
    EXPECT_EQ(window.root()->property("keys").value<QList<int>>(), expected);
    EXPECT_EQ(current(), 301);
}

TEST_F(SidePaneTest, DescribesRowsToScreenReaders) {
    clickOn("clip-clip-0");
    auto *item = row("clip-clip-0");
    EXPECT_EQ(Screen::accessibleRole(item), QAccessible::ListItem);
    EXPECT_EQ(Screen::accessibleName(item), inOneLine(clip(0).fileName));
    const auto *face = QAccessible::queryAccessibleInterface(item);
    EXPECT_TRUE(face->state().selected);
    EXPECT_TRUE(face->text(QAccessible::Description).contains(QStringLiteral("4 stars")));
    store.toggleFavorite(QStringLiteral("clip-0"));
    EXPECT_TRUE(face->text(QAccessible::Description).contains(QStringLiteral("favorite")));
    EXPECT_FALSE(face->state().focused);
    focusList();
    EXPECT_TRUE(face->state().focused) << "screen readers follow the current row";
    screen.selection()->moveSelection(1);
    EXPECT_FALSE(face->state().focused);
}

TEST_F(SidePaneTest, KeepsMarksAndTextApartAtEveryWidthAndElidesOnlyNames) {
    store.setRating(QStringLiteral("clip-0"), 5);
    for (const bool large : {false, true}) {
        screen.filterBar()->setUseLargeThumbnails(large);
        for (const int width : {160, 220, 380}) {
            window.root()->setProperty("paneWidth", width);
            window.picture(QStringLiteral("side-pane-%1-%2").arg(large).arg(width));
            auto *name = partOf("clip-clip-0", "row.name");
            ASSERT_TRUE(name);
            EXPECT_TRUE(name->property("truncated").toBool());
            EXPECT_EQ(name->property("lineCount").toInt(), 1);
            EXPECT_LE(name->x() + name->width(), width);
            auto *thumbnail = partOf("clip-clip-0", "row.thumbnail");
            EXPECT_EQ(thumbnail->width(), large ? width - 24 : width == 160 ? 48 : 80);
            EXPECT_EQ(row("clip-clip-0")->height(), large ? thumbnail->height() + 58 : 53);
        }
    }
    window.hover("clip-clip-0");
    auto *tip = window.item("tip");
    EXPECT_TRUE(
        window.waitFor([&] { return tip->property("shownText") == inOneLine(clip(0).fileName); }));
}

TEST_F(SidePaneTest, ShowsNamesAsTheyAreAndTheirEndsIfTheyAreLong) {
    const QString take = QString(80, QLatin1Char('a')) + QStringLiteral("_take");
    const std::pair<QString, QString> names[] = {
        {QStringLiteral("640x360.mov"), QStringLiteral("640×360.mov")},
        {QStringLiteral("a->b.mov"), QStringLiteral("a→b.mov")},
        {take + QStringLiteral("01.mov"), take + QStringLiteral("02.mov")},
    };
    for (const auto &[left, right] : names) {
        store.updateVideo(QStringLiteral("clip-2"),
                          [&](VideoRecord &clip) { clip.fileName = left; });
        store.updateVideo(QStringLiteral("clip-3"),
                          [&](VideoRecord &clip) { clip.fileName = right; });
        const QImage picture = window.picture();
        const auto nameIn = [&](const char *row) {
            const QQuickItem *name = partOf(row, "row.name");
            return picture.copy(name->mapRectToScene({0, 0, 200, name->height()}).toRect());
        };
        EXPECT_NE(nameIn("clip-clip-2"), nameIn("clip-clip-3")) << left.toStdString();
    }
}

TEST_F(SidePaneTest, ShowsAnAudioGlyphForAClipWithoutVideo) {
    const auto glyph = [this](const char *row) {
        return partOf(row, "thumbnail.glyph")->property("symbol").toString();
    };
    store.updateVideo(QStringLiteral("clip-1"),
                      [](VideoRecord &clip) { clip.audioCodec = QStringLiteral("mp4a"); });
    for (const char *const row : {"clip-clip-1", "sub-clip-1-sub-0"}) {
        EXPECT_EQ(glyph(row), QStringLiteral("waveform")) << row;
    }
    EXPECT_EQ(glyph("clip-clip-2"), QStringLiteral("film"));
    store.updateVideo(QStringLiteral("clip-1"),
                      [](VideoRecord &clip) { clip.codec = QStringLiteral("avc1"); });
    EXPECT_EQ(glyph("clip-clip-1"), QStringLiteral("film"));
}

TEST_F(SidePaneTest, KeepsTheWidthThatKeysAndThePointerGiveIt) {
    constexpr auto kPanes = R"(
        import QtQuick
        import Corvane.Review
        Item {
            id: root
            required property ReviewScreenState review
            required property MediaBanners banners
            ReviewPanes {
                anchors.fill: parent
                review: root.review
                engine: null
                banners: root.banners
            }
        })";
    const auto handle = QStringLiteral("review.split.handle");
    const QString file = folder.at(QStringLiteral("settings.ini"));
    MediaBanners banners(store);
    for (const int kept : {220, 280}) {
        ReviewScreenState state(
            store, player, {.settings = std::make_unique<QSettings>(file, QSettings::IniFormat)});
        Screen view(kPanes, {1280, 800},
                    {{QStringLiteral("review"), QVariant::fromValue(&state)},
                     {QStringLiteral("banners"), QVariant::fromValue(&banners)}});
        const auto width = [&] {
            view.picture();
            return view.item("review.list")->width() + 1; // with the line
        };
        EXPECT_EQ(width(), kept);
        view.item(handle)->forceActiveFocus(Qt::TabFocusReason);
        const std::pair<Qt::Key, int> keys[] = {
            {Qt::Key_End, 380},  {Qt::Key_Right, 380}, {Qt::Key_Left, 360},
            {Qt::Key_Home, 160}, {Qt::Key_Left, 160},  {Qt::Key_Right, 180},
        };
        for (const auto &[key, expected] : keys) {
            view.key(key);
            EXPECT_EQ(width(), expected);
        }
        const QPoint line = view.item(handle)->mapToScene({0, 300}).toPoint();
        view.drag(line, line + QPoint(100, 0));
        EXPECT_EQ(width(), 280);
    }
}

TEST_F(SidePaneTest, KeepsTheFirstVisibleClipAtTheTopAndDoesNotScrollForEdits) {
    list()->setProperty("contentY", 2 * 53 + 30); // between the subclips of the second clip
    window.picture();
    clickOn("clip-clip-4");
    store.setRating(QStringLiteral("clip-2"), 3);
    store.toggleRejected(QStringLiteral("clip-5"));
    window.picture();
    EXPECT_EQ(top(), 2 * 53 + 30);
    EXPECT_FALSE(window.shows("clip-clip-5"));

    for (const bool large : {true, false}) {
        screen.filterBar()->setUseLargeThumbnails(large);
        window.picture();
        EXPECT_NEAR(row("clip-clip-2")->y(), top(), 3) << large;
    }
    screen.filterBar()->setUseLargeThumbnails(true);
    EXPECT_TRUE(window.property("sidePane.largeThumbnails", "checked").toBool());
    window.click("sidePane.largeThumbnails");
    EXPECT_FALSE(screen.filterBar()->useLargeThumbnails());
}

TEST_F(SidePaneTest, SwapsTheListForTheInspectorAndBack) {
    giveInspector();
    const auto info = QStringLiteral("sidePane.info");
    EXPECT_FALSE(window.property(info, "enabled").toBool());
    clickOn("clip-clip-1");
    window.click(info);
    EXPECT_TRUE(window.waitFor([&] { return !window.shows("review.list"); }));
    EXPECT_EQ(window.item("inspector")->property("inspector").value<QObject *>(),
              screen.inspector());
    EXPECT_EQ(window.textOf("sidePane.title"), QStringLiteral("clip-1"));
    EXPECT_EQ(Screen::accessibleName(window.item(info)), QStringLiteral("Back to clip list"));
    window.click(info);
    EXPECT_TRUE(window.waitFor([&] { return !window.shows("inspector"); }));
    EXPECT_TRUE(hasKeys());
}

TEST_F(SidePaneTest, FiltersTheListByTheControlsOfTheFilterRow) {
    const auto click = [&](const char *name) { window.click(name); };
    const auto is = [&](const char *name, const char *property) {
        return window.property(name, property);
    };
    const auto choose = [&](const char *menu, const char *item) {
        click(menu);
        window.picture(); // a menu is positioned in the next frame
        click(item);
        EXPECT_TRUE(window.waitFor([&] { return hasKeys(); })) << "clicks don't take the focus";
    };
    click("filter.Favorites");
    choose("filter.rating", "filter.rating.menu.4");
    EXPECT_EQ(is("filter.rating", "text"), QStringLiteral("3★+"));
    EXPECT_TRUE(is("filter.rating", "checked").toBool());
    EXPECT_EQ(is("filter.count", "text"), QStringLiteral("0 of 300 visible"));
    EXPECT_FALSE(window.shows("filter.addToSelects"));
    click("sidePane.clearFilters");
    EXPECT_FALSE(is("filter.Favorites", "checked").toBool());
    click("filter.All");
    EXPECT_TRUE(is("filter.All", "checked").toBool()) << "clicking doesn't turn it off";
    choose("filter.sort", "filter.sort.menu.2");
    EXPECT_EQ(is("filter.sort", "text"), QStringLiteral("Sort: Rating"));
    EXPECT_TRUE(hasKeys());

    click("filter.search");
    window.type("CLIP-29 ");
    EXPECT_EQ(screen.filterBar()->searchQuery(), QStringLiteral("CLIP-29 "));
    EXPECT_EQ(is("filter.count", "text"), QStringLiteral("11 of 300 visible"));
    click("filter.addToSelects");
    EXPECT_EQ(store.statusMessage(), QStringLiteral("Marked 11 clips for export"));
    click("filter.removeFromSelects");
    EXPECT_EQ(store.statusMessage(), QStringLiteral("Cleared 11 clips from selects"));
    click("filter.clearSearch");
    EXPECT_EQ(is("filter.search", "text"), QString());
    EXPECT_EQ(window.focused()->objectName(), QStringLiteral("filter.search"));
    key(Qt::Key_Escape);
    EXPECT_TRUE(hasKeys());
}

TEST_F(SidePaneTest, TabFollowsReadingOrder) {
    clickOn("clip-clip-1");
    screen.filterBar()->setSearchQuery(QStringLiteral("clip"));
    QStringList reached;
    for (int steps = 0; steps < 16; ++steps) {
        key(Qt::Key_Tab);
        reached.append(window.focused()->objectName());
    }
    EXPECT_EQ(reached.join(QLatin1Char(' ')).toStdString(),
              ("filter.All filter.Unreviewed filter.Favorites filter.Selected "
               "filter.Subclips filter.Show rejects filter.rating filter.search "
               "filter.clearSearch filter.sort filter.addToSelects "
               "filter.removeFromSelects sidePane.largeThumbnails sidePane.info "
               "clip-clip-1 filter.All"));
}

} // namespace corvane::test

#include "review/ReviewScreenFixture.h"
#include "support/screens/Screen.h"

#include <gmock/gmock.h>

#include <QTest>

namespace corvane::test {
namespace {

/// The inspector at the pane's width in a screen that counts unhandled keys.
constexpr auto kInspector = R"(
    import QtQuick
    import Corvane.Kit
    import Corvane.Review
    AppWindow {
        id: window
        property var inspector
        property int paneWidth: 300
        property alias keys: scope.keys
        FocusScope {
            id: scope
            property int keys: 0
            anchors.fill: parent
            focus: true
            Keys.onPressed: event => keys += 1
            Loader { // as in the side pane
                width: window.paneWidth
                height: parent.height
                sourceComponent: InspectorView {
                    inspector: window.inspector
                }
            }
        }
    })";

QString name(const char *latin) {
    return QString::fromUtf8(latin);
}

Project describedProject() {
    Project project = sampleProject(3);
    VideoRecord &video = project.videos[0].edit();
    video.codec = name("apcn");
    video.width = 3840;
    video.height = 2160;
    video.fps = 25;
    video.notes =
        name("Sun clears the ridge at 0:11.\r\nThe pole lift at 0:13 is the one; the second "
             "try is soft for four frames.");
    video.tags = {name("tide"), name("boat"), name("first light"), name("opening"),
                  name("no dialogue")};
    return project;
}

class InspectorTest : public ReviewScreenTest {
  protected:
    InspectorTest() : ReviewScreenTest(describedProject()) { click("clip-0"); }

    Screen open(int width = 300) {
        return Screen(kInspector, {400, 640},
                      {{name("inspector"), QVariant::fromValue(screen.inspector())},
                       {name("paneWidth"), width}});
    }
    static int keysOfScreen(const Screen &view) { return view.root()->property("keys").toInt(); }
};

} // namespace

TEST_F(InspectorTest, RatesAndFlagsTheClip) {
    Screen view = open();
    const QQuickItem *stars = view.item("inspector.rating");
    const QPoint fifth =
        stars->mapToScene(QPointF(4.5 * stars->property("starWidth").toInt(), 12)).toPoint();
    view.click(fifth);
    EXPECT_EQ(clip(0).rating, 5);
    int edits = 0;
    QObject::connect(&store, &ProjectStore::projectChanged, &store, [&] { ++edits; });
    view.click(fifth);
    EXPECT_EQ(clip(0).rating, 5);
    EXPECT_EQ(edits, 1) << "clicking the current rating sets it again";
    view.click("inspector.flag.0");
    view.click("inspector.flag.1");
    view.click("inspector.flag.2");
    EXPECT_TRUE(clip(0).favorite && clip(0).selectedForExport && !clip(0).reviewed)
        << "rating has set reviewed";
    view.picture("inspector");
    view.click("inspector.rating.clear");
    EXPECT_EQ(clip(0).rating, 0);
    EXPECT_EQ(keysOfScreen(view), 0);

    view.item("inspector.flag.3")->forceActiveFocus(Qt::TabFocusReason);
    view.key(Qt::Key_Space);
    view.key(Qt::Key_Return);
    view.key(Qt::Key_Space);
    EXPECT_TRUE(clip(0).rejected) << "the button keeps the focus";
    EXPECT_EQ(keysOfScreen(view), 0);
    store.undo();
    EXPECT_FALSE(view.property("inspector.flag.3", "isOn").toBool());
}

TEST_F(InspectorTest, HasHelpTextForEachStar) {
    Screen view = open();
    const QQuickItem *stars = view.item("inspector.rating");
    const QStringList texts{name("Rate 1 star (1 key)"), name("Rate 2 stars (2 key)")};
    for (int star = 1; star <= 2; ++star) {
        const QPointF point((star - 0.5) * stars->property("starWidth").toInt(), 12);
        QTest::mouseMove(view.window(), stars->mapToScene(point).toPoint());
        EXPECT_TRUE(view.waitFor([&] {
            return view.shows("helpTip") &&
                   Screen::accessibleName(view.item("helpTip")) == texts.at(star - 1);
        }));
    }
}

TEST_F(InspectorTest, AddsSeveralTagsAndRemovesThem) {
    Screen view = open();
    const auto field = name("inspector.newTag");
    view.click(field);
    view.type("  Gull ");
    view.key(Qt::Key_Return);
    view.type("Gull");
    view.click("inspector.addTag");
    view.type("gull");
    view.key(Qt::Key_Return);
    EXPECT_EQ(clip(0).tags.mid(5), (QStringList{name("Gull"), name("gull")}));
    EXPECT_EQ(view.textOf(field), QString());
    EXPECT_EQ(view.focused(), view.item(field));
    view.click("inspector.tag.1.remove");
    EXPECT_EQ(clip(0).tags.at(1), name("first light"));
    view.type("  ");
    view.key(Qt::Key_Return);
    view.key(Qt::Key_F2);
    view.key(Qt::Key_Up);
    EXPECT_EQ(clip(0).tags.size(), 6);
    EXPECT_EQ(keysOfScreen(view), 0);
    view.key(Qt::Key_Escape);
    view.key(Qt::Key_F2);
    EXPECT_EQ(keysOfScreen(view), 1) << "Esc returns the focus to the screen";
}

TEST_F(InspectorTest, SavesNotesToTheirClipAndKeepsTheCursor) {
    Screen view = open();
    const auto input = name("inspector.notes.input");
    view.click(input);
    store.setRating(name("clip-0"), 3);
    EXPECT_TRUE(clip(0).notes->contains(name("\r\n"))) << "showing notes doesn't change them";
    view.item(input)->setProperty("cursorPosition", 3);
    view.type(" then");
    store.setRating(name("clip-0"), 4);
    view.type("!");
    EXPECT_TRUE(clip(0).notes->startsWith(name("Sun then! clears")))
        << clip(0).notes->toStdString();
    view.key(Qt::Key_F3);
    view.key(Qt::Key_PageDown);

    const QString before = *clip(0).notes;
    screen.selection()->selectClip(name("clip-1"));
    EXPECT_EQ(view.textOf("inspector.notes"), QString());
    view.key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(clip(1).notes, std::nullopt) << "undo doesn't restore notes of another clip";
    view.type("x");
    view.key(Qt::Key_Backspace);
    screen.selection()->selectClip(name("clip-2"));
    view.key(Qt::Key_Z, Qt::ControlModifier);
    view.type("second");
    EXPECT_EQ(clip(0).notes, before);
    EXPECT_EQ(clip(1).notes, std::nullopt);
    EXPECT_EQ(clip(2).notes, name("second"));
    EXPECT_EQ(keysOfScreen(view), 0);
    view.key(Qt::Key_Tab);
    EXPECT_EQ(view.focused(), view.item("inspector.newTag"));
}

TEST_F(InspectorTest, ShowsHugeNotesAndManyTagsInANarrowPane) {
    Project project = *store.project();
    VideoRecord &video = project.videos[0].edit();
    for (int tag = 0; tag < 400; ++tag) {
        video.tags.append(QString::number(tag));
    }
    video.tags.prepend(QString(500, QLatin1Char('w')));
    store.updateProject(project);
    Screen view = open(160);
    EXPECT_TRUE(view.waitFor([&] { return view.shows("inspector.tag.405"); }));
    const QQuickItem *chips = view.item("inspector.tags");
    for (const char *chip : {"inspector.tag.0", "inspector.tag.1"}) {
        const QQuickItem *item = view.item(chip);
        EXPECT_EQ(item->x(), 0) << chip;
        EXPECT_LE(item->width(), chips->width()) << chip;
    }
    view.picture("inspector-narrow");
    view.item("inspector.newTag")->forceActiveFocus(Qt::TabFocusReason);
    view.picture("inspector-narrow-tag");
    const QRect seen(0, 0, 160, 640);
    const QQuickItem *field = view.item("inspector.newTag");
    EXPECT_TRUE(seen.contains(field->mapToScene(QPointF(0, 0)).toPoint())) << "Tab scrolls to it";
    view.type("new");
    view.key(Qt::Key_Return);
    EXPECT_EQ(clip(0).tags.last(), name("new"));

    const QString line = name("some words of a note ").repeated(4) + QLatin1Char('\n');
    const QString huge = line.repeated((1 << 20) / line.size());
    store.setNotes(name("clip-0"), huge);
    view.item("inspector.notes.input")->forceActiveFocus();
    view.key(Qt::Key_End, Qt::ControlModifier);
    view.type("and more");
    EXPECT_EQ(*clip(0).notes, huge + name("and more"));
    const QQuickItem *notes = view.item("inspector.notes");
    EXPECT_EQ(notes->height(), notes->property("implicitHeight").toDouble());
    EXPECT_LE(notes->height(), 112);
    view.key(Qt::Key_Tab);
    view.key(Qt::Key_Backtab);
    EXPECT_TRUE(seen.contains(notes->mapToScene(QPointF(0, 0)).toPoint()));
    EXPECT_GE(view.property("inspector.scroll", "contentY").toDouble(), 0);
}

} // namespace corvane::test

#include "support/screens/Screen.h"

#include <gtest/gtest.h>

namespace corvane::test {
namespace {

QString text(const char *latin1) {
    return QString::fromLatin1(latin1);
}

/// QML of a window with these controls. Their handlers call `note`, which records events.
QByteArray windowWith(const char *controls) {
    return QByteArray(R"(
        import QtQuick
        import Corvane.Kit
        AppWindow {
            id: window
            property var events: []
            function note(what) { events.push(what); eventsChanged(); }
    )") + controls +
           "}";
}

QStringList eventsOf(const Screen &screen) {
    return screen.root()->property("events").toStringList();
}

bool hasFocusRing(const Screen &screen, const QString &name) {
    const QQuickItem *item = screen.item(name);
    const QQuickItem *ring = item ? item->findChild<QQuickItem *>(text("focusRing")) : nullptr;
    return ring && ring->isVisible();
}

bool hasFocus(const Screen &screen, const char *name) {
    return screen.waitFor(
        [&] { return screen.shows(name) && screen.property(name, "activeFocus").toBool(); });
}

TEST(ControlsTest, AButtonTakesClickReturnAndSpaceAndShowsItsHelpTextWhileDisabled) {
    Screen screen(windowWith(R"(
        Button { objectName: "on"; x: 40; y: 40; text: "On"; onClicked: window.note("on") }
        Button {
            objectName: "off"; x: 240; y: 40; text: "Off"; enabled: false
            helpText: "Mark clips first"; onClicked: window.note("off")
        }
    )"));
    screen.hover("off");
    EXPECT_TRUE(screen.waitFor([&] { return screen.shows("helpTip"); }));
    EXPECT_EQ(Screen::accessibleName(screen.item("helpTip")), text("Mark clips first"));
    screen.click("off");
    screen.click("on");
    EXPECT_FALSE(hasFocusRing(screen, text("on")));
    screen.key(Qt::Key_Return);
    screen.key(Qt::Key_Space);
    EXPECT_EQ(eventsOf(screen), QStringList({text("on"), text("on"), text("on")}));
}

TEST(ControlsTest, FocusRingsAppearForKeyboardFocusAndAlwaysOnFields) {
    Screen screen(windowWith(R"(
        Column {
            CheckBox { objectName: "check"; text: "Include" }
            SegmentedChoice { objectName: "choice"; name: "Mode"; model: ["A", "B"] }
            TextField { objectName: "field"; name: "Name" }
            TextArea { objectName: "notes"; name: "Notes" }
        }
    )"));
    screen.click("choice.1");
    EXPECT_TRUE(screen.property("choice", "activeFocus").toBool());
    EXPECT_FALSE(hasFocusRing(screen, text("choice")));
    screen.key(Qt::Key_Backtab);
    EXPECT_TRUE(hasFocusRing(screen, text("check")));
    screen.key(Qt::Key_Space);
    EXPECT_TRUE(screen.property("check", "checked").toBool());
    screen.click("field");
    EXPECT_TRUE(screen.property("field", "showsFocusRing").toBool());
    screen.type("Tide");
    EXPECT_EQ(screen.textOf("field"), text("Tide"));
    screen.key(Qt::Key_Tab);
    screen.type("low water");
    screen.key(Qt::Key_Tab);
    EXPECT_EQ(screen.textOf("notes"), text("low water"));
    EXPECT_FALSE(screen.property("notes.input", "activeFocus").toBool());
}

TEST(ControlsTest, KeysChangeAChoiceAndARatingWithinTheirLimits) {
    Screen screen(windowWith(R"(
        Column {
            SegmentedChoice {
                objectName: "choice"; name: "Handles"; model: ["None", "1s", "2s"]
                onActivated: index => currentIndex = index
            }
            Stars { objectName: "stars"; onRated: stars => rating = stars }
        }
    )"));
    screen.click("choice.1");
    screen.key(Qt::Key_Right);
    screen.key(Qt::Key_Right);
    EXPECT_EQ(screen.property("choice", "currentIndex").toInt(), 2);
    screen.key(Qt::Key_Home);
    screen.key(Qt::Key_Left);
    EXPECT_EQ(screen.property("choice", "currentIndex").toInt(), 0);
    screen.key(Qt::Key_Tab);
    screen.key(Qt::Key_4);
    screen.key(Qt::Key_Right);
    screen.key(Qt::Key_Right);
    EXPECT_EQ(screen.property("stars", "rating").toInt(), 5);
    screen.click("stars.clear");
    EXPECT_EQ(screen.property("stars", "rating").toInt(), 0);
}

TEST(ControlsTest, AHeldReturnPressesAControlOnce) {
    Screen screen(windowWith(R"(
        Chip { text: "Favorites"; onToggled: window.note("chip") }
        Disclosure { objectName: "files"; y: 40; text: "Files"; onOpenChanged: window.note("files") }
    )"));
    screen.key(Qt::Key_Tab);
    screen.hold(Qt::Key_Return);
    screen.key(Qt::Key_Tab);
    screen.hold(Qt::Key_Return);
    EXPECT_EQ(eventsOf(screen), QStringList({text("chip"), text("files")}));
}

TEST(ControlsTest, AnAlertTakesReturnAndEscButNoClickOutside) {
    Screen screen(windowWith(R"(
        Alert {
            id: alert
            objectName: "alert"; title: "Delete?"; text: "It is gone then."; cancelText: "Cancel"
            acceptText: "Delete"; onAccepted: window.note("yes"); onRejected: window.note("no")
        }
        Button { objectName: "ask"; text: "Ask"; onClicked: alert.open() }
    )"));
    const auto openAlert = [&] {
        screen.click("ask");
        EXPECT_TRUE(hasFocus(screen, "alert.accept"));
    };
    const auto isClosed = [&] { return !screen.shows("alert.accept"); };
    openAlert();
    EXPECT_TRUE(hasFocusRing(screen, text("alert.accept")));
    screen.click(QPoint(20, 700));
    EXPECT_FALSE(isClosed());
    screen.key(Qt::Key_Return);
    EXPECT_TRUE(screen.waitFor(isClosed));
    openAlert();
    screen.key(Qt::Key_Escape);
    EXPECT_TRUE(screen.waitFor(isClosed));
    EXPECT_EQ(eventsOf(screen), QStringList({text("yes"), text("no")}));
}

TEST(ControlsTest, TheButtonsOfASheetKeepTheirGapAtEveryLabelLength) {
    Screen screen(windowWith(R"(
        property string label
        Sheet {
            visible: true
            sheetWidth: 600
            sheetHeight: 300
            footer: [
                Button { objectName: "left"; large: true; text: window.label },
                Button { objectName: "right"; large: true; text: "Begin " + window.label }
            ]
        }
    )"));
    for (const int length : {2, 30, 1, 12}) {
        screen.root()->setProperty("label", QString(length, QLatin1Char('n')));
        screen.picture();
        const QQuickItem *left = screen.item("left");
        const QQuickItem *right = screen.item("right");
        EXPECT_EQ(right->x() - (left->x() + left->width()), 8) << length;
        EXPECT_GE(left->width(), left->implicitWidth());
    }
}

TEST(ControlsTest, ASheetStaysOpenOnEscAndClicksOutsideAndReturnPressesItsDefaultButton) {
    Screen screen(windowWith(R"(
        Sheet {
            objectName: "sheet"; title: "Export"; backText: "Back"; sheetWidth: 500
            defaultButton: start; initialFocus: base
            onEscapePressed: window.note("esc"); onBackClicked: window.note("back")
            TextField { id: base; objectName: "base"; name: "Base name" }
            footer: Button { id: start; text: "Start"; onClicked: window.note("start") }
            Component.onCompleted: open()
        }
    )"));
    EXPECT_TRUE(hasFocus(screen, "base"));
    screen.key(Qt::Key_Return);
    screen.key(Qt::Key_Escape);
    screen.click(QPoint(20, 700));
    screen.click("sheet.back");
    EXPECT_EQ(eventsOf(screen), QStringList({text("start"), text("esc"), text("back")}));
}

TEST(ControlsTest, AMenuTakesKeysAndReturnsTheFocus) {
    Screen screen(windowWith(R"(
        PopUpMenu {
            id: menu
            name: "Rating"
            MenuItem { objectName: "off"; text: "Off"; onTriggered: window.note("off") }
            MenuItem { objectName: "one"; text: "1"; onTriggered: window.note("one") }
        }
        Chip { objectName: "chip"; text: "Rating"; menu: menu }
    )"));
    screen.key(Qt::Key_Tab);
    screen.key(Qt::Key_Down);
    EXPECT_TRUE(screen.waitFor([&] { return screen.shows("one"); }));
    screen.key(Qt::Key_Down);
    screen.key(Qt::Key_Down);
    screen.key(Qt::Key_Return);
    EXPECT_TRUE(screen.waitFor([&] { return !screen.shows("one"); }));
    EXPECT_EQ(eventsOf(screen), QStringList({text("one")}));
    EXPECT_EQ(screen.focused(), screen.item("chip"));
}

TEST(ControlsTest, AProgressBarNeverGoesBackBeforeARestart) {
    Screen screen(windowWith(R"(
        ProgressBar { objectName: "bar"; width: 200; name: "Exporting" }
    )"));
    QQuickItem *bar = screen.item("bar");
    for (const double value : {0.5, 0.2, 7.0}) {
        bar->setProperty("value", value);
        EXPECT_EQ(bar->property("shownValue").toDouble(), value > 1 ? 1.0 : 0.5);
    }
    bar->setProperty("value", 0.1);
    QMetaObject::invokeMethod(bar, "restart");
    EXPECT_EQ(bar->property("shownValue").toDouble(), 0.1);
}

TEST(ControlsTest, ADateFieldTakesTypedAndChosenDatesAndRevertsInvalidOnes) {
    Screen screen(windowWith(R"(
        DateField {
            objectName: "day"; name: "Shoot date"; date: "2025-05-31"
            onEdited: day => { date = day; window.note(day) }
        }
    )"));
    screen.click("day.calendar");
    EXPECT_TRUE(hasFocus(screen, "calendarDays"));
    screen.key(Qt::Key_PageDown); // 30 June
    screen.key(Qt::Key_Right);
    EXPECT_EQ(Screen::accessibleName(screen.item("day.2025-07-01")), text("1 July 2025"));
    screen.key(Qt::Key_Return);
    EXPECT_TRUE(screen.waitFor([&] { return !screen.shows("calendarDays"); }));
    screen.key(Qt::Key_A, Qt::ControlModifier);
    screen.type("2025-13-99");
    screen.key(Qt::Key_Return);
    EXPECT_EQ(screen.textOf("day"), text("2025-07-01"));
    EXPECT_EQ(eventsOf(screen), QStringList({text("2025-07-01")}));
}

} // namespace
} // namespace corvane::test

// The review's keys, pressed in the window on clips that play.

#include "WindowFixture.h"

#include "support/TestPlayer.h"

using namespace corvane;
using namespace corvane::test;

namespace {

/// A player clock that never advances: a playing clip keeps its position.
struct FrozenPlayback {
    TestMonotonicClock playerClock;
};

/// Three clips of 12 s and 300 frames with the subclips 1.25 to 2.25 s and 2.5 to 3.5 s, which mark
/// them as reviewed.
class ReviewKeysTest : private FrozenPlayback, public WindowTest {
  protected:
    ReviewKeysTest() : WindowTest(playerClock) {
        makeClip(folder.at("clip.mov"), {.size = kFrameSize, .frames = 300});
        Project project = sampleProject(3, 2);
        for (VideoItem &video : project.videos) {
            video.edit().sourcePath = QStringLiteral("clip.mov");
            video.edit().durationSeconds = 12;
        }
        show();
        open(make("Harbor.corvane", project));
        EXPECT_TRUE(appears("clip-clip-0") && reviewGetsFocus());
    }

    /// Presses a shortcut such as "Ctrl+Shift+Z" or, on the number pad, "Num+5".
    void key(const char *shortcut, bool isHeld = false) {
        const auto pressed = QKeySequence::fromString(QString::fromUtf8(shortcut))[0];
        const auto press = isHeld ? &Screen::hold : &Screen::key;
        (*screen.*press)(pressed.key(), pressed.keyboardModifiers());
    }
    void press(std::initializer_list<const char *> shortcuts) {
        for (const char *const shortcut : shortcuts) {
            key(shortcut);
        }
    }
    /// Presses keys and expects the `state` after each: "5 > 5R x0 0.00; F > ...". `suffix` is
    /// appended to each state.
    void keys(const char *script, const char *suffix = "") {
        for (const QString &step : QString::fromUtf8(script).split(QStringLiteral("; "))) {
            const QStringList parts = step.split(QStringLiteral(" > "));
            const std::string expected = parts.value(1).toStdString() + suffix;
            key(parts.first().toUtf8().constData());
            (void)screen->waitFor(
                [&] { return state() == expected; }); // a frame step waits for the decoder
            ASSERT_EQ(state(), expected) << "after " << parts.first().toStdString();
        }
    }
    void select(const char *clip) {
        click(clip);
        ASSERT_TRUE(screen->waitFor([&] { return engine().isReady(); }));
        ASSERT_TRUE(screen->waitFor([&] { return displayedFrame() == 0; }));
    }
    static std::string marks(const VideoRecord &clip) {
        return std::to_string(clip.rating) + (clip.favorite ? "F" : "") +
               (clip.selectedForExport ? "S" : "") + (clip.reviewed ? "R" : "") +
               (clip.rejected ? "X" : "");
    }
    static std::string marks(const Subclip &subclip) {
        return std::to_string(subclip.rating) + (subclip.favorite ? "F" : "") +
               (subclip.selectedForExport ? "S" : "");
    }
    static std::string seconds(double time) { return QString::number(time, 'f', 2).toStdString(); }
    /// The selected clip's marks, the playback rate and position, and the draft range:
    /// "3FS x1 5.00 in 2.50".
    std::string state() {
        const VideoRecord *const clip = review().selection()->selectedVideo();
        if (!clip) {
            return "none";
        }
        const auto draft = [](const char *name, std::optional<double> time) {
            return time ? name + seconds(*time) : std::string();
        };
        return marks(*clip) + " x" + QString::number(engine().rate()).toStdString() + ' ' +
               seconds(engine().currentSeconds()) + draft(" in ", review().marking()->draftIn()) +
               draft(" out ", review().marking()->draftOut());
    }
    const VideoRecord &clip(int index) { return *app.store().project()->videos.at(index); }
    const Subclip &subclip(int clipIndex, int index) { return clip(clipIndex).subclips.at(index); }
    /// The marks of all clips and their subclips: "0R-0-0 4F".
    std::string document() {
        QStringList all;
        for (const VideoItem &video : app.store().project()->videos) {
            QString each = QString::fromStdString(marks(*video));
            for (const Subclip &subclip : video->subclips) {
                each += QLatin1Char('-') + QString::fromStdString(marks(subclip));
            }
            all.append(each);
        }
        return all.join(QLatin1Char(' ')).toStdString();
    }
    qsizetype markedRows() {
        const MultiSelection &rows = review().selection()->multiSelection();
        return rows.multiSelectedClipIds.size() + rows.multiSelectedSubclipIds.size();
    }
    /// Presses a delete key and answers the confirmation with a key. Returns the alert's title and
    /// the text of its button.
    std::string confirm(const char *deleteKey, const char *answer) {
        key(deleteKey);
        EXPECT_TRUE(appears("confirmation.accept") && popupsSettle());
        key("F"); // ignored while the alert is open
        key("Ctrl+Z");
        const ReviewConfirmation asked = *review().confirmation();
        key(answer);
        EXPECT_TRUE(disappears("confirmation.accept") && reviewGetsFocus());
        return (asked.title + QLatin1Char(' ') + asked.acceptButton).toStdString();
    }
};

} // namespace

TEST_F(ReviewKeysTest, MarkKeysEditTheSelectedClipAndOtherKeysDoNothing) {
    app.store().toggleFavorite(QStringLiteral("clip-0"));
    key("Ctrl+Z");
    EXPECT_EQ(document(), "0R-0-0 0R-0-0 0R-0-0") << "undo needs no clip";
    const Project untouched = *app.store().project();
    press({"3", "F", "Space", "I", "Return", "Right", "Del", "Esc"});
    EXPECT_EQ(state(), "none");
    key("Down");
    ASSERT_TRUE(screen->waitFor([&] { return engine().isReady(); }));
    for (int each = Qt::Key_Space; each < Qt::Key_QuoteLeft; ++each) {
        if (!KeyMap::command(each, Qt::NoModifier)) {
            screen->key(Qt::Key(each));
        }
        if (!QByteArray("FVH").contains(char(each))) { // these open menus
            screen->key(Qt::Key(each), Qt::AltModifier);
        }
        screen->key(Qt::Key(each), Qt::MetaModifier);
    }
    EXPECT_EQ(state(), "0R x0 0.00");
    EXPECT_TRUE(*app.store().project() == untouched);

    keys("1 > 1R; 2 > 2R; 3 > 3R; 4 > 4R; Num+5 > 5R; F > 5FR; Shift+S > 5FSR; R > 5FS; "
         "X > 5FX; X > 5F; R > 5FR; F > 5R; 0 > 0R; Ctrl+Z > 5R; Ctrl+Z > 5FR; "
         "Ctrl+Shift+Z > 5R; Ctrl+Shift+Z > 0R",
         " x0 0.00");
}

TEST_F(ReviewKeysTest, TransportKeysControlPlaybackAndTheDisplayedFrame) {
    select("clip-clip-1");
    keys("Right > 0R x0 5.00; Num+Right > 0R x0 10.00; Shift+Left > 0R x0 5.00; "
         ". > 0R x0 5.04; . > 0R x0 5.08; , > 0R x0 5.04");
    EXPECT_TRUE(screen->waitFor([&] { return displayedFrame() == 126; }));
    keys("Space > 0R x1 5.04; Shift+Space > 0R x0 5.04; J > 0R x-1 5.04; J > 0R x-2 5.04; "
         "J > 0R x-4 5.04; J > 0R x-8 5.04; J > 0R x-8 5.04; L > 0R x1 5.04; L > 0R x2 5.04; "
         "Shift+L > 0R x4 5.04; L > 0R x8 5.04; L > 0R x8 5.04; J > 0R x-1 5.04; "
         "K > 0R x0 5.04; L > 0R x1 5.04; Space > 0R x0 5.04; Right > 0R x0 10.04; "
         "Right > 0R x0 12.00; . > 0R x0 12.00");
    EXPECT_TRUE(screen->waitFor([&] { return displayedFrame() == 299; }));
}

TEST_F(ReviewKeysTest, RangeKeysSetNudgeSaveAndJumpToTheRange) {
    select("clip-clip-1");
    keys("[ > 0R x0 2.50; ] > 0R x0 3.50; Return > 0R x0 3.50; Right > 0R x0 8.50; "
         "I > 0R x0 8.50 in 8.50; Shift+I > 0R x0 8.50 in 8.54; "
         "Shift+O > 0R x0 8.50 in 8.54 out 8.54; Return > 0R x0 8.50 in 8.54 out 8.54; "
         "Left > 0R x0 3.50 in 8.54 out 8.54; O > 0R x0 3.50 in 8.54 out 3.50; "
         "Shift+O > 0R x0 3.50 in 8.54 out 3.54; [ > 0R x0 8.54 in 8.54 out 3.54; "
         "] > 0R x0 3.54 in 8.54 out 3.54; Num+Enter > 0R x0 3.54; ] > 0R x0 8.54; "
         "O > 0R x0 8.54 out 8.54; Esc > 0R x0 8.54");
    ASSERT_EQ(clip(1).subclips.size(), 3);
    EXPECT_EQ(seconds(subclip(1, 2).inSeconds) + '-' + seconds(subclip(1, 2).outSeconds),
              "3.54-8.54");
}

TEST_F(ReviewKeysTest, KeysMeanTheSameIfTheListHasTheFocus) {
    select("clip-clip-0");
    const auto focusList = [this] {
        screen->item(QStringLiteral("review.list"))->forceActiveFocus(Qt::TabFocusReason);
    };
    for (const char *const script :
         {"Right > 0R x0 5.00", "Space > 0R x1 5.00", "Space > 0R x0 5.00", "Left > 0R x0 0.00",
          "I > 0R x0 0.00 in 0.00", "Return > 0R x0 0.00"}) {
        focusList();
        keys(script);
    }
    EXPECT_EQ(clip(0).subclips.size(), 3);
    const auto chosen = [this] {
        return review().selection()->activeSubclipId().value_or(
            review().selection()->selectedVideoId().value_or(QString()));
    };
    for (const auto &[shortcut, expected] :
         {std::pair("Down", "clip-0-sub-0"), {"End", "clip-2-sub-1"}, {"Home", "clip-0"}}) {
        focusList();
        key(shortcut);
        EXPECT_TRUE(screen->waitFor([&] { return chosen() == QLatin1String(expected); }))
            << shortcut << " chose " << chosen().toStdString();
    }
}

TEST_F(ReviewKeysTest, InSubclipModeKeysEditTheSubclip) {
    select("clip-clip-0");
    press({"Down", "Down"});
    ASSERT_TRUE(appears("subclipBanner"));
    keys("3 > 0R x0 2.50; F > 0R x0 2.50; S > 0R x0 2.50; R > 0 x0 2.50; X > 0X x0 2.50; "
         "X > 0 x0 2.50; Right > 0 x0 3.50; . > 0 x0 3.50; Left > 0 x0 2.50; "
         "I > 0 x0 2.50 in 2.50");
    EXPECT_EQ(document(), "0-0-3FS 0R-0-0 0R-0-0");
    EXPECT_EQ(confirm("Del", "Esc"), "Delete \"Subclip 2\"? Delete");
    EXPECT_EQ(document(), "0-0-3FS 0R-0-0 0R-0-0");
    EXPECT_EQ(state(), "0 x0 2.50 in 2.50") << "Esc only cancelled the alert";
    key("Esc");
    EXPECT_TRUE(disappears("subclipBanner"));
    EXPECT_EQ(state(), "0 x0 2.50");
    press({"4", "Up", "1"});
    EXPECT_EQ(document(), "4R-1-3FS 0R-0-0 0R-0-0");
    EXPECT_EQ(confirm("Backspace", "Return"), "Delete \"Subclip 1\"? Delete");
    EXPECT_EQ(document(), "4R-3FS 0R-0-0 0R-0-0");
    EXPECT_FALSE(review().selection()->isInSubclipMode());
    EXPECT_EQ(confirm("Del", "Esc"), "Reject \"clip-0\"? Reject");
    EXPECT_EQ(confirm("Del", "Return"), "Reject \"clip-0\"? Reject");
    EXPECT_EQ(document(), "4RX-3FS 0R-0-0 0R-0-0");
    key("Del");
    EXPECT_FALSE(review().hasConfirmation()) << "it is rejected already";
    press({"Ctrl+Z", "Ctrl+Z"});
    EXPECT_EQ(document(), "4R-1-3FS 0R-0-0 0R-0-0");
}

TEST_F(ReviewKeysTest, KeysEditAllMarkedRowsInOneUndoStep) {
    app.store().toggleSubclipFavorite({QStringLiteral("clip-0"), QStringLiteral("clip-0-sub-1")});
    select("clip-clip-1");
    click("sub-clip-0-sub-1", Qt::ControlModifier);
    press({"Shift+Down", "Shift+Down"});
    EXPECT_EQ(markedRows(), 3);
    key("I");
    keys("4 > 4R; F > 4FR; S > 4FSR; R > 4FS", " x0 0.00 in 0.00");
    EXPECT_EQ(document(), "0R-0-4S 4FS-4FS-0 0R-0-0") << "F toggles each row";
    press({"Ctrl+Z", "Ctrl+Z"});
    EXPECT_EQ(document(), "0R-0-4 4FR-4F-0 0R-0-0") << "one undo step per key";
    click("clip-clip-2", Qt::ControlModifier);
    key("X");
    EXPECT_EQ(document(), "0R-0-4 4FRX-4F-0 0RX-0-0");
    key("Ctrl+Z");
    EXPECT_EQ(confirm("Del", "Esc"), "Delete 2 subclips and reject 2 clips? Apply");
    EXPECT_EQ(markedRows(), 4);
    key("Esc");
    EXPECT_EQ(markedRows(), 0);
    EXPECT_TRUE(review().marking()->draftIn()) << "the first Esc cleared the marked rows";
    key("Esc");
    EXPECT_FALSE(review().marking()->draftIn());
    click("sub-clip-0-sub-1", Qt::ControlModifier);
    click("clip-clip-2", Qt::ControlModifier);
    EXPECT_EQ(confirm("Backspace", "Return"), "Delete 1 subclip and reject 1 clip? Apply");
    EXPECT_EQ(document(), "0R-0 4FR-4F-0 0RX-0-0");
    EXPECT_EQ(markedRows(), 0);
    key("Ctrl+Z");
    EXPECT_EQ(document(), "0R-0-4 4FR-4F-0 0R-0-0");
}

TEST_F(ReviewKeysTest, TypingInAFieldTriggersNoReviewKey) {
    select("clip-clip-1");
    click("sidePane.info");
    ASSERT_TRUE(appears("inspector.notes.input"));
    click("drawer.head");
    ASSERT_TRUE(screen->waitFor([&] {
        return shows("subclip.0.name") &&
               screen->item("drawer.keys")->mapToScene({0, 20}).y() < 800;
    }));
    const std::string before = document();
    const std::string stateBefore = state();
    const QString typed = QStringLiteral("fs rxjkl3,.io[]");
    for (const char *const field :
         {"subclip.0.name", "inspector.newTag", "inspector.notes.input", "filter.search"}) {
        click(field);
        const char *const input =
            field == std::string("subclip.0.name") ? "subclip.0.field" : field;
        ASSERT_TRUE(screen->waitFor([&] { return hasFocus(input); })) << field;
        press({"F", "S", "Space", "R", "X", "J", "K", "L", "3", ",", ".", "I", "O", "[", "]", "0"});
        press({"Left", "Del", "Space", "Backspace", "Up", "Down"});
        EXPECT_EQ(text(input), typed) << input;
        key("Ctrl+Z");
        EXPECT_NE(text(input), typed) << "a field has its own undo";
        EXPECT_EQ(document(), before) << input;
        EXPECT_EQ(state(), stateBefore) << input;
        EXPECT_FALSE(review().hasConfirmation());
        key("Esc");
        key("F");
        EXPECT_TRUE(clip(1).favorite) << "Esc returns the focus from " << input;
        key("F");
    }
    EXPECT_TRUE(hasFocus("project.keys"));
}

TEST_F(ReviewKeysTest, SheetsOpenByShortcutAndBlockReviewKeys) {
    select("clip-clip-1");
    key("S");
    const std::pair<const char *, const char *> sheets[] = {
        {"Ctrl+I", "import.cancel"},
        {"Ctrl+E", "export.configure.cancel"},
        {"Ctrl+Shift+E", "handoff.configure.cancel"}};
    for (const auto &[keys, button] : sheets) {
        key("Space");
        key(keys);
        ASSERT_TRUE(appears(button));
        EXPECT_FALSE(engine().isPlaying()) << "a sheet pauses playback";
        for (const auto &[other, name] : sheets) {
            key(other);
        }
        screen->item(button)->forceActiveFocus();
        press({"3", "F", "X", "L", ".", "I", "Del", "Right", "Down"});
        key("Ctrl+Z");
        EXPECT_EQ(state(), "0SR x0 0.00") << button;
        EXPECT_FALSE(review().hasConfirmation());
        EXPECT_EQ(
            std::ranges::count_if(sheets, [&](const auto &each) { return shows(each.second); }), 1);
        leaveSheet();
        EXPECT_TRUE(reviewGetsFocus()) << button;
    }
    key("3");
    EXPECT_EQ(state(), "3SR x0 0.00");
}

TEST_F(ReviewKeysTest, AHeldKeyActsOnceButKeepsMovingThroughTheList) {
    select("clip-clip-0");
    for (const char *const each : {"F", "X", "Space", "L", "Right"}) {
        key(each, true);
    }
    EXPECT_EQ(state(), "0FRX x2 5.00");
    key("Ctrl+Z", true);
    EXPECT_EQ(document(), "0FR-0-0 0R-0-0 0R-0-0");
    key("Del", true);
    ASSERT_TRUE(appears("confirmation.accept"));
    EXPECT_FALSE(clip(0).rejected);
    key("Esc", true);
    ASSERT_TRUE(disappears("confirmation.accept") && reviewGetsFocus());
    key("Down", true);
    EXPECT_EQ(review().selection()->selectedVideoId(), QStringLiteral("clip-1"));
    EXPECT_TRUE(review().selection()->isInSubclipMode()) << "four rows further";
    key("Ctrl+O", true);
    EXPECT_EQ(panels.shown, 1);
}

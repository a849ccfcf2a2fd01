// The keys of the review as they are pressed in the window, on clips that play.

#include "WindowFixture.h"

#include "support/TestPlayer.h"

using namespace corvane;
using namespace corvane::test;

namespace {

constexpr auto kNone = Qt::NoModifier;
constexpr auto kShift = Qt::ShiftModifier;
constexpr auto kControl = Qt::ControlModifier;

/// A time that stands, so that a clip that plays stays where it is.
struct StandingTime {
    TestTimeSource time;
};

/// Three clips of 12 s and 300 frames, each with the subclips 1.25 to 2.25 and 2.5 to 3.5 s, which
/// makes them reviewed.
class ReviewKeysTest : private StandingTime, public WindowTest {
  protected:
    struct Press {
        Qt::Key key;
        Qt::KeyboardModifiers modifiers;
        const char *after; ///< see `state`
    };

    ReviewKeysTest() : WindowTest(time) {
        makeClip(folder.at(QStringLiteral("clip.mov")), {.size = kShape, .frames = 300});
        Project project = sampleProject(3, 2);
        for (VideoItem &video : project.videos) {
            video.edit().sourcePath = QStringLiteral("clip.mov");
            video.edit().durationSeconds = 12;
        }
        show();
        open(make(QStringLiteral("Harbor.corvane"), project));
        EXPECT_TRUE(comes("clip-clip-0") && keysAreBack());
    }

    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = kNone) { screen->key(key, modifiers); }
    void keys(const std::vector<Press> &presses) {
        for (const Press &press : presses) {
            key(press.key, press.modifiers);
            (void)screen->waitFor([&] { return state() == press.after; }); // a step is decoded
            ASSERT_EQ(state(), press.after) << "after " << (press.modifiers ? "modified " : "")
                                            << QKeySequence(press.key).toString().toStdString();
        }
    }
    void select(const char *clip) {
        click(clip);
        ASSERT_TRUE(screen->waitFor([&] { return engine().isReady(); }));
        ASSERT_TRUE(screen->waitFor([&] { return shownFrame() == 0; }));
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
    /// "3FS x1 5.00", the selected clip's marks and where the player is, and the drafts behind it.
    std::string state() {
        const VideoRecord *const clip = review().selectedVideo();
        if (!clip) {
            return "none";
        }
        const auto draft = [](const char *name, std::optional<double> time) {
            return time ? name + seconds(*time) : std::string();
        };
        return marks(*clip) + " x" + QString::number(engine().rate()).toStdString() + ' ' +
               seconds(engine().currentSeconds()) + draft(" in ", review().draftIn()) +
               draft(" out ", review().draftOut());
    }
    const VideoRecord &clip(int index) { return *app.store().project()->videos.at(index); }
    const Subclip &subclip(int clipIndex, int index) { return clip(clipIndex).subclips.at(index); }
    /// The marks of all clips, each with those of its subclips.
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
        const MultiSelection &rows = review().multiSelection();
        return rows.multiSelectedClipIds.size() + rows.multiSelectedSubclipIds.size();
    }
    /// Presses a delete key, reads the question and answers it by a key.
    std::string asked(Qt::Key deleteKey, Qt::Key answer) {
        key(deleteKey);
        EXPECT_TRUE(comes("confirmation.accept"));
        EXPECT_TRUE(screen->waitFor([&] { return hasFocus("confirmation.accept"); }));
        key(Qt::Key_F); // nobody's while it is asked
        key(Qt::Key_Z, kControl);
        const QString title = review().confirmation()->title;
        key(answer);
        EXPECT_TRUE(goes("confirmation.accept") && keysAreBack());
        return title.toStdString();
    }
    bool nothingBut(const Project &before) { return *app.store().project() == before; }
};

} // namespace

TEST_F(ReviewKeysTest, EachKeyActsOnTheClipAndNoOtherKeyDoes) {
    const Project untouched = *app.store().project();
    for (const Qt::Key each : {Qt::Key_3, Qt::Key_F, Qt::Key_Space, Qt::Key_I, Qt::Key_Return,
                               Qt::Key_Right, Qt::Key_Delete, Qt::Key_Escape}) {
        key(each);
    }
    EXPECT_EQ(state(), "none");
    key(Qt::Key_Down);
    ASSERT_TRUE(screen->waitFor([&] { return engine().isReady(); }));
    for (int each = Qt::Key_Space; each < Qt::Key_QuoteLeft; ++each) {
        if (!KeyMap::command(each, kNone)) {
            key(Qt::Key(each));
        }
        key(Qt::Key(each), Qt::AltModifier);
        key(Qt::Key(each), Qt::MetaModifier);
    }
    EXPECT_EQ(state(), "0R x0 0.00");
    EXPECT_TRUE(nothingBut(untouched));

    keys({{Qt::Key_1, kNone, "1R x0 0.00"},
          {Qt::Key_2, kNone, "2R x0 0.00"},
          {Qt::Key_3, kNone, "3R x0 0.00"},
          {Qt::Key_4, kNone, "4R x0 0.00"},
          {Qt::Key_5, Qt::KeypadModifier, "5R x0 0.00"},
          {Qt::Key_F, kNone, "5FR x0 0.00"},
          {Qt::Key_S, kShift, "5FSR x0 0.00"},
          {Qt::Key_R, kNone, "5FS x0 0.00"},
          {Qt::Key_X, kNone, "5FX x0 0.00"},
          {Qt::Key_X, kNone, "5F x0 0.00"},
          {Qt::Key_R, kNone, "5FR x0 0.00"},
          {Qt::Key_F, kNone, "5R x0 0.00"},
          {Qt::Key_0, kNone, "0R x0 0.00"},
          {Qt::Key_Z, kControl, "5R x0 0.00"},
          {Qt::Key_Z, kControl, "5FR x0 0.00"},
          {Qt::Key_Z, kControl | kShift, "5R x0 0.00"},
          {Qt::Key_Z, kControl | kShift, "0R x0 0.00"}});
}

TEST_F(ReviewKeysTest, TheKeysOfTheTransportMoveThePlayerAndItsPicture) {
    select("clip-clip-1");
    keys({{Qt::Key_Right, kNone, "0R x0 5.00"},
          {Qt::Key_Right, Qt::KeypadModifier, "0R x0 10.00"},
          {Qt::Key_Left, kShift, "0R x0 5.00"},
          {Qt::Key_Period, kNone, "0R x0 5.04"},
          {Qt::Key_Period, kNone, "0R x0 5.08"},
          {Qt::Key_Comma, kNone, "0R x0 5.04"}});
    EXPECT_TRUE(screen->waitFor([&] { return shownFrame() == 126; }));
    keys({{Qt::Key_Space, kNone, "0R x1 5.04"},
          {Qt::Key_Space, kShift, "0R x0 5.04"},
          {Qt::Key_J, kNone, "0R x-1 5.04"},
          {Qt::Key_J, kNone, "0R x-2 5.04"},
          {Qt::Key_J, kNone, "0R x-4 5.04"},
          {Qt::Key_J, kNone, "0R x-8 5.04"},
          {Qt::Key_J, kNone, "0R x-8 5.04"},
          {Qt::Key_L, kNone, "0R x1 5.04"},
          {Qt::Key_L, kNone, "0R x2 5.04"},
          {Qt::Key_L, kShift, "0R x4 5.04"},
          {Qt::Key_L, kNone, "0R x8 5.04"},
          {Qt::Key_L, kNone, "0R x8 5.04"},
          {Qt::Key_J, kNone, "0R x-1 5.04"},
          {Qt::Key_K, kNone, "0R x0 5.04"},
          {Qt::Key_L, kNone, "0R x1 5.04"},
          {Qt::Key_Space, kNone, "0R x0 5.04"},
          {Qt::Key_Right, kNone, "0R x0 10.04"},
          {Qt::Key_Right, kNone, "0R x0 12.00"},
          {Qt::Key_Period, kNone, "0R x0 12.00"}});
    EXPECT_TRUE(screen->waitFor([&] { return shownFrame() == 299; }));
}

TEST_F(ReviewKeysTest, MarksAreSetNudgedSavedAndJumpedTo) {
    select("clip-clip-1");
    keys({{Qt::Key_BracketLeft, kNone, "0R x0 2.50"},
          {Qt::Key_BracketRight, kNone, "0R x0 3.50"},
          {Qt::Key_Return, kNone, "0R x0 3.50"},
          {Qt::Key_Right, kNone, "0R x0 8.50"},
          {Qt::Key_I, kNone, "0R x0 8.50 in 8.50"},
          {Qt::Key_I, kShift, "0R x0 8.50 in 8.54"},
          {Qt::Key_O, kShift, "0R x0 8.50 in 8.54 out 8.54"},
          {Qt::Key_Return, kNone, "0R x0 8.50 in 8.54 out 8.54"},
          {Qt::Key_Left, kNone, "0R x0 3.50 in 8.54 out 8.54"},
          {Qt::Key_O, kNone, "0R x0 3.50 in 8.54 out 3.50"},
          {Qt::Key_O, kShift, "0R x0 3.50 in 8.54 out 3.54"},
          {Qt::Key_BracketLeft, kNone, "0R x0 8.54 in 8.54 out 3.54"},
          {Qt::Key_BracketRight, kNone, "0R x0 3.54 in 8.54 out 3.54"},
          {Qt::Key_Enter, Qt::KeypadModifier, "0R x0 3.54"},
          {Qt::Key_BracketRight, kNone, "0R x0 8.54"},
          {Qt::Key_O, kNone, "0R x0 8.54 out 8.54"},
          {Qt::Key_Escape, kNone, "0R x0 8.54"}});
    ASSERT_EQ(clip(1).subclips.size(), 3);
    EXPECT_EQ(seconds(subclip(1, 2).inSeconds) + '-' + seconds(subclip(1, 2).outSeconds),
              "3.54-8.54");
}

TEST_F(ReviewKeysTest, InSubclipModeTheKeysAreTheSubclips) {
    select("clip-clip-0");
    key(Qt::Key_Down);
    key(Qt::Key_Down);
    ASSERT_TRUE(comes("subclipBanner"));
    keys({{Qt::Key_3, kNone, "0R x0 2.50"},
          {Qt::Key_F, kNone, "0R x0 2.50"},
          {Qt::Key_S, kNone, "0R x0 2.50"},
          {Qt::Key_R, kNone, "0 x0 2.50"},
          {Qt::Key_X, kNone, "0X x0 2.50"},
          {Qt::Key_X, kNone, "0 x0 2.50"},
          {Qt::Key_Right, kNone, "0 x0 3.50"},
          {Qt::Key_Period, kNone, "0 x0 3.50"},
          {Qt::Key_Left, kNone, "0 x0 2.50"},
          {Qt::Key_I, kNone, "0 x0 2.50 in 2.50"}});
    EXPECT_EQ(document(), "0-0-3FS 0R-0-0 0R-0-0");
    EXPECT_EQ(asked(Qt::Key_Delete, Qt::Key_Escape), "Delete \"Subclip 2\"?");
    EXPECT_EQ(document(), "0-0-3FS 0R-0-0 0R-0-0");
    EXPECT_EQ(state(), "0 x0 2.50 in 2.50") << "Esc was the question's alone";
    key(Qt::Key_Escape);
    EXPECT_TRUE(goes("subclipBanner"));
    EXPECT_EQ(state(), "0 x0 2.50");
    key(Qt::Key_4);
    key(Qt::Key_Up);
    key(Qt::Key_1);
    EXPECT_EQ(document(), "4R-1-3FS 0R-0-0 0R-0-0");
    EXPECT_EQ(asked(Qt::Key_Backspace, Qt::Key_Return), "Delete \"Subclip 1\"?");
    EXPECT_EQ(document(), "4R-3FS 0R-0-0 0R-0-0");
    EXPECT_FALSE(review().isInSubclipMode());
    EXPECT_EQ(asked(Qt::Key_Delete, Qt::Key_Escape), "Reject \"clip-0\"?");
    EXPECT_EQ(asked(Qt::Key_Delete, Qt::Key_Return), "Reject \"clip-0\"?");
    EXPECT_EQ(document(), "4RX-3FS 0R-0-0 0R-0-0");
    key(Qt::Key_Delete);
    EXPECT_FALSE(review().hasConfirmation()) << "it is rejected already";
    for (int step = 0; step < 2; ++step) {
        key(Qt::Key_Z, kControl);
    }
    EXPECT_EQ(document(), "4R-1-3FS 0R-0-0 0R-0-0");
}

TEST_F(ReviewKeysTest, MarkedRowsAreEditedTogetherInOneStep) {
    select("clip-clip-1");
    click("sub-clip-0-sub-1", kControl);
    key(Qt::Key_Down, kShift);
    key(Qt::Key_Down, kShift);
    EXPECT_EQ(markedRows(), 3);
    key(Qt::Key_I);
    keys({{Qt::Key_4, kNone, "4R x0 0.00 in 0.00"},
          {Qt::Key_F, kNone, "4FR x0 0.00 in 0.00"},
          {Qt::Key_S, kNone, "4FSR x0 0.00 in 0.00"},
          {Qt::Key_R, kNone, "4FS x0 0.00 in 0.00"}});
    EXPECT_EQ(document(), "0R-0-4FS 4FS-4FS-0 0R-0-0");
    key(Qt::Key_Z, kControl);
    key(Qt::Key_Z, kControl);
    EXPECT_EQ(document(), "0R-0-4F 4FR-4F-0 0R-0-0") << "a step for each key";
    click("clip-clip-2", kControl);
    key(Qt::Key_X);
    EXPECT_EQ(document(), "0R-0-4F 4FRX-4F-0 0RX-0-0");
    key(Qt::Key_Z, kControl);
    EXPECT_EQ(asked(Qt::Key_Delete, Qt::Key_Escape), "Delete 2 subclips and reject 2 clips?");
    EXPECT_EQ(markedRows(), 4);
    key(Qt::Key_Escape);
    EXPECT_EQ(markedRows(), 0);
    EXPECT_TRUE(review().draftIn()) << "the first Esc was for the marks";
    key(Qt::Key_Escape);
    EXPECT_FALSE(review().draftIn());
    click("sub-clip-0-sub-1", kControl);
    click("clip-clip-2", kControl);
    EXPECT_EQ(asked(Qt::Key_Backspace, Qt::Key_Return), "Delete 1 subclip and reject 1 clip?");
    EXPECT_EQ(document(), "0R-0 4FR-4F-0 0RX-0-0");
    EXPECT_EQ(markedRows(), 0);
    key(Qt::Key_Z, kControl);
    EXPECT_EQ(document(), "0R-0-4F 4FR-4F-0 0R-0-0");
}

TEST_F(ReviewKeysTest, WhatIsTypedIntoAFieldIsNoKeyOfTheMap) {
    select("clip-clip-1");
    click("sidePane.info");
    ASSERT_TRUE(comes("inspector.notes.input"));
    click("drawer.head");
    ASSERT_TRUE(screen->waitFor([&] {
        return shows("subclip.0.name") &&
               screen->item(QStringLiteral("drawer.keys"))->mapToScene({0, 20}).y() < 800;
    }));
    const std::string before = document();
    const std::string stands = state();
    const QString typed = QStringLiteral("fs rxjkl3,.io[]IO");
    for (const char *const field :
         {"subclip.0.name", "inspector.newTag", "inspector.notes.input", "filter.search"}) {
        click(field);
        const char *const input =
            field == std::string("subclip.0.name") ? "subclip.0.field" : field;
        ASSERT_TRUE(screen->waitFor([&] { return hasFocus(input); })) << field;
        screen->type(typed + QLatin1Char('#'));
        for (const Qt::Key each : {Qt::Key_Left, Qt::Key_Delete, Qt::Key_Space, Qt::Key_Backspace,
                                   Qt::Key_Up, Qt::Key_Down}) {
            key(each);
        }
        EXPECT_EQ(text(input), typed) << input;
        key(Qt::Key_Z, kControl);
        EXPECT_NE(text(input), typed) << "a field has an undo of its own";
        EXPECT_EQ(document(), before) << input;
        EXPECT_EQ(state(), stands) << input;
        EXPECT_FALSE(review().hasConfirmation());
        key(Qt::Key_Escape);
        key(Qt::Key_F);
        EXPECT_TRUE(clip(1).favorite) << "Esc has given the keys back from " << input;
        key(Qt::Key_F);
    }
    EXPECT_TRUE(hasFocus("project.keys"));
}

TEST_F(ReviewKeysTest, TheSheetsOpenByKeysAndNoKeyGoesBehindThem) {
    select("clip-clip-1");
    key(Qt::Key_S);
    const std::tuple<Qt::Key, Qt::KeyboardModifiers, const char *> sheets[] = {
        {Qt::Key_I, kControl, "import.cancel"},
        {Qt::Key_E, kControl, "export.configure.cancel"},
        {Qt::Key_E, kControl | kShift, "handoff.configure.cancel"}};
    for (const auto &[letter, modifiers, button] : sheets) {
        key(Qt::Key_Space);
        key(letter, modifiers);
        ASSERT_TRUE(comes(button));
        EXPECT_FALSE(engine().isPlaying()) << "it would be heard behind the sheet";
        for (const auto &[other, held, name] : sheets) {
            key(other, held);
        }
        screen->item(QString::fromUtf8(button))->forceActiveFocus();
        for (const Qt::Key each : {Qt::Key_3, Qt::Key_F, Qt::Key_X, Qt::Key_L, Qt::Key_Period,
                                   Qt::Key_I, Qt::Key_Delete, Qt::Key_Right, Qt::Key_Down}) {
            key(each);
        }
        key(Qt::Key_Z, kControl);
        EXPECT_EQ(state(), "0SR x0 0.00") << button;
        EXPECT_FALSE(review().hasConfirmation());
        EXPECT_EQ(qsizetype(shows("import.cancel")) + shows("export.configure.cancel") +
                      shows("handoff.configure.cancel"),
                  1);
        leaveSheet();
        EXPECT_TRUE(keysAreBack()) << button;
    }
    key(Qt::Key_3);
    EXPECT_EQ(state(), "3SR x0 0.00");
}

TEST_F(ReviewKeysTest, AHeldKeyActsOnceAndTheListIsWalkedByHolding) {
    select("clip-clip-0");
    for (const Qt::Key each : {Qt::Key_F, Qt::Key_X, Qt::Key_Space, Qt::Key_L, Qt::Key_Right}) {
        screen->hold(each);
    }
    EXPECT_EQ(state(), "0FRX x2 5.00");
    screen->hold(Qt::Key_Z, kControl);
    EXPECT_EQ(document(), "0FR-0-0 0R-0-0 0R-0-0");
    screen->hold(Qt::Key_Delete);
    ASSERT_TRUE(comes("confirmation.accept"));
    EXPECT_FALSE(clip(0).rejected);
    screen->hold(Qt::Key_Escape);
    ASSERT_TRUE(goes("confirmation.accept") && keysAreBack());
    screen->hold(Qt::Key_Down);
    EXPECT_EQ(review().selectedVideoId(), QStringLiteral("clip-1"));
    EXPECT_TRUE(review().isInSubclipMode()) << "four rows on";
    screen->hold(Qt::Key_O, kControl);
    EXPECT_EQ(panels.shown, 1);
}

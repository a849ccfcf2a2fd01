#include "ReviewScreenFixture.h"

namespace corvane {

namespace {

using test::ReviewScreenTest;

QStringList idList(const char *ids) {
    return QString::fromLatin1(ids).split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

/// Fifty clips without subclips.
class ReviewOfFifty : public ReviewScreenTest {
  protected:
    ReviewOfFifty() : ReviewScreenTest(test::sampleProject(50)) {}
};

} // namespace

TEST_F(ReviewScreenTest, LeavesKeysToTextInputAndIgnoresThemWithoutAClip) {
    EXPECT_FALSE(press(Qt::Key_Space));
    EXPECT_FALSE(press(Qt::Key_3));
    EXPECT_TRUE(press(Qt::Key_Z, Qt::ControlModifier)) << "undo needs no clip";
    click("clip-1");
    for (const int key : {Qt::Key_Space, Qt::Key_Delete, Qt::Key_Escape, Qt::Key_3}) {
        EXPECT_FALSE(screen.handleKeyDown(key, {}, true));
        EXPECT_FALSE(screen.handleKeyPress(key, {}, true));
    }
    EXPECT_EQ(asked(), QString());
    EXPECT_TRUE(screen.handleKeyDown(Qt::Key_F, {}, false, true)) << "held down";
    EXPECT_FALSE(clip(1).favorite);
    EXPECT_FALSE(press(Qt::Key_Space, Qt::AltModifier));
    EXPECT_FALSE(press(Qt::Key_K, Qt::MetaModifier));
    EXPECT_TRUE(press(Qt::Key_Space, Qt::ShiftModifier));
    EXPECT_EQ(player.shownRate, 1);
}

TEST_F(ReviewOfFifty, MovesTheSelectionFromTheIndexOfARejectedClip) {
    const QList<SidebarRowId> all = screen.list()->orderedRowIds();
    screen.selection()->clickRow(10, {});
    type("x");
    screen.selection()->moveSelection(1);
    EXPECT_EQ(*screen.selection()->selectedVideoId(), all[11].videoId);
    type("x");
    screen.selection()->moveSelection(-1);
    EXPECT_EQ(*screen.selection()->selectedVideoId(), all[9].videoId);
    screen.filterBar()->setSearchQuery(QStringLiteral("no such name"));
    screen.filterBar()->clearFilters();
    type("x");
    screen.filterBar()->setUseLargeThumbnails(true);
    screen.selection()->moveSelection(1);
    EXPECT_EQ(*screen.selection()->selectedVideoId(), all[0].videoId) << "refiltered";
}

TEST_F(ReviewScreenTest, ShuttlesSkipsAndSteps) {
    click("clip-0");
    QList<double> rates;
    for (const char key : {'J', 'J', 'J', 'J', 'J', 'L', 'L', 'L', 'L', 'L', 'J', 'K', 'L'}) {
        press(key);
        rates.append(player.shownRate);
    }
    EXPECT_EQ(rates, (QList<double>{-1, -2, -4, -8, -8, 1, 2, 4, 8, 8, -1, 0, 1}));
    press(Qt::Key_Space);
    EXPECT_EQ(player.shownRate, 0);
    press(Qt::Key_Right);
    press(Qt::Key_Right);
    press(Qt::Key_Left);
    press(Qt::Key_Period);
    EXPECT_DOUBLE_EQ(player.current, 5.04);
    press(Qt::Key_Comma);
    EXPECT_DOUBLE_EQ(player.current, 5);
}

TEST_F(ReviewScreenTest, EditsTheClipOrTheActiveSubclipOrAllMarkedRowsInOneUndoStep) {
    click("clip-0");
    type("4fsrx");
    EXPECT_EQ(clip(0).rating, 4);
    EXPECT_TRUE(clip(0).favorite && clip(0).rejected && !clip(0).reviewed);
    EXPECT_FALSE(clip(0).selectedForExport) << "rejecting deselects";
    type("x0");
    EXPECT_FALSE(clip(0).rejected);
    EXPECT_EQ(clip(0).rating, 0);

    screen.filterBar()->clearFilters();
    click("clip-0-sub-1");
    type("3fsr");
    EXPECT_EQ(clip(0).subclips.at(1).rating, 3);
    EXPECT_TRUE(clip(0).subclips.at(1).favorite && clip(0).subclips.at(1).selectedForExport);
    EXPECT_EQ(clip(0).rating, 0);

    click("clip-0-sub-1", Qt::ControlModifier);
    click("clip-1", Qt::ControlModifier);
    click("clip-2", Qt::ControlModifier);
    const Project before = *store.project();
    const auto restoreProject = [&] {
        press(Qt::Key_Z, Qt::ControlModifier);
        EXPECT_EQ(store.project()->videos, before.videos) << "one undo step per key";
    };
    type("5");
    EXPECT_EQ(clip(1).rating + clip(2).rating + clip(0).subclips.at(1).rating, 15);
    restoreProject();
    type("f");
    EXPECT_TRUE(clip(1).favorite && clip(2).favorite && !clip(0).subclips.at(1).favorite);
    restoreProject();
    type("s");
    EXPECT_TRUE(clip(1).selectedForExport && !clip(0).subclips.at(1).selectedForExport);
    restoreProject();
    type("r");
    EXPECT_FALSE(clip(1).reviewed || clip(2).reviewed) << "clips with subclips start as reviewed";
    restoreProject();
    type("x");
    EXPECT_TRUE(clip(1).rejected && clip(2).rejected && !clip(0).rejected);
    restoreProject();
    EXPECT_EQ(marked(), idList("clip-0-sub-1 clip-1 clip-2"));
}

TEST_F(ReviewScreenTest, MarksRowsAndRanges) {
    click("clip-1", Qt::ShiftModifier);
    EXPECT_EQ(marked(), idList("clip-1")) << "only the row without an anchor";
    click("clip-2-sub-0", Qt::ShiftModifier);
    EXPECT_EQ(marked(), idList("clip-1 clip-1-sub-0 clip-1-sub-1 clip-2 clip-2-sub-0"));
    click("clip-2", Qt::ControlModifier);
    EXPECT_FALSE(marked().contains(QStringLiteral("clip-2")));
    EXPECT_EQ(screen.selection()->multiSelection().clipMultiSelectAnchor, QStringLiteral("clip-2"));
    EXPECT_FALSE(screen.selection()->selectedVideoId()) << "the player keeps its clip";
    click("clip-3");
    EXPECT_EQ(marked(), QStringList());
    click("clip-2-sub-1", Qt::ShiftModifier);
    EXPECT_EQ(marked(), idList("clip-2-sub-1 clip-3")) << "anchored at the clip in the player";
    type("i");
    press(Qt::Key_Escape);
    EXPECT_FALSE(screen.selection()->multiSelection().exists());
    EXPECT_TRUE(screen.marking()->draftIn());
    press(Qt::Key_Escape);
    EXPECT_FALSE(screen.marking()->draftIn());
}

TEST_F(ReviewScreenTest, AsksForConfirmationAfterTheDeleteKey) {
    press(Qt::Key_Delete);
    EXPECT_EQ(asked(), QString());
    click("clip-0");
    press(Qt::Key_Backspace);
    EXPECT_EQ(asked(), QStringLiteral("Reject \"clip-0\"?"));
    EXPECT_FALSE(press(Qt::Key_X)) << "a question is pending";
    accept(false);
    EXPECT_FALSE(clip(0).rejected);
    press(Qt::Key_Delete);
    accept();
    EXPECT_TRUE(clip(0).rejected);
    press(Qt::Key_Delete);
    EXPECT_EQ(asked(), QString()) << "already rejected";

    click("clip-1-sub-0");
    player.becomeReady();
    press(Qt::Key_Delete);
    EXPECT_EQ(asked(), QStringLiteral("Delete \"Subclip 1\"?"));
    EXPECT_EQ(screen.confirmation()->acceptButton, QStringLiteral("Delete"));
    accept();
    EXPECT_EQ(clip(1).subclips.size(), 1);
    EXPECT_FALSE(screen.selection()->isInSubclipMode() || player.range);
}

TEST_F(ReviewScreenTest, AsksOnceAboutAllMarkedRows) {
    store.toggleRejected(QStringLiteral("clip-3"));
    screen.filterBar()->click(FilterBar::Chip::showRejects);
    click("clip-2");
    click("clip-3", Qt::ControlModifier);
    press(Qt::Key_Delete);
    EXPECT_EQ(asked(), QString());
    EXPECT_FALSE(screen.selection()->multiSelection().exists())
        << "the only marked clip is already rejected";

    click("clip-2", Qt::ControlModifier);
    click("clip-3", Qt::ControlModifier);
    press(Qt::Key_Delete);
    EXPECT_EQ(asked(), QStringLiteral("Reject 1 clip?"));
    accept(false);
    EXPECT_EQ(marked(), idList("clip-2 clip-3"));
    click("clip-0-sub-0", Qt::ControlModifier);
    click("clip-0-sub-1", Qt::ControlModifier);
    press(Qt::Key_Delete);
    EXPECT_EQ(asked(), QStringLiteral("Delete 2 subclips and reject 1 clip?"));
    accept();
    EXPECT_TRUE(clip(2).rejected && clip(3).rejected && clip(0).subclips.isEmpty());
    EXPECT_FALSE(screen.selection()->multiSelection().exists());
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_TRUE(!clip(2).rejected && clip(3).rejected && clip(0).subclips.size() == 2);
    const auto alone = ReviewConfirmation::applyToMarked(1, 0);
    EXPECT_EQ(alone->title, QStringLiteral("Delete 1 subclip?"));
    EXPECT_EQ(alone->text, QStringLiteral("Removes the selected subclip from the project. Source "
                                          "clips are unaffected. Cmd-Z to undo."));
}

TEST_F(ReviewScreenTest, SavesTheMarkedRange) {
    store.updateProject([&] {
        Project project = *store.project();
        project.videos[0].edit().subclips.clear();
        project.videos[0].edit().durationSeconds = 8;
        return project;
    }());
    click("clip-0");
    const auto range = [&](std::optional<double> in, std::optional<double> out) {
        const qsizetype before = clip(0).subclips.size();
        if (in) {
            player.seek(*in);
            type("i");
        }
        if (out) {
            player.seek(*out);
            type("o");
        }
        press(Qt::Key_Return);
        if (clip(0).subclips.size() == before) {
            return QStringLiteral("nothing");
        }
        const Subclip &saved = clip(0).subclips.last();
        return QStringLiteral("%1-%2").arg(saved.inSeconds).arg(saved.outSeconds);
    };
    EXPECT_EQ(range(10, 4), QStringLiteral("4-10"));
    EXPECT_EQ(range({}, 3), QStringLiteral("0-3"));
    EXPECT_EQ(range(3, {}), QStringLiteral("3-8"));
    EXPECT_EQ(range({}, {}), QStringLiteral("nothing"));
    EXPECT_EQ(range(5, 5.05), QStringLiteral("nothing"));
    EXPECT_EQ(screen.marking()->draftOut(), 5.05) << "the drafts are kept";
    EXPECT_FALSE(screen.selection()->isInSubclipMode());
    press(Qt::Key_Escape);

    player.seek(2);
    press(Qt::Key_I, Qt::ShiftModifier);
    EXPECT_EQ(screen.marking()->draftIn(), 2.04);
    player.seek(12.5);
    press(Qt::Key_O, Qt::ShiftModifier);
    EXPECT_EQ(screen.marking()->draftOut(), 12.5);
    press(Qt::Key_BracketLeft);
    EXPECT_EQ(player.current, 2.04);
    press(Qt::Key_Escape);
    press(Qt::Key_BracketRight);
    EXPECT_EQ(player.current, 8) << "the out point of the last subclip";
}

TEST_F(ReviewScreenTest, PlaysASubclipInItsRange) {
    click("clip-0-sub-1"); // 2.5 to 3.5
    EXPECT_FALSE(screen.selection()->isInSubclipMode()) << "the player isn't ready";
    player.becomeReady();
    EXPECT_TRUE(screen.selection()->isInSubclipMode());
    EXPECT_EQ(player.current, 2.5);
    player.seek(3);
    EXPECT_EQ(screen.transport()->transportTime(), 0.5);
    EXPECT_EQ(screen.transport()->transportText(), QStringLiteral("00:00:00  /  00:00:01"));
    screen.transport()->scrub(1000, 100);
    EXPECT_EQ(player.current, 3.5);
    type("i");
    EXPECT_EQ(screen.marking()->shownDraftIn(), 1);
    click("clip-0-sub-0"); // 1.25 to 2.25
    EXPECT_FALSE(screen.marking()->shownDraftIn()) << "outside the range";
    EXPECT_EQ(player.range->inSeconds, 1.25);
    EXPECT_EQ(player.current, 1.25) << "not clamped to the previous range";
    click("clip-0");
    EXPECT_FALSE(screen.selection()->isInSubclipMode() || player.range);
    EXPECT_TRUE(screen.marking()->draftIn());
    EXPECT_EQ(player.loaded.size(), 1) << "the clip isn't loaded again";

    click("clip-1-sub-0");
    clock.advance(std::chrono::seconds(1));
    EXPECT_EQ(screen.selection()->activeSubclipId(), QStringLiteral("clip-1-sub-0"))
        << "after the timeout";
    store.deleteSubclip({QStringLiteral("clip-1"), QStringLiteral("clip-1-sub-0")});
    EXPECT_FALSE(screen.selection()->activeSubclipId() || player.range);
}

TEST_F(ReviewScreenTest, ReportsOnlyTimesDuringPlayback) {
    click("clip-0");
    player.becomeReady();
    type("i");
    int times = 0;
    int others = 0;
    const auto countOthers = [&] { ++others; };
    ReviewTransport *const transport = screen.transport();
    QObject::connect(transport, &ReviewTransport::transportChanged, [&] { ++times; });
    QObject::connect(transport, &ReviewTransport::durationsChanged, countOthers);
    QObject::connect(transport, &ReviewTransport::rateChanged, countOthers);
    QObject::connect(screen.marking(), &ReviewMarking::draftsChanged, countOthers);
    QObject::connect(screen.selection(), &ReviewSelection::selectionChanged, countOthers);
    QObject::connect(screen.panes(), &ReviewPaneState::panesChanged, countOthers);
    player.seek(3);
    player.seek(5);
    EXPECT_EQ(times, 2);
    EXPECT_EQ(others, 0);
    type("o");
    EXPECT_EQ(others, 1);
    EXPECT_EQ(screen.marking()->draftInFraction(), 0);
    EXPECT_EQ(screen.marking()->draftOutFraction(), 0.4);
    EXPECT_EQ(screen.transport()->transportDurationText(), QStringLiteral("  /  00:00:12"));
    player.duration = 0;
    Q_EMIT player.durationChanged();
    EXPECT_FALSE(screen.transport()->showsPlayhead());
    EXPECT_FALSE(screen.marking()->draftInFraction().isValid());
    EXPECT_FALSE(screen.marking()->draftOutFraction().isValid());
}

TEST_F(ReviewScreenTest, SelectsAndDeselectsVisibleRowsForExport) {
    const auto status = [this] { return store.statusMessage().value_or(QString()); };
    screen.filterBar()->setSearchQuery(QStringLiteral("CLIP-1"));
    EXPECT_EQ(screen.filterBar()->countLabel(), QStringLiteral("1 of 4 visible"));
    screen.addToSelects();
    EXPECT_EQ(status(), QStringLiteral("Marked 1 clip for export"));
    EXPECT_TRUE(screen.hasSelects());
    screen.addToSelects();
    EXPECT_EQ(status(), QStringLiteral("All visible clips were already selected"));
    screen.filterBar()->clearFilters();
    screen.filterBar()->click(FilterBar::Chip::subclips);
    screen.addToSelects();
    EXPECT_EQ(status(), QStringLiteral("Marked 8 subclips for export"));
    screen.filterBar()->click(FilterBar::Chip::subclips);
    screen.filterBar()->click(FilterBar::Chip::selected);
    screen.removeFromSelects();
    EXPECT_EQ(status(), QStringLiteral("Cleared 9 items from selects"));
    screen.removeFromSelects();
    EXPECT_EQ(status(), QStringLiteral("No visible items were selected"));
    EXPECT_TRUE(screen.showsNoMatches());
    EXPECT_FALSE(screen.filterBar()->hasBulkActions());
    EXPECT_FALSE(screen.hasSelects());
}

TEST_F(ReviewOfFifty, ReviewsAndUndoesWithKeysOnly) {
    int subclips = 0;
    const QList<SidebarRowId> order = screen.list()->orderedRowIds();
    for (int index = 0; index < 50; ++index) {
        click(order.at(index).videoId.toLatin1()); // like an arrow key
        player.becomeReady();
        type("l");
        player.seek(1 + index * 0.1);
        type("ki");
        press(Qt::Key_Right);
        type("o");
        if (index % 2 == 0) {
            press(Qt::Key_Return);
            ++subclips;
        }
        type(index % 3 == 0 ? "5s" : "2");
        type(index % 10 == 9 ? "x" : "f");
    }
    EXPECT_EQ(screen.filterBar()->countLabel(), QStringLiteral("50 clips"));
    EXPECT_EQ(screen.list()->visibleCount(), 45);
    test::await(store.flushPendingSave());
    const Project saved = ProjectFileIO::loadNow(*store.fileURL());
    for (int index = 0; index < 50; ++index) {
        const VideoRecord &video = *saved.videos.at(saved.indexOfVideo(order.at(index).videoId));
        EXPECT_EQ(video.rating, index % 3 == 0 ? 5 : 2);
        EXPECT_EQ(video.favorite, index % 10 != 9);
        EXPECT_EQ(video.rejected, index % 10 == 9);
    }
    EXPECT_EQ(saved.subclipCount(), subclips);
    for (int step = 0; step < 5; ++step) { // two edits of the last clip, three of the previous one
        press(Qt::Key_Z, Qt::ControlModifier);
    }
    EXPECT_EQ(screen.list()->visibleCount(), 46);
    EXPECT_EQ(screen.list()->video(order.at(48).videoId)->rating, 0);
    EXPECT_EQ(screen.list()->video(order.at(48).videoId)->subclips.size(), 1);
}

} // namespace corvane

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
    for (int frame = 0; frame < 60; ++frame) {
        EXPECT_EQ(range(frame / 30.0, (frame + 2) / 30.0), QStringLiteral("nothing"));
        EXPECT_NE(range(frame / 30.0, (frame + 3) / 30.0), QStringLiteral("nothing")) << frame;
    }
    EXPECT_EQ(range({}, 8), QStringLiteral("0-8"));

    player.seek(2);
    press(Qt::Key_I, Qt::ShiftModifier);
    EXPECT_EQ(screen.marking()->draftIn(), 2.04);
    player.seek(12.5);
    press(Qt::Key_O, Qt::ShiftModifier);
    EXPECT_EQ(screen.marking()->draftOut(), 12.5);
}

TEST_F(ReviewScreenTest, RunsKeysTypedAheadInTheirOrderOnTheRequestedFrame) {
    click("clip-0");
    player.becomeReady();
    player.seek(5);
    player.delaysSteps = true;
    press(Qt::Key_Comma);
    type("i");
    press(Qt::Key_Right);
    press(Qt::Key_Period);
    type("o");
    press(Qt::Key_Return);
    screen.moveSelection(1, {});
    EXPECT_FALSE(screen.marking()->draftIn()) << "the step is not carried out yet";
    player.settle();
    EXPECT_EQ(screen.marking()->draftIn(), 4.96);
    EXPECT_FALSE(screen.marking()->draftOut());
    player.settle();
    ASSERT_EQ(clip(0).subclips.size(), 3);
    EXPECT_DOUBLE_EQ(clip(0).subclips.last().inSeconds, 4.96);
    EXPECT_DOUBLE_EQ(clip(0).subclips.last().outSeconds, 10);
    EXPECT_EQ(screen.selection()->activeSubclipId(), QStringLiteral("clip-0-sub-0"));

    press(Qt::Key_Period);
    type("i");
    click("clip-1");
    player.settle();
    EXPECT_FALSE(screen.marking()->draftIn()) << "the key was meant for the previous clip";
}

TEST_F(ReviewScreenTest, ActivatesOnlyTheSubclipChosenLast) {
    const std::function<void()> laterChoices[] = {
        [&] { click("clip-2"); },
        [&] { press(Qt::Key_Escape); },
        [&] { click("clip-1"); },
        [&] { click("clip-2-sub-1"); },
        [&] { test::await(store.closeProject()); },
    };
    for (const auto &choose : laterChoices) {
        click("clip-1-sub-0");
        choose();
        player.becomeReady();
        clock.advance(PlayerReadiness::kTimeout);
        const Subclip *active = screen.selection()->activeSubclip();
        EXPECT_EQ(active ? std::optional(active->range()) : std::nullopt, player.range);
        EXPECT_NE(screen.selection()->activeSubclipId(), QStringLiteral("clip-1-sub-0"));
        if (store.project()) {
            click("clip-3");
        }
    }
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
    screen.setVisibleSelected(true);
    EXPECT_EQ(status(), QStringLiteral("Marked 1 clip for export"));
    EXPECT_TRUE(screen.hasSelects());
    screen.setVisibleSelected(true);
    EXPECT_EQ(status(), QStringLiteral("All visible clips were already selected"));
    screen.filterBar()->clearFilters();
    screen.filterBar()->click(FilterBar::Chip::subclips);
    screen.setVisibleSelected(true);
    EXPECT_EQ(status(), QStringLiteral("Marked 8 subclips for export"));
    screen.filterBar()->click(FilterBar::Chip::subclips);
    screen.filterBar()->click(FilterBar::Chip::selected);
    screen.setVisibleSelected(false);
    EXPECT_EQ(status(), QStringLiteral("Cleared 9 items from selects"));
    screen.setVisibleSelected(false);
    EXPECT_EQ(status(), QStringLiteral("No visible items were selected"));
    EXPECT_TRUE(screen.showsNoMatches());
    EXPECT_FALSE(screen.filterBar()->hasBulkActions());
    EXPECT_FALSE(screen.hasSelects());
}

} // namespace corvane

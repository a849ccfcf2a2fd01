#include "delivery/export/ExportSheet.h"

#include "delivery/export/ExportFixture.h"
#include "delivery/export/ExportTexts.h"
#include "support/TestPanels.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>

using namespace corvane;
using namespace corvane::test;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace {

/// Two clips and a subclip of the second, all selected.
class ExportSheetTest : public ExportTest {
  protected:
    ExportSheetTest() {
        project.shootDate = text("2026-03-01");
        addClip("A", "a.mov", "a");
        Subclip subclip = sampleSubclip(text("s"), text("B"));
        subclip.selectedForExport = true;
        addClip("B", "b.mov", "b").subclips = {subclip};
        grantAndOpen();
    }
    void run() {
        QEventLoop loop;
        QObject::connect(&state, &DeliverySheet::resultChanged, &loop, &QEventLoop::quit);
        state.start();
        loop.exec();
    }
    /// Runs the action when the run reports that row.
    void atRow(int index, const std::function<void()> &action) {
        QObject::connect(&state, &DeliverySheet::runChanged, &state, [=, this] {
            if (state.run().line.startsWith(QString::number(index + 1))) {
                action();
            }
        });
    }
    QStringList names() {
        QStringList names;
        for (const DeliveryRow &row : state.rows()->rows()) {
            names.append(row.name);
        }
        return names;
    }
    QStringList results() {
        QStringList texts;
        for (const DeliveryResult &row : state.results()->rows()) {
            texts.append(row.heading + QLatin1Char('|') + row.symbol() + QLatin1Char('|') +
                         row.name + row.note + QLatin1Char('|') + row.error.left(9) +
                         QLatin1Char('|') + row.path);
        }
        return texts;
    }

    TestPanels panels;
    ExportViewModel flow{&store, sessions};
    ExportSheet state{flow, store, panels, clock};
};

} // namespace

TEST_F(ExportSheetTest, OpensWithTheDefaultsAndSaysWhatTheyMean) {
    EXPECT_FALSE(state.isOpen() || state.canStart());
    state.open();
    EXPECT_TRUE(state.isOpen() && state.canStart());
    EXPECT_EQ(state.folder(), at("project/selects"));
    EXPECT_EQ(state.mode().labels, (QStringList{text("Fast copy"), text("Accurate transcode")}));
    EXPECT_EQ(state.handles().labels, text("None 0.5s 1s 2s 4s").split(QLatin1Char(' ')));
    EXPECT_EQ(state.countLine(), text("3 rows"));
    const QAbstractItemModelTester tester(state.rows());
    EXPECT_EQ(names(), (QStringList{text("a.mov"), text("b.mov"), text("b_subclip-1.mov")}));

    state.chooseMode(1);
    state.chooseOutput(2);
    state.chooseHandle(3);
    state.chooseHandle(7);
    EXPECT_EQ(std::tuple(state.mode().index, state.output().index, state.handles().index),
              std::tuple(1, 2, 3));
    EXPECT_EQ(state.mode().help, ExportTexts::help(ExportBatch::Mode::accurateTranscode));
    EXPECT_EQ(state.output().help, ExportTexts::help(OutputMode::hdOnly));
    EXPECT_EQ(flow.choices().subclipHandleSeconds, 2);
    EXPECT_EQ(names().first(), text("a.mp4"));
    state.open();
    EXPECT_EQ(state.mode().index, 1) << "it is up, so what was chosen stays";
    state.setIncludeSubclips(false);
    EXPECT_EQ(state.countLine(), text("2 rows"));
    state.setIncludeWholeClips(false);
    EXPECT_EQ(state.countLine(), text("No selects"));
    EXPECT_FALSE(state.hasRows() || state.canStart());
    EXPECT_EQ(state.startHelp(), text("There is nothing to export."));
    flow.setOutputFolder({});
    EXPECT_EQ(state.folder(), text("(none chosen)"));
    EXPECT_EQ(state.startHelp(), text("Choose an output folder first."));
}

TEST_F(ExportSheetTest, NamesFollowEveryFieldWithoutResettingTheList) {
    state.open();
    QSignalSpy resets(state.rows(), &QAbstractItemModel::modelReset);
    QSignalSpy inserts(state.rows(), &QAbstractItemModel::rowsInserted);
    NamingFields &naming = *state.naming();
    naming.setPreset(1);
    EXPECT_FALSE(naming.isCustom());
    EXPECT_EQ(naming.baseName(), text("Harbor"));
    naming.setPreset(2);
    naming.setPreset(9);
    EXPECT_TRUE(naming.isCustom());
    naming.setBaseName(text(" Kai"));
    EXPECT_EQ(naming.baseName(), text(" Kai")) << "as it is typed";
    naming.setIncludeShootDate(true);
    naming.setIncludeSelectType(true);
    EXPECT_EQ(names(), (QStringList{text("2026-03-01_Kai_001_select.mov"),
                                    text("2026-03-01_Kai_002_select.mov"),
                                    text("2026-03-01_Kai_003_subclip-1_subclip.mov")}));
    naming.setBaseName({});
    EXPECT_FALSE(flow.choices().naming.baseName);
    naming.setNumbering(0);
    naming.setIncludeShootDate(false);
    naming.setIncludeSelectType(false);
    naming.setIncludeSubclipLabel(false);
    naming.setIncludeOriginalFilename(true);
    EXPECT_EQ(names(), (QStringList{text("a.mov"), text("b.mov"), text("b (2).mov")}));
    EXPECT_THAT(inserts, IsEmpty());

    store.toggleSelectedForExport(text("A"));
    EXPECT_EQ(names(), (QStringList{text("b.mov"), text("b (2).mov")})) << "the preview follows";
    store.undo();
    EXPECT_THAT(inserts, ElementsAre(QVariantList{QModelIndex(), 0, 0}));
    EXPECT_THAT(resets, IsEmpty());
}

TEST_F(ExportSheetTest, APlanThatTakesLongWaitsUntilTheKeysRest) {
    // Each look at the time is later: the first plan seems to take long.
    class SlowClock : public TestClock {
      public:
        std::chrono::milliseconds monotonic() const override { return m_now += step; }
        std::chrono::milliseconds step{50};

      private:
        mutable std::chrono::milliseconds m_now{0};
    } slow;
    ExportSheet other(flow, store, panels, slow);
    other.open();
    slow.step = {};
    QSignalSpy plans(&other, &DeliverySheet::planChanged);
    other.chooseMode(1);
    other.chooseMode(0);
    other.chooseMode(1);
    EXPECT_THAT(plans, IsEmpty());
    EXPECT_EQ(slow.pendingTimers(), 1);
    slow.advance(slow.nextDelay());
    EXPECT_THAT(plans, SizeIs(1));
    EXPECT_EQ(other.rows()->rows().first().name, text("a.mp4"));
    other.chooseMode(0);
    EXPECT_THAT(plans, SizeIs(2)) << "it was quick";
}

TEST_F(ExportSheetTest, ARunIsToldRowByRowAndItsResultsInTwoLists) {
    folder.write(footage("a.mov"), "changed");
    state.open();
    state.chooseOutput(1);
    QStringList lines;
    atRow(1, [&] {
        if (lines.isEmpty()) {
            clock.advance(std::chrono::seconds(4));
        }
        lines.append(state.run().percent + QLatin1Char('|') + state.run().details +
                     QLatin1Char('|') + state.run().timeLeft);
        state.open();
        state.dismiss();
    });
    run();
    EXPECT_TRUE(state.isOpen()) << "the sheet of a run can't be lost";
    EXPECT_THAT(lines, testing::Contains(text("33%|Copying / encoding…|")));
    EXPECT_THAT(lines, testing::Contains(text("50%|Copying / encoding… (hd)|About 5 s left")));
    EXPECT_EQ(state.result().headline, text("Export finished with 1 issue"));
    EXPECT_EQ(std::tuple(state.result().succeeded, state.result().failed, state.result().cancelled),
              std::tuple(2, 1, 0));
    EXPECT_TRUE(state.result().line.startsWith(text("Manifest: manifest-")));
    EXPECT_EQ(state.result().path, flow.result()->manifestSidecarPath);
    EXPECT_EQ(state.result().folder, at("project/selects"));
    EXPECT_EQ(state.result().errorLine + state.result().backupLine, QString());
    EXPECT_EQ(
        results(),
        (QStringList{
            text("Succeeded (2)|checkmark.circle.fill|b.mov(+ HD)||") + at("project/selects/b.mov"),
            text("|checkmark.circle.fill|b_subclip-1.mov(+ HD)||") +
                at("project/selects/b_subclip-1.mov"),
            text("Failed / Cancelled (1)|exclamationmark.triangle.fill|a.mov|export so|")}));
    state.again();
    EXPECT_EQ(state.stage(), DeliverySheet::Stage::Configure);
    EXPECT_EQ(state.countLine(), text("1 of 3 rows"));
    state.dismiss();
    EXPECT_FALSE(state.isOpen());
}

TEST_F(ExportSheetTest, TheCancelButtonSaysWhatItDoesNext) {
    state.open();
    QStringList labels;
    atRow(0, [&] {
        if (labels.isEmpty()) {
            labels = {state.cancelText()};
            state.requestCancel();
            labels.append(state.cancelText());
            EXPECT_TRUE(state.canCancel());
            state.requestCancel();
            labels.append(state.cancelText());
            EXPECT_FALSE(state.canCancel());
        }
    });
    run();
    EXPECT_EQ(labels, (QStringList{text("Cancel"), text("Force Cancel"), text("Cancelling…")}));
    EXPECT_EQ(state.result().headline, text("Export cancelled"));
    EXPECT_EQ(state.result().cancelled, 3);
    EXPECT_EQ(state.results()->data(state.results()->index(0), DeliveryResults::Rich).toString(),
              text("<b>a.mov</b>: Cancelled"));
    EXPECT_EQ(state.results()->rows().first().symbol(), text("xmark.circle"));
}

TEST_F(ExportSheetTest, ProblemsOfTheRunAsAWholeHaveTheirOwnLines) {
    files.setObserver([this](const QString &operation, const QString &path) {
        const bool isBackup = path.startsWith(at("project/.tmp"));
        const bool isManifest =
            path.startsWith(at("project/selects/.tmp")) && has("project/selects/b_subclip-1.mov");
        if (operation == QLatin1String("createForWriting") && (isBackup || isManifest)) {
            throw FileError(path, ENOSPC);
        }
    });
    state.open();
    run();
    files.setObserver({});
    EXPECT_EQ(state.result().headline, text("Export finished with 1 issue"));
    EXPECT_TRUE(state.result().backupLine.startsWith(text("Backup warning: Backup failed: ")));
    EXPECT_TRUE(state.result().errorLine.startsWith(text("manifest write: ")));
    EXPECT_EQ(state.result().line, QString());
    EXPECT_FALSE(store.lastError());
}

TEST_F(ExportSheetTest, TheFolderIsAskedForFromOneThatExists) {
    state.chooseFolder();
    state.open();
    panels.answer = at("a\nb");
    state.chooseFolder();
    EXPECT_EQ(panels.choice.startFolder, at("project"));
    EXPECT_EQ(state.folder(), at("a\nb"));
    EXPECT_EQ(state.folderLine(), at("a b"));
    QSignalSpy reveals(&state, &DeliverySheet::revealWanted);
    state.reveal(at("x"));
    EXPECT_THAT(reveals, ElementsAre(QVariantList{at("x")}));
}

TEST_F(ExportSheetTest, TheSheetGoesWithItsProjectButNotWithARunOfIt) {
    QSignalSpy dismissals(&state, &DeliverySheet::dismissed);
    state.open();
    await(store.closeProject());
    EXPECT_FALSE(state.isOpen());
    state.open();
    EXPECT_FALSE(state.isOpen()) << "there is no project";
    await(store.openProject(projectFile));
    state.open();
    bool isClosed = false;
    atRow(0, [&] {
        if (!std::exchange(isClosed, true)) {
            detach(store.closeProject());
        }
    });
    run();
    EXPECT_FALSE(store.project());
    EXPECT_TRUE(state.isOpen());
    EXPECT_EQ(state.result().headline, text("Export complete"));
    state.again();
    EXPECT_FALSE(state.isOpen());
    EXPECT_THAT(dismissals, SizeIs(2));
}

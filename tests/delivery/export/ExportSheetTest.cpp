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
        addSubclip(addClip("B", "b.mov", "b"), 1, 1.25, 2.25);
        grantAndOpen();
    }
    /// Runs the action when the run reports that row.
    void atRow(int index, const std::function<void()> &action) {
        QObject::connect(&sheet, &DeliverySheet::runChanged, &sheet, [=, this] {
            if (sheet.run().line.startsWith(QString::number(index + 1))) {
                action();
            }
        });
    }
    std::vector<std::string> results() {
        std::vector<std::string> rows;
        for (const DeliveryResult &row : sheet.results()->rows()) {
            const QStringList fields{row.heading, row.symbol(), row.name + row.note,
                                     row.error.left(9), row.path};
            rows.push_back(shortened(fields.join(QLatin1Char('|'))));
        }
        return rows;
    }

    TestPanels panels;
    ExportViewModel flow{&store, sessions};
    ExportSheet sheet{flow, store, panels, clock};
};

} // namespace

TEST_F(ExportSheetTest, OpensWithTheDefaultsAndExplainsThem) {
    EXPECT_FALSE(sheet.isOpen() || sheet.canStart());
    sheet.open();
    EXPECT_TRUE(sheet.isOpen() && sheet.canStart());
    EXPECT_EQ(sheet.folder(), at("project/selects"));
    EXPECT_EQ(sheet.mode().labels, (QStringList{text("Fast copy"), text("Accurate transcode")}));
    EXPECT_EQ(sheet.handles().labels, text("None 0.5s 1s 2s 4s").split(QLatin1Char(' ')));
    EXPECT_EQ(sheet.countLine(), text("3 rows"));
    const QAbstractItemModelTester tester(sheet.rows());
    EXPECT_THAT(rowNames(*sheet.rows()), ElementsAre("a.mov", "b.mov", "b_subclip-1.mov"));

    sheet.chooseMode(1);
    sheet.chooseOutput(2);
    sheet.chooseHandle(3);
    sheet.chooseHandle(7);
    EXPECT_EQ(std::tuple(sheet.mode().index, sheet.output().index, sheet.handles().index),
              std::tuple(1, 2, 3));
    EXPECT_EQ(sheet.mode().help,
              text("H.264/AAC re-encode at HighestQuality preset. Frame-accurate "
                   "trims; output is .mp4 always."));
    EXPECT_EQ(sheet.output().help,
              text("1080p H.264 deliverable only — no source-quality export."));
    EXPECT_EQ(flow.choices().subclipHandleSeconds, 2);
    EXPECT_EQ(rowNames(*sheet.rows()).front(), "a.mp4");
    sheet.open();
    EXPECT_EQ(sheet.mode().index, 1) << "opening an open sheet keeps the choices";
    sheet.setIncludeSubclips(false);
    EXPECT_EQ(sheet.countLine(), text("2 rows"));
    sheet.setIncludeWholeClips(false);
    EXPECT_EQ(sheet.countLine(), text("No selects"));
    EXPECT_FALSE(sheet.hasRows() || sheet.canStart());
    EXPECT_EQ(sheet.startHelp(), text("There is nothing to export."));
    flow.setFolder(at("a\nb"));
    EXPECT_EQ(sheet.folderLine(), at("a b"));
    flow.setFolder({});
    EXPECT_EQ(sheet.folder(), text("(none chosen)"));
    EXPECT_EQ(sheet.startHelp(), text("Choose an output folder first."));
}

TEST_F(ExportSheetTest, UpdatesNamesForEveryFieldWithoutResettingTheList) {
    sheet.open();
    QSignalSpy resets(sheet.rows(), &QAbstractItemModel::modelReset);
    QSignalSpy inserts(sheet.rows(), &QAbstractItemModel::rowsInserted);
    NamingFields &naming = *sheet.naming();
    naming.setPreset(1);
    EXPECT_FALSE(naming.isCustom());
    EXPECT_EQ(naming.baseName(), text("Harbor"));
    naming.setPreset(2);
    naming.setPreset(9);
    EXPECT_TRUE(naming.isCustom());
    naming.setBaseName(text(" Kai"));
    EXPECT_EQ(naming.baseName(), text(" Kai")) << "untrimmed while typing";
    naming.setIncludeShootDate(true);
    naming.setIncludeSelectType(true);
    EXPECT_THAT(rowNames(*sheet.rows()),
                ElementsAre("2026-03-01_Kai_001_select.mov", "2026-03-01_Kai_002_select.mov",
                            "2026-03-01_Kai_003_subclip-1_subclip.mov"));
    naming.setBaseName({});
    EXPECT_FALSE(flow.choices().naming.baseName);
    naming.setNumbering(0);
    naming.setIncludeShootDate(false);
    naming.setIncludeSelectType(false);
    naming.setIncludeSubclipLabel(false);
    naming.setIncludeOriginalFilename(true);
    EXPECT_THAT(rowNames(*sheet.rows()), ElementsAre("a.mov", "b.mov", "b (2).mov"));
    EXPECT_THAT(inserts, IsEmpty());

    store.toggleSelectedForExport(text("A"));
    EXPECT_THAT(rowNames(*sheet.rows()), ElementsAre("b.mov", "b (2).mov"))
        << "the preview follows";
    store.undo();
    EXPECT_THAT(inserts, ElementsAre(QVariantList{QModelIndex(), 0, 0}));
    EXPECT_THAT(resets, IsEmpty());
}

TEST_F(ExportSheetTest, DelaysASlowPlanUntilInputPauses) {
    // The time advances at each read, so the first plan seems slow.
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
    EXPECT_THAT(plans, SizeIs(2)) << "a quick plan is not delayed";
}

TEST_F(ExportSheetTest, ReportsProgressPerRowAndListsResultsByOutcome) {
    folder.write(footage("a.mov"), "changed");
    sheet.open();
    sheet.chooseOutput(1);
    QStringList lines;
    atRow(1, [&] {
        if (lines.isEmpty()) {
            clock.advance(std::chrono::seconds(4));
        }
        const DeliveryRunTexts &run = sheet.run();
        lines.append(QStringList{run.percent, run.details, run.timeLeft}.join(QLatin1Char('|')));
        sheet.open();
        sheet.dismiss();
    });
    runSheet(sheet);
    EXPECT_TRUE(sheet.isOpen()) << "a run keeps its sheet open";
    EXPECT_THAT(lines, testing::Contains(text("33%|Copying / encoding…|")));
    EXPECT_THAT(lines, testing::Contains(text("50%|Copying / encoding… (hd)|About 5 s left")));
    EXPECT_EQ(sheet.result().headline, text("Export finished with 1 issue"));
    EXPECT_EQ(std::tuple(sheet.result().succeeded, sheet.result().failed, sheet.result().cancelled),
              std::tuple(2, 1, 0));
    EXPECT_TRUE(sheet.result().line.startsWith(text("Manifest: manifest-")));
    EXPECT_EQ(sheet.result().path, flow.result()->manifestSidecarPath);
    EXPECT_EQ(sheet.result().folder, at("project/selects"));
    EXPECT_EQ(sheet.result().errorLine + sheet.result().backupLine, QString());
    EXPECT_THAT(
        results(),
        ElementsAre(
            "Succeeded (2)|checkmark.circle.fill|b.mov(+ HD)||/project/selects/b.mov",
            "|checkmark.circle.fill|b_subclip-1.mov(+ HD)||/project/selects/b_subclip-1.mov",
            "Failed / Cancelled (1)|exclamationmark.triangle.fill|a.mov|export so|"));
    sheet.again();
    EXPECT_EQ(sheet.stage(), DeliveryFlow::Stage::configure);
    EXPECT_EQ(sheet.countLine(), text("1 of 3 rows"));
    sheet.dismiss();
    EXPECT_FALSE(sheet.isOpen());
}

TEST_F(ExportSheetTest, LabelsTheCancelButtonAndAbortsTheOutputOnASecondCancel) {
    sheet.open();
    sheet.chooseMode(1);
    sessions.halfway = [&](const QString &) {
        const auto cancelTwice = [this] {
            EXPECT_EQ(sheet.cancelText(), text("Cancel"));
            sheet.requestCancel();
            EXPECT_EQ(sheet.cancelText(), text("Force Cancel"));
            EXPECT_TRUE(sheet.canCancel());
            sheet.requestCancel();
            EXPECT_EQ(sheet.cancelText(), text("Cancelling…"));
            EXPECT_FALSE(sheet.canCancel());
        };
        QMetaObject::invokeMethod(&sheet, cancelTwice, Qt::BlockingQueuedConnection);
    };
    runSheet(sheet);
    EXPECT_EQ(flow.cancelStage(), CancelStage::hard);
    EXPECT_EQ(sheet.result().headline, text("Export cancelled"));
    EXPECT_EQ(sheet.result().cancelled, 3);
    EXPECT_EQ(sheet.results()->data(sheet.results()->index(0), DeliveryResults::Rich).toString(),
              text("<b>a.mp4</b>: Cancelled"));
    EXPECT_EQ(sheet.results()->rows().first().symbol(), text("xmark.circle"));
}

TEST_F(ExportSheetTest, ShowsManifestAndBackupErrorsOnTheirOwnLines) {
    files.setObserver([this](const QString &operation, const QString &path) {
        const bool isBackup = path.startsWith(at("project/.tmp"));
        const bool isManifest =
            path.startsWith(at("project/selects/.tmp")) && has("project/selects/b_subclip-1.mov");
        if (operation == QLatin1String("createFileAt") && (isBackup || isManifest)) {
            throw FileError(path, ENOSPC);
        }
    });
    sheet.open();
    runSheet(sheet);
    files.setObserver({});
    EXPECT_EQ(sheet.result().headline, text("Export finished with 1 issue"));
    EXPECT_EQ(sheet.result().succeeded, 3);
    EXPECT_TRUE(sheet.result().backupLine.startsWith(
        text("Backup warning: Backup failed: Backup write failed at")));
    EXPECT_TRUE(sheet.result().errorLine.startsWith(text("manifest write: ")));
    EXPECT_EQ(sheet.result().line, QString());
    EXPECT_FALSE(store.lastError());
}

TEST_F(ExportSheetTest, ClosesWithItsProjectUnlessARunIsInProgress) {
    QSignalSpy dismissals(&sheet, &DeliverySheet::dismissed);
    sheet.open();
    await(store.closeProject());
    EXPECT_FALSE(sheet.isOpen());
    sheet.open();
    EXPECT_FALSE(sheet.isOpen()) << "there is no project";
    await(store.openProject(projectFile));
    sheet.open();
    bool isClosed = false;
    atRow(0, [&] {
        if (!std::exchange(isClosed, true)) {
            detach(store.closeProject());
        }
    });
    runSheet(sheet);
    EXPECT_FALSE(store.project());
    EXPECT_TRUE(sheet.isOpen());
    EXPECT_EQ(sheet.result().headline, text("Export complete"));
    sheet.again();
    EXPECT_FALSE(sheet.isOpen());
    EXPECT_THAT(dismissals, SizeIs(2));
}

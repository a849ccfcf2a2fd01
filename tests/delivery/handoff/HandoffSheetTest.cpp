#include "delivery/handoff/HandoffSheet.h"

#include "delivery/handoff/HandoffFixture.h"
#include "support/TestPanels.h"

#include <QSignalSpy>

using namespace corvane;
using namespace corvane::test;
using testing::Contains;
using testing::SizeIs;

namespace {

/// A clip with a subclip, both selected, and a clip of which only the subclips are.
class HandoffSheetTest : public HandoffTest {
  protected:
    HandoffSheetTest() {
        VideoRecord &both = addVideo("a.mov", "1");
        both.fileSizeBytes = 1000;
        addSubclip(both, "x");
        VideoRecord &parent = addVideo("b.mov", "2");
        parent.selectedForExport = false;
        addSubclip(parent, "y");
        addSubclip(parent, "z");
        grantAndOpen();
    }
    /// Opens with a destination.
    void prepare() {
        sheet.open();
        panels.answer = at("out");
        sheet.chooseFolder();
        sheet.setProjectName(text("Show"));
    }

    TestPanels panels;
    SelectsHandoffViewModel flow{&store, sessions, cache.functions(), settings()};
    HandoffSheet sheet{flow, store, panels, clock};
};

} // namespace

TEST_F(HandoffSheetTest, ShowsTheContentsOfThePackageAndTheMissingInput) {
    sheet.open();
    EXPECT_EQ(sheet.folder(), text("(none chosen)"));
    EXPECT_EQ(sheet.packageLocation(),
              text("The handoff package will be created at <destination>/<name>/."));
    EXPECT_EQ(sheet.startHelp(), text("Choose a destination folder first."));
    EXPECT_FALSE(sheet.hasRecents());
    EXPECT_EQ(sheet.projectName(), text("Harbor - Selects"));
    EXPECT_EQ(sheet.summary(), text("1 clip, 3 subclips, 4 outputs, ~1.1 kB"));
    const QList<DeliveryRow> rows = sheet.rows()->rows();
    ASSERT_THAT(rows, SizeIs(2));
    EXPECT_EQ(rows.at(0).symbol + rows.at(0).name + rows.at(0).note,
              text("filma.movclip + 1 subclip"));
    EXPECT_EQ(rows.at(1).symbol + rows.at(1).name + rows.at(1).note,
              text("scissorsb.mov2 subclips"));

    panels.answer = at("out");
    sheet.chooseFolder();
    EXPECT_TRUE(sheet.canStart());
    sheet.setProjectName(text(" "));
    EXPECT_EQ(sheet.startHelp(), text("Give the project a name first."));
    sheet.setProjectName(text("Sh/ow"));
    EXPECT_EQ(sheet.packageLocation(),
              text("The handoff package will be created at %1/.").arg(at("out/Show")));

    sheet.chooseMode(1);
    sheet.chooseOutput(1);
    sheet.chooseHandle(1);
    sheet.naming()->setPreset(1);
    EXPECT_EQ(sheet.mode().help,
              text("H.264/AAC re-encode at HighestQuality. Frame-accurate trims; "
                   "output is .mp4 always."));
    EXPECT_EQ(flow.choices().outputMode, HandoffOutputMode::primaryAndHd);
    EXPECT_EQ(flow.choices().naming.baseName, text("Harbor"));
    for (const VideoItem &video : project.videos) {
        for (const Subclip &subclip : video->subclips) {
            store.toggleSubclipSelected({video->id, subclip.id});
        }
    }
    store.toggleSelectedForExport(uuid(1));
    EXPECT_EQ(sheet.startHelp(), text("There is nothing to hand off."));
    EXPECT_FALSE(sheet.hasRows());
}

TEST_F(HandoffSheetTest, ReportsThePhasesOfARunAndItsPackage) {
    prepare();
    sheet.chooseOutput(1);
    QStringList lines;
    QObject::connect(&sheet, &DeliverySheet::runChanged, &sheet, [&] {
        lines.append(sheet.run().line + QLatin1Char('|') + sheet.run().details);
        lines.removeDuplicates();
    });
    runSheet(sheet);
    EXPECT_THAT(lines, Contains(text("1 of 2: a.mov|Copying media · 1 bytes / 1 bytes")));
    EXPECT_THAT(lines, Contains(text("1 of 2: a_x.mov|Extracting subclip")));
    EXPECT_THAT(lines, Contains(text("1 of 2: a.mov|Encoding HD copy")));
    EXPECT_EQ(sheet.result().headline, text("Handoff complete"));
    EXPECT_EQ(sheet.result().line, at("out/Show"));
    EXPECT_EQ(sheet.result().folder, at("out"));
    EXPECT_EQ(std::tuple(sheet.result().succeeded, sheet.result().failed, sheet.result().cancelled),
              std::tuple(4, 0, 0));
    const DeliveryResult &first = sheet.results()->rows().first();
    EXPECT_EQ(first.heading + first.name + first.note, text("Succeeded (4)a.mov(+ HD)"));
    EXPECT_EQ(first.path, at("out/Show/media/a.mov"));

    sheet.again();
    EXPECT_EQ(sheet.folder(), at("out"));
    EXPECT_EQ(sheet.recents(), QStringList{at("out")});
    flow.setFolder({});
    sheet.chooseRecent(3);
    EXPECT_FALSE(sheet.canStart());
    sheet.chooseRecent(0);
    EXPECT_EQ(sheet.folder(), at("out"));
}

TEST_F(HandoffSheetTest, ReportsFailedAndCancelledRuns) {
    prepare();
    folder.write(footage("a.mov"), "changed");
    runSheet(sheet);
    EXPECT_EQ(sheet.result().headline, text("Handoff finished with 2 issues"));
    EXPECT_EQ(sheet.results()->rows().last().name, text("a.mov"));
    EXPECT_TRUE(sheet.results()->rows().last().error.startsWith(text("Subclip extract: ")));

    sheet.again();
    sheet.setProjectName(text("Show"));
    const auto cancel = QObject::connect(&sheet, &DeliverySheet::stageChanged, &sheet, [this] {
        if (sheet.stage() == DeliveryFlow::Stage::running) {
            sheet.requestCancel();
            EXPECT_EQ(sheet.cancelText(), text("Force Cancel"));
        }
    });
    runSheet(sheet);
    QObject::disconnect(cancel);
    EXPECT_EQ(sheet.result().headline, text("Handoff cancelled"));
    EXPECT_EQ(sheet.result().cancelled, 2);

    sheet.again();
    panels.answer = folder.write("file", "in the way");
    sheet.chooseFolder();
    waitUntil([&] { return sheet.folder() == panels.answer; });
    runSheet(sheet);
    EXPECT_EQ(sheet.result().headline, text("Handoff finished with 1 issue"));
    EXPECT_FALSE(sheet.result().errorLine.isEmpty());
    EXPECT_EQ(sheet.result().line, QString());
    EXPECT_EQ(sheet.result().folder, at("file"));
}

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
        VideoRecord &pieces = addVideo("b.mov", "2");
        pieces.selectedForExport = false;
        addSubclip(pieces, "y");
        addSubclip(pieces, "z");
        grantAndOpen();
    }
    /// Opens with a destination.
    void prepare() {
        state.open();
        panels.answer = at("out");
        state.chooseFolder();
        state.setProjectName(text("Show"));
    }
    void run() {
        QEventLoop loop;
        QObject::connect(&state, &DeliverySheet::resultChanged, &loop, &QEventLoop::quit);
        state.start();
        loop.exec();
    }

    TestPanels panels;
    SelectsHandoffViewModel flow{
        &store, sessions, cache.functions(),
        std::make_unique<QSettings>(at("defaults.ini"), QSettings::IniFormat)};
    HandoffSheet state{flow, store, panels, clock};
};

} // namespace

TEST_F(HandoffSheetTest, SaysWhatIsHandedOverAndWhatIsStillMissing) {
    state.open();
    EXPECT_EQ(state.folder(), text("(none chosen)"));
    EXPECT_EQ(state.packageLocation(),
              text("The handoff package will be created at <destination>/<name>/."));
    EXPECT_EQ(state.startHelp(), text("Choose a destination folder first."));
    EXPECT_FALSE(state.hasRecents());
    EXPECT_EQ(state.projectName(), text("Harbor - Selects"));
    EXPECT_EQ(state.summary(), text("1 clip, 3 subclips, 4 outputs, ~1.1 kB"));
    const QList<DeliveryRow> rows = state.rows()->rows();
    ASSERT_THAT(rows, SizeIs(2));
    EXPECT_EQ(rows.at(0).symbol + rows.at(0).name + rows.at(0).note,
              text("filma.movclip + 1 subclip"));
    EXPECT_EQ(rows.at(1).symbol + rows.at(1).name + rows.at(1).note,
              text("scissorsb.mov2 subclips"));

    panels.answer = at("out");
    state.chooseFolder();
    EXPECT_TRUE(state.canStart());
    state.setProjectName(text(" "));
    EXPECT_EQ(state.startHelp(), text("Give the project a name first."));
    state.setProjectName(text("Sh/ow"));
    EXPECT_EQ(state.packageLocation(),
              text("The handoff package will be created at %1/.").arg(at("out/Show")));

    state.chooseMode(1);
    state.chooseOutput(1);
    state.chooseHandle(1);
    state.naming()->setPreset(1);
    EXPECT_EQ(state.mode().help,
              text("H.264/AAC re-encode at HighestQuality. Frame-accurate trims; "
                   "output is .mp4 always."));
    EXPECT_EQ(flow.choices().outputMode, HandoffOutputMode::primaryAndHd);
    EXPECT_EQ(flow.choices().naming.baseName, text("Harbor"));
    for (const char *clip : {"a.mov", "b.mov"}) {
        const auto video = std::ranges::find(store.project()->videos, text(clip),
                                             [](const VideoItem &item) { return item->fileName; });
        for (const Subclip &subclip : QList<Subclip>((*video)->subclips)) {
            store.toggleSubclipSelected({(*video)->id, subclip.id});
        }
    }
    store.toggleSelectedForExport(uuid(1));
    EXPECT_EQ(state.startHelp(), text("There is nothing to hand off."));
    EXPECT_FALSE(state.hasRows());
}

TEST_F(HandoffSheetTest, ARunTellsItsPhasesAndItsPackage) {
    prepare();
    state.chooseOutput(1);
    QStringList lines;
    QObject::connect(&state, &DeliverySheet::runChanged, &state, [&] {
        lines.append(state.run().line + QLatin1Char('|') + state.run().details);
        lines.removeDuplicates();
    });
    run();
    EXPECT_THAT(lines, Contains(text("1 of 2: a.mov|Copying media · 1 bytes / 1 bytes")));
    EXPECT_THAT(lines, Contains(text("1 of 2: a_x.mov|Extracting subclip")));
    EXPECT_THAT(lines, Contains(text("1 of 2: a.mov|Encoding HD copy")));
    EXPECT_EQ(state.result().headline, text("Handoff complete"));
    EXPECT_EQ(state.result().line, at("out/Show"));
    EXPECT_EQ(state.result().folder, at("out"));
    EXPECT_EQ(std::tuple(state.result().succeeded, state.result().failed, state.result().cancelled),
              std::tuple(4, 0, 0));
    const DeliveryResult &first = state.results()->rows().first();
    EXPECT_EQ(first.heading + first.name + first.note, text("Succeeded (4)a.mov(+ HD)"));
    EXPECT_EQ(first.path, at("out/Show/media/a.mov"));

    state.again();
    EXPECT_EQ(state.folder(), at("out"));
    EXPECT_EQ(state.recents(), QStringList{at("out")});
    flow.setDestinationFolder({});
    state.chooseRecent(3);
    EXPECT_FALSE(state.canStart());
    state.chooseRecent(0);
    EXPECT_EQ(state.folder(), at("out"));
}

TEST_F(HandoffSheetTest, ARunThatFailsOrIsCancelledSaysSo) {
    prepare();
    folder.write(footage("a.mov"), "changed");
    run();
    EXPECT_EQ(state.result().headline, text("Handoff finished with 2 issues"));
    EXPECT_EQ(state.results()->rows().last().name, text("a.mov"));
    EXPECT_TRUE(state.results()->rows().last().error.startsWith(text("Subclip extract: ")));

    state.again();
    state.setProjectName(text("Show"));
    const auto cancel = QObject::connect(&state, &DeliverySheet::stageChanged, &state, [this] {
        if (state.stage() == DeliverySheet::Stage::Running) {
            state.requestCancel();
            EXPECT_EQ(state.cancelText(), text("Force Cancel"));
            detach(store.closeProject());
        }
    });
    run();
    QObject::disconnect(cancel);
    EXPECT_EQ(state.result().headline, text("Handoff cancelled"));
    EXPECT_EQ(state.result().cancelled, 2);
    EXPECT_TRUE(state.isOpen()) << "the project is closed, but the results are still to be read";

    await(store.openProject(projectFile));
    state.again();
    panels.answer = folder.write(text("file"), "in the way");
    state.chooseFolder();
    run();
    EXPECT_EQ(state.result().headline, text("Handoff finished with 1 issue"));
    EXPECT_FALSE(state.result().errorLine.isEmpty());
    EXPECT_EQ(state.result().line, QString());
    EXPECT_EQ(state.result().folder, at("file"));
    state.again();
    await(store.closeProject());
    EXPECT_FALSE(state.isOpen());
}

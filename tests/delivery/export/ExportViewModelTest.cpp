#include "delivery/export/ExportViewModel.h"

#include "delivery/DeliveryTexts.h"
#include "delivery/export/ExportFixture.h"
#include "delivery/export/ExportTexts.h"
#include "delivery/export/ExportWriteBack.h"

#include <cmath>

using namespace corvane;
using namespace corvane::test;
using testing::SizeIs;
using Stage = ExportViewModel::Stage;

namespace {

/// Two clips, to be exported beside the project, and a subclip that isn't selected.
class ExportViewModelTest : public ExportTest {
  protected:
    ExportViewModelTest() {
        addClip("A", "a.mov", "a");
        addClip("B", "b.mov", "b").subclips = {sampleSubclip(text("s"), text("B"))};
        grantAndOpen();
        flow->reset(*store.project());
    }
    void run() { await(flow->start(*store.project())); }
    void atRow(int index, const std::function<void()> &action) {
        QObject::connect(flow.get(), &ExportViewModel::progressChanged, flow.get(), [=, this] {
            const auto &progress = flow->progress();
            if (progress && progress->index == index &&
                progress->phase == ExportProgress::Phase::starting) {
                action();
            }
        });
    }
    bool isExported(int clip) const {
        return store.project()->videos.at(clip)->exportedAt.has_value();
    }

    std::unique_ptr<ExportViewModel> flow = std::make_unique<ExportViewModel>(&store, sessions);
};

} // namespace

TEST_F(ExportViewModelTest, StartsWithDefaultsAndSignalsOnlyChanges) {
    EXPECT_EQ(flow->choices(), defaultExportChoices(project));
    int changes = 0;
    QObject::connect(flow.get(), &ExportViewModel::choicesChanged, flow.get(), [&] { ++changes; });
    flow->setMode(ExportBatch::Mode::fastCopy);
    flow->setNamingPreset(NamingPreset::keepOriginal);
    EXPECT_EQ(changes, 0);
    flow->setNamingPreset(NamingPreset::projectNameNumber);
    EXPECT_EQ(flow->choices().naming.baseName, text("Harbor"));
    flow->setNamingPreset(NamingPreset::custom);
    EXPECT_EQ(flow->choices().naming.baseName, text("Harbor"));
    EXPECT_EQ(changes, 2);
    flow->setSubclipHandleSeconds(2);
    EXPECT_EQ(flow->choices().subclipHandleSeconds, 2);
    for (const double invalid : {-1.0, std::nan(""), HUGE_VAL}) {
        flow->setSubclipHandleSeconds(invalid);
        EXPECT_EQ(flow->choices().subclipHandleSeconds, 0);
    }
    flow->setFolder(QString());
    EXPECT_FALSE(flow->canStart(flow->planRows(project, false)));
    run();
    EXPECT_EQ(flow->stage(), Stage::configure);
    flow->reset(project);
    EXPECT_EQ(flow->choices(), defaultExportChoices(project));
}

TEST_F(ExportViewModelTest, WritesARunBackAsTwoUndoSteps) {
    project = *store.project();
    run();
    EXPECT_EQ(flow->stage(), Stage::done);
    EXPECT_EQ(flow->overallFraction(), 1);
    EXPECT_FALSE(flow->runInput()->mediaRootAuthorized);
    EXPECT_TRUE(has("project/selects/b.mov"));
    EXPECT_TRUE(isExported(0) && isExported(1));
    EXPECT_THAT(store.project()->exportBatches, SizeIs(1));
    EXPECT_TRUE(store.isDirty());
    store.undo();
    EXPECT_THAT(store.project()->exportBatches, testing::IsEmpty());
    EXPECT_TRUE(isExported(0));
    store.undo();
    EXPECT_EQ(store.project()->videos, project.videos);
    store.redo();
    flow->reset(*store.project());
    run();
    EXPECT_EQ(flow->stage(), Stage::configure) << "nothing new";
}

TEST_F(ExportViewModelTest, MarksDeliveredClipsAndRecordsTheRun) {
    store.toggleSubclipSelected({text("B"), text("s")});
    folder.write(footage("a.mov"), "changed");
    await(authorization.authorizeMediaRoot(folder.folder("project/media"), projectFile));
    flow->setMode(ExportBatch::Mode::accurateTranscode);
    flow->setOutputMode(OutputMode::primaryAndHd);
    flow->setSubclipHandleSeconds(0.5);
    flow->setNamingPreset(NamingPreset::projectNameNumber);
    const QDateTime began = clock.now();
    atRow(1, [this] { clock.advance(std::chrono::hours(1)); });
    run();
    EXPECT_TRUE(flow->runInput()->mediaRootAuthorized);
    EXPECT_FALSE(isExported(0));
    EXPECT_TRUE(isExported(1));
    EXPECT_TRUE(store.project()->videos.at(1)->subclips.at(0).exportedAt);
    EXPECT_EQ(store.project()->updatedAt, clock.now());
    const ExportBatch expected{.id = flow->runInput()->batchId,
                               .outputFolder = at("project/selects"),
                               .mode = ExportBatch::Mode::accurateTranscode,
                               .includeWholeVideoSelects = true,
                               .includeSubclipSelects = true,
                               .subclipHandleSeconds = 0.5,
                               .namingOptions = flow->choices().naming,
                               .createdAt = began,
                               .completedAt = clock.now(),
                               .succeededCount = 2,
                               .failedCount = 1,
                               .outputMode = OutputMode::primaryAndHd};
    EXPECT_EQ(store.project()->exportBatches, QList{expected});
}

TEST_F(ExportViewModelTest, NeverReplacesAnHDFileThatTheProjectNames) {
    const QString hd = folder.write("project/selects/HD/a.mp4", "kept");
    store.updateVideo(text("B"), [&](VideoRecord &video) { video.hdPath = hd; });
    flow->setOutputMode(OutputMode::primaryAndHd);
    run();
    EXPECT_EQ(folder.read("project/selects/HD/a.mp4"), "kept");
    EXPECT_FALSE(isExported(0));
    EXPECT_TRUE(isExported(1));
}

TEST_F(ExportViewModelTest, NeverWritesBackToAnotherProject) {
    const ExportOrigin origin = ExportOrigin::of(*store.project(), store);
    const ExportBatchResult result{.succeeded = {{.rowId = exportRowId(text("A"))}}};
    const QString other = at("project/Other.corvane");
    await(io.save(project, other, false)); // a copy, of the same id
    await(store.openProject(other));
    writeBack(store, origin, {}, result);
    EXPECT_FALSE(isExported(0));
    EXPECT_THAT(store.project()->exportBatches, testing::IsEmpty());
    await(store.closeProject());
    writeBack(store, origin, {}, result);
    EXPECT_FALSE(store.project());
    await(store.openProject(projectFile));
    writeBack(store, origin, {}, result);
    EXPECT_TRUE(isExported(0)) << "open again";
}

TEST_F(ExportViewModelTest, CancelsItsRunOnDestructionAndRecordsDeliveredClips) {
    auto running = flow->start(*store.project());
    atRow(1, [this] { flow.release()->deleteLater(); });
    await(std::move(running));
    EXPECT_TRUE(isExported(0));
    EXPECT_FALSE(isExported(1));
    EXPECT_EQ(store.project()->exportBatches.at(0).cancelledCount, 1);
    EXPECT_TRUE(store.project()->exportBatches.at(0).cancelled);
}

TEST(ExportTexts, FormatsCountsAndProgress) {
    EXPECT_EQ(ExportTexts::countLine(1, 0), text("0 of 1 row"));
    ExportProgress progress{.index = 4, .total = 12, .rowProgress = 0.62};
    EXPECT_EQ(ExportTexts::rowLine(progress), text("62% this row"));
    progress.bytesDone = 620'000;
    progress.bytesTotal = 1'000'000;
    EXPECT_EQ(ExportTexts::rowLine(progress), text("62% this row · 620.0 kB / 1.0 MB"));
    EXPECT_EQ(DeliveryTexts::percent(progress.overallFraction(OutputMode::primaryOnly)),
              text("38%"));
}

#include "delivery/handoff/HandoffFixture.h"

#include "delivery/handoff/HandoffTexts.h"
#include "delivery/handoff/SelectsHandoffViewModel.h"

using namespace corvane;
using namespace corvane::test;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using Stage = SelectsHandoffViewModel::Stage;

namespace {

class SelectsHandoffViewModelTest : public HandoffTest {
  protected:
    void prepare() {
        grantAndOpen();
        choose();
    }
    void choose() {
        flow->reset(project);
        flow->setFolder(at("out"));
        flow->setProjectName(text("Show"));
    }

    std::unique_ptr<SelectsHandoffViewModel> flow =
        std::make_unique<SelectsHandoffViewModel>(&store, sessions, cache.functions(), settings());
};

} // namespace

TEST_F(SelectsHandoffViewModelTest, StartsWithTheDefaultsOfTheProject) {
    flow->setMode(ExportBatch::Mode::accurateTranscode);
    flow->setSubclipHandleSeconds(2);
    project.projectName = text("  Gulls ");
    flow->reset(project);
    EXPECT_EQ(flow->choices().projectName, text("Gulls - Selects"));
    EXPECT_EQ(flow->choices().mode, ExportBatch::Mode::fastCopy);
    EXPECT_EQ(flow->choices().outputMode, HandoffOutputMode::primaryOnly);
    EXPECT_EQ(flow->choices().subclipHandleSeconds, 0);
    EXPECT_TRUE(flow->choices().naming.keepOriginalForWholeVideos);
    EXPECT_EQ(flow->choices().destinationFolder, std::nullopt);
    flow->setNamingPreset(NamingPreset::projectNameNumber);
    EXPECT_EQ(flow->choices().naming.baseName, text("Gulls"));
    project.projectName = text(" ");
    flow->reset(project);
    EXPECT_EQ(flow->choices().projectName, text("Project - Selects"));
    EXPECT_EQ(packageName(text("/:/")), text("Selects"));
}

TEST_F(SelectsHandoffViewModelTest, RemembersFiveDestinationsNewestFirst) {
    for (const char *name : {"/a", "/b", "/c", "/d", "/e", "/f", "/c", "/d/"}) {
        flow->noteDestination(text(name));
    }
    const QStringList expected{text("/d"), text("/c"), text("/f"), text("/e"), text("/b")};
    EXPECT_EQ(flow->recentDestinations(), expected);
    settings()->setValue(RecentDestinations::key(), QStringList{text("no path")} + expected);
    SelectsHandoffViewModel next(&store, sessions, cache.functions(), settings());
    next.reset(project);
    EXPECT_EQ(next.recentDestinations(), expected);
    EXPECT_EQ(next.choices().destinationFolder, text("/d"));
}

TEST_F(SelectsHandoffViewModelTest, PlansSelectsInDocumentOrder) {
    VideoRecord &both = addVideo("b.mov", "1");
    both.fileSizeBytes = 1000;
    both.bitRateBps = 80;
    both.sidecarPath = text("media/b.xml");
    addSubclip(both, "x");
    addSubclip(both, "y").selectedForExport = false;
    VideoRecord &parent = addVideo("a.mov", "2");
    parent.selectedForExport = false;
    parent.sourcePath = text("media/a.mov");
    parent.fileSizeBytes = 1250;
    addSubclip(parent, "z");
    addSubclip(parent, "backwards").inSeconds = 99;
    addVideo("c.mov", "3").selectedForExport = false;
    const QList<HandoffClip> clips = planClips(project);
    ASSERT_THAT(clips, SizeIs(2));
    EXPECT_TRUE(clips.at(0).isWholeClipSelected);
    EXPECT_THAT(clips.at(0).standaloneSubclips, SizeIs(1));
    EXPECT_EQ(clips.at(0).video->sidecarPath, at("project/media/b.xml"));
    EXPECT_FALSE(clips.at(1).isWholeClipSelected);
    EXPECT_EQ(clips.at(1).video->sourcePath, at("project/media/a.mov"));
    EXPECT_EQ(HandoffTexts::contentsSummary(clips), text("1 clip, 3 subclips, 4 outputs, ~1.1 kB"));
}

TEST_F(SelectsHandoffViewModelTest, RunsOnceAndLeavesTheProjectUnchanged) {
    addVideo("a.mov", "1");
    EXPECT_FALSE(flow->canStart(project));
    prepare();
    EXPECT_TRUE(flow->canStart(project));
    auto running = flow->start(project);
    EXPECT_EQ(flow->stage(), Stage::running);
    await(flow->start(project));
    flow->reset(project);
    await(std::move(running));
    EXPECT_EQ(flow->stage(), Stage::done);
    EXPECT_EQ(flow->overallFraction(), 1);
    EXPECT_EQ(flow->currentRow()->fileName, text("Show.corvane"));
    EXPECT_FALSE(store.isDirty());
    EXPECT_EQ(store.project()->videos.first()->exportedAt, std::nullopt);
    EXPECT_THAT(folder.names("project").filter(text(".corvane.bak")), SizeIs(1));
    EXPECT_EQ(flow->recentDestinations(), QStringList{at("out")});
    EXPECT_FALSE(has("out/Show (2)"));
}

TEST_F(SelectsHandoffViewModelTest, AbortAndDestructionCancelTheCurrentOutput) {
    addSubclip(addVideo("a.mov", "1"), "x");
    prepare();
    sessions.halfway = [this](const QString &) {
        QMetaObject::invokeMethod(qApp, [this] { flow->abort(); }, Qt::BlockingQueuedConnection);
    };
    await(flow->start(project));
    EXPECT_EQ(HandoffTexts::headline(*flow->result()), text("Handoff cancelled"));
    EXPECT_THAT(flow->result()->succeeded, SizeIs(1)) << "the clip, before its subclip";
    EXPECT_THAT(delivered().videos, SizeIs(1));
    expectNoTemporaries();

    sessions.halfway = [this](const QString &) {
        QMetaObject::invokeMethod(qApp, [this] { flow.reset(); }, Qt::BlockingQueuedConnection);
    };
    choose();
    await(flow->start(project));
    EXPECT_FALSE(flow);
    EXPECT_THAT(ProjectFileIO::loadNow(at("out/Show (2)/Show.corvane")).videos, SizeIs(1));
    expectNoTemporaries();
}

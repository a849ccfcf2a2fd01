#include "delivery/export/ExportFixture.h"

#include "platform/Paths.h"

using namespace corvane;
using namespace corvane::test;
using testing::ElementsAre;

namespace {

class ExportPlanningTest : public ExportTest {
  protected:
    QList<ExportRowJob> plan(bool includeFolderContents = false) const {
        return planRows(project, choices, includeFolderContents);
    }
    std::vector<std::string> names(bool includeFolderContents = false) const {
        std::vector<std::string> found;
        for (const ExportRowJob &row : plan(includeFolderContents)) {
            found.push_back(row.proposedName.toStdString());
        }
        return found;
    }
};

} // namespace

TEST_F(ExportPlanningTest, OrdersRowsByClipIdTheWholeClipFirst) {
    VideoRecord &second = addClip("B", "b.mov", "");
    addSubclip(second, 2, 5, 6);
    addSubclip(second, 1, 1, 2).label = text("Wide");
    VideoRecord &first = addClip("A", "a.mov", "");
    first.rejected = true;
    addSubclip(addClip("C", "c.mov", ""), 1, 1, 2);
    project.videos.last().edit().selectedForExport = false;
    EXPECT_THAT(names(),
                ElementsAre("a.mov", "b.mov", "b_Wide.mov", "b_subclip-2.mov", "c_subclip-1.mov"));
    const ExportRowJob row = plan().at(2);
    EXPECT_EQ(row.id, text("sub:B:s1"));
    EXPECT_EQ(row.subclipId, text("s1"));
    EXPECT_EQ(row.destinationPath, at("out/b_Wide.mov"));
    choices.includeSubclipSelects = false;
    EXPECT_THAT(names(), ElementsAre("a.mov", "b.mov"));
    choices.outputFolder.reset();
    EXPECT_TRUE(plan().isEmpty());
}

TEST_F(ExportPlanningTest, FitsNamesToTheVolume) {
    addSidecar(addClip("A", "a?b.mov", ""), "a?b.xml", "");
    addClip("B", "a*b.mov", "");
    addClip("C", text("x").repeated(251).toUtf8().constData(), "");
    addClip("D", text("x").repeated(251).toUtf8().constData(), "");
    choices.volumeLimits.restrictsNames = true;
    const std::string stem(243, 'x');
    EXPECT_THAT(names(), ElementsAre("a_b.mov", "a_b (2).mov", stem + "xxxx", stem + " (2)"));
    EXPECT_EQ(plan().at(0).sidecarDestination, at("out/a_b.xml"));
}

TEST_F(ExportPlanningTest, SkipsSelectsThatWereExported) {
    VideoRecord &video = addClip("A", "a.mov", "");
    video.exportedAt = clock.now();
    addSubclip(video, 1, 1, 2);
    addSubclip(video, 2, 1, 2).exportedAt = clock.now();
    EXPECT_THAT(names(), ElementsAre("a_subclip-1.mov"));
    EXPECT_EQ(countSelects(project, choices), 3);
    choices.exportNewOnly = false;
    EXPECT_EQ(plan().size(), 3);
}

TEST_F(ExportPlanningTest, WidensSubclipsWithinTheClip) {
    Subclip subclip{.inSeconds = 0.3, .outSeconds = 11.9};
    EXPECT_EQ(widenedRange(subclip, 1, 12.5).inSeconds, 0);
    EXPECT_EQ(widenedRange(subclip, 1, 12.5).outSeconds, 12.5);
    EXPECT_EQ(widenedRange(subclip, 1, 0).outSeconds, 12.9);
    subclip.outSeconds = 12.5;
    EXPECT_EQ(widenedRange(subclip, 0, 12.5).outSeconds, 12.5);
    addSubclip(addClip("A", "a.mov", ""), 1, 3, 4);
    choices.subclipHandleSeconds = 0.5;
    EXPECT_EQ(plan().at(1).inSeconds, 2.5);
    EXPECT_EQ(plan().at(1).outSeconds, 4.5);
}

TEST_F(ExportPlanningTest, NamesHDCopiesByUniqueStems) {
    addSidecar(addClip("A", "Take.mov", ""), "Take.XML", "");
    addClip("B", "take.mxf", "");
    choices.outputMode = OutputMode::primaryAndHd;
    const auto rows = plan();
    EXPECT_THAT(names(), ElementsAre("Take.mov", "take (2).mxf"));
    EXPECT_EQ(rows.at(0).hdDestinationPath, at("out/HD/Take.mp4"));
    EXPECT_EQ(rows.at(1).hdDestinationPath, at("out/HD/take (2).mp4"));
    EXPECT_EQ(rows.at(0).sidecarDestination, at("out/Take.XML"));
    project.videos.first().edit().sidecarPath = text("/x/clip.mp4");
    EXPECT_EQ(plan().at(0).sidecarDestination, at("out/Take (2).mp4"));
    project.videos.first().edit().sidecarPath.reset();
    choices.outputMode = OutputMode::hdOnly;
    project.shootDate = text("2024-05-01");
    choices.naming.includeShootDate = true;
    EXPECT_THAT(names(), ElementsAre("2024-05-01_Take.mp4", "2024-05-01_take (2).mp4"));
    EXPECT_FALSE(plan().at(0).hdDestinationPath);
}

TEST_F(ExportPlanningTest, AvoidsFoldersInTheOutputFolderAndReplacesFiles) {
    addClip("A", "a.mov", "");
    addClip("B", "b.mov", "");
    EXPECT_THAT(names(true), ElementsAre("a.mov", "b.mov")) << "no folder yet";
    folder.folder("out/A.MOV");
    folder.write("out/b.mov", "older");
    EXPECT_THAT(names(true), ElementsAre("a (2).mov", "b.mov"));
    EXPECT_THAT(names(false), ElementsAre("a.mov", "b.mov"));
}

TEST_F(ExportPlanningTest, ResolvesRelativePathsAgainstTheProjectAndNamesSidecarsUniquely) {
    VideoRecord &first = addClip("A", "a.mov", "");
    first.sourcePath = text("media/a.mov");
    first.sidecarPath = text("media/a.xml");
    addClip("B", "a.xml", "");
    project.videos.last().edit().sidecarPath = text("/x/noextension");
    const auto rows = plan();
    EXPECT_EQ(rows.at(0).sourcePath, at("project/media/a.mov"));
    EXPECT_EQ(rows.at(0).sidecarSource, at("project/media/a.xml"));
    EXPECT_EQ(paths::lastComponent(*rows.at(0).sidecarDestination), text("a.xml"));
    EXPECT_EQ(rows.at(1).proposedName, text("a (2).xml"));
    EXPECT_EQ(paths::lastComponent(*rows.at(1).sidecarDestination), text("a (2)"));
}

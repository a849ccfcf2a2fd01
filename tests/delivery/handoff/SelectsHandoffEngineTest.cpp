#include "delivery/handoff/HandoffFixture.h"

#include "delivery/handoff/SelectsHandoff.h"

#include <QDir>

#include <cerrno>

using namespace corvane;
using namespace corvane::test;
using media::ExportPreset;
using media::MediaTimeRange;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;
using testing::UnorderedElementsAre;
using Phase = HandoffProgress::Phase;

namespace {

class SelectsHandoffEngineTest : public HandoffTest {
  protected:
    /// Requests cancellation that many times when the clip reaches the phase.
    void cancelAt(int index, Phase phase, int times = 1) {
        onProgress = [this, index, phase, times](const HandoffProgress &reported) {
            if (reported.index == index && reported.phase == phase &&
                !engine.cancelToken()->isRequested()) {
                for (int request = 0; request < times; ++request) {
                    engine.requestCancel();
                }
            }
        };
    }
};

/// Two clips, the second with a subclip.
class HandoffOutputs : public SelectsHandoffEngineTest {
  protected:
    HandoffOutputs() {
        addVideo("A012_C003.MOV", "one").durationSeconds = 10;
        VideoRecord &second = addVideo("B.mxf", "two");
        second.durationSeconds = 2.5;
        addSubclip(second, "");
        second.subclips[0].inSeconds = 0.5;
        second.subclips[0].outSeconds = 2;
    }
    QByteArray part(ExportPreset preset, qint64 in, qint64 out) const {
        return FakeSessions::output(preset, "two", MediaTimeRange{{in}, {out}});
    }
};

} // namespace

TEST_F(HandoffOutputs, FollowTheModeTheNamingAndTheHandles) {
    using Mode = ExportBatch::Mode;
    struct Case {
        Mode mode;
        NamingPreset naming;
        double handles;
        QStringList names;
        QList<QByteArray> bytes;
    };
    const auto whole = [](const char *bytes) {
        return FakeSessions::output(ExportPreset::highestQuality, bytes);
    };
    const Case table[] = {
        {Mode::fastCopy,
         NamingPreset::keepOriginal,
         0,
         {text("A012_C003.MOV"), text("B.mxf"), text("B_Subclip 1.mxf")},
         {"one", "two", part(ExportPreset::passthrough, 300, 1200)}},
        {Mode::accurateTranscode,
         NamingPreset::keepOriginal,
         1,
         {text("A012_C003.mp4"), text("B.mp4"), text("B_Subclip 1.mp4")},
         {whole("one"), whole("two"), part(ExportPreset::highestQuality, 0, 1500)}},
        {Mode::fastCopy,
         NamingPreset::projectNameNumber,
         0.25,
         {text("Harbor_001.MOV"), text("Harbor_002.mxf"), text("Harbor_003_Subclip 1.mxf")},
         {"one", "two", part(ExportPreset::passthrough, 150, 1350)}},
    };
    grantAndOpen();
    for (const Case &row : table) {
        handoff.mode = row.mode;
        handoff.subclipHandleSeconds = row.handles;
        applyPreset(handoff.naming, row.naming, project.name);
        const HandoffResult result = run(plan());
        EXPECT_THAT(errorsOf(result), IsEmpty());
        EXPECT_EQ(result.generalError, std::nullopt);
        ASSERT_THAT(result.succeeded, SizeIs(3));
        for (qsizetype index = 0; index < 3; ++index) {
            const QString path = result.succeeded.at(index).destinationPath;
            EXPECT_EQ(path, *result.packageFolder + text("/media/") + row.names.at(index));
            EXPECT_EQ(folder.read(path.mid(folder.path().size() + 1)), row.bytes.at(index));
        }
    }
    EXPECT_THAT(folder.names("out"),
                testing::IsSupersetOf({text("Harbor - Selects/Harbor - Selects.corvane"),
                                       text("Harbor - Selects (2)/Harbor - Selects.corvane"),
                                       text("Harbor - Selects (3)/Harbor - Selects.corvane")}));
    expectNoTemporaries();
}

TEST_F(HandoffOutputs, HaveHDCopiesWithUniqueNamesThatMayFail) {
    addVideo("b.mov", "three");
    handoff.outputMode = HandoffOutputMode::primaryAndHd;
    sessions.halfway = [hasFailed = false](const QString &output) mutable {
        if (output.contains(text("/HD/")) && !std::exchange(hasFailed, true)) {
            throw Failure(text("no"));
        }
    };
    const HandoffResult result = run();
    EXPECT_THAT(errorsOf(result), IsEmpty());
    EXPECT_THAT(media(), ElementsAre(text("A012_C003.MOV"), text("B.mxf"), text("B_Subclip 1.mxf"),
                                     text("HD/"), text("HD/B.mp4"), text("HD/B_Subclip 1.mp4"),
                                     text("HD/b (2).mp4"), text("b (2).mov")));
    EXPECT_EQ(output("HD/B_Subclip 1.mp4"), part(ExportPreset::hd1920x1080, 300, 1200));
    const Project package = delivered();
    EXPECT_EQ(package.videos.at(0)->hdPath, std::nullopt);
    EXPECT_EQ(package.videos.at(3)->hdPath, text("media/HD/b (2).mp4"));
    EXPECT_EQ(result.succeeded.at(3).hdPath, at("out/Show/media/HD/b (2).mp4"));
}

TEST_F(HandoffOutputs, CopyCachedImagesAndGenerateMissingOnes) {
    VideoRecord &first = project.videos[0].edit();
    addSubclip(first, "Pan").selectedForExport = false;
    addCache(text("thumbnails/%1.jpg").arg(uuid(1)), "kept");
    addCache(text("subclip-thumbs/%1.jpg").arg(uuid(100)), "kept");
    addFilmstrip(first);
    addCache(uuid(1) + text("/filmstrip/.tmp-1.jpg"), "left over");
    addCache(uuid(1) + text("/filmstrip/notes.txt"), "foreign");
    // The second clip's cached images are reached through links and must not be copied.
    folder.link(text("project/.corvane-cache/thumbnails/%1.jpg").arg(uuid(2)), at("secret.jpg"));
    folder.write("secret.jpg", "secret");
    addFilmstrip(*project.videos.at(1));
    const QString frame = text("project/.corvane-cache/%1/filmstrip/frame-07.jpg").arg(uuid(2));
    fileSystem().remove(folder.at(frame));
    folder.link(frame, at("secret.jpg"));
    EXPECT_THAT(errorsOf(run()), IsEmpty());
    EXPECT_EQ(cached(text("thumbnails/%1.jpg").arg(uuid(1))), "kept");
    EXPECT_EQ(cached(text("subclip-thumbs/%1.jpg").arg(uuid(100))), "kept");
    EXPECT_THAT(folder.names(text("out/Show/.corvane-cache/%1/filmstrip").arg(uuid(1))),
                SizeIs(15));
    EXPECT_EQ(cached(text("thumbnails/%1.jpg").arg(uuid(2))), "made");
    EXPECT_EQ(cached(uuid(2) + text("/filmstrip/frame-07.jpg")), QByteArray());
    const Project package = delivered();
    const QString subclip = package.videos.at(2)->id;
    EXPECT_EQ(package.videos.at(2)->thumbnailPath, text("thumbnails/%1.jpg").arg(subclip));
    EXPECT_EQ(cached(subclip + text("/filmstrip/frame-00.jpg")), "made");
    EXPECT_THAT(cache.made, ElementsAre(text("thumbnail of B.mxf"), text("filmstrip of B.mxf"),
                                        text("thumbnail of B_Subclip 1.mxf"),
                                        text("filmstrip of B_Subclip 1.mxf")));
}

TEST_F(HandoffOutputs, AreAuthorizedForThePackageWithTheirContentHashes) {
    run();
    const QString file = at("out/Show/Show.corvane");
    EXPECT_TRUE(await(authorization.isMediaRootAuthorized(at("out/Show/media"), file)));
    const AuthorizedPaths grants = await(authorization.authorizedPaths(file));
    ASSERT_THAT(grants, SizeIs(3));
    const auto folderIdentity = PathSafety::folderIdentity(at("out/Show/media"));
    for (const auto &[path, identity] : grants.asKeyValueRange()) {
        ASSERT_TRUE(identity) << path.toStdString();
        EXPECT_TRUE(identity->isSameFolder(*folderIdentity));
        EXPECT_EQ(ContentHasher::verifyAnchor(*identity->contentHash, path),
                  ContentHasher::AnchorVerification::matches);
    }
}

TEST_F(SelectsHandoffEngineTest, CopiesSidecarsUnderTheNamesOfTheirClips) {
    addSidecar(addVideo("a.mov", "1"), "a.xml", "first");
    addSidecar(addVideo("a.mxf", "2"), "a.XMP", "second");
    addSidecar(addVideo("b.mov", "3"), "b.mov", "the clip itself");
    VideoRecord &outside = addVideo("c.mov", "4");
    outside.sidecarPath = folder.write("elsewhere/c.xml", "outside");
    addVideo("d.mov", "5").sidecarPath = at("footage/missing");
    const HandoffResult result = run();
    EXPECT_THAT(errorsOf(result), IsEmpty());
    EXPECT_THAT(media(), UnorderedElementsAre(text("a.mov"), text("a.xml"), text("a (2).mxf"),
                                              text("a (2).XMP"), text("b.mov"), text("c.mov"),
                                              text("d.mov")));
    EXPECT_EQ(output("a (2).XMP"), "second");
    EXPECT_EQ(delivered().videos.at(1)->sidecarPath, text("media/a (2).XMP"));
    EXPECT_EQ(delivered().videos.at(4)->sidecarPath, text("media/d"));
}

TEST_F(SelectsHandoffEngineTest, ReportsASidecarThatCannotBeWritten) {
    addSidecar(addVideo("a.mov", "1"), "a.xml", "sidecar");
    files.setObserver([](const QString &operation, const QString &path) {
        if (operation == QLatin1String("renameAt") && path.endsWith(QLatin1String("a.xml"))) {
            throw FileError(path, EIO);
        }
    });
    const HandoffResult result = run();
    files.setObserver({});
    EXPECT_THAT(errorsOf(result),
                ElementsAre("sidecar: Rename failed for a.xml: Input/output error"));
    EXPECT_THAT(result.succeeded, SizeIs(1));
    EXPECT_THAT(media(), ElementsAre(text("a.mov")));
}

TEST_F(SelectsHandoffEngineTest, FailsRefusedClipsAndDeliversTheOthers) {
    addVideo("gone.mov", "1");
    addVideo("changed.mov", "2");
    addVideo("linked.mov", "3");
    VideoRecord &notes = addVideo("notes.txt", "4");
    addSubclip(notes, "x");
    addVideo("good.mov", "5");
    addVideo("good.mov", "5").id = text("../../no-uuid");
    grantAndOpen();
    fileSystem().remove(at("footage/gone.mov"));
    folder.write("footage/changed.mov", "?");
    fileSystem().remove(at("footage/linked.mov"));
    folder.link("footage/linked.mov", at("footage/good.mov"));
    project.videos.append(sampleVideo(uuid(9)));
    project.videos.last().edit().selectedForExport = true;
    project.videos.last().edit().sourcePath = folder.write("footage/new.mov", "6");
    handoff.projectName = text("Show");
    const HandoffResult result = run(plan());
    EXPECT_THAT(
        errorsOf(result),
        ElementsAre(StartsWith("handoff source's folder changed since it was authorized, refusing"),
                    StartsWith("handoff source's folder changed since it was authorized, refusing"),
                    StartsWith("handoff source is not a regular file, refusing"),
                    StartsWith("handoff source is not a media file, refusing"),
                    StartsWith("Subclip extract: handoff source is not a media file, refusing"),
                    StartsWith("handoff source was never imported or relinked for this "
                               "project, refusing")));
    EXPECT_FALSE(result.cancelled);
    EXPECT_THAT(media(), ElementsAre(text("good (2).mov"), text("good.mov")));
    EXPECT_EQ(delivered().videos.at(1)->thumbnailPath, std::nullopt);
    EXPECT_EQ(delivered().videos.at(1)->id, text("../../no-uuid"));
    EXPECT_FALSE(folder.names().contains(text("no-uuid")));
    expectNoTemporaries();
}

TEST_F(HandoffOutputs, SkipTheRemainingOutputsAfterACancel) {
    const struct {
        int index;
        Phase phase;
        int times;
        int succeeded;
        int cancelled;
    } table[] = {{0, Phase::starting, 1, 1, 1},
                 {0, Phase::copyingMedia, 2, 1, 1},
                 {1, Phase::copyingMedia, 1, 2, 1},
                 {1, Phase::extractingSubclip, 2, 3, 0},
                 {2, Phase::writingProject, 1, 3, 0}};
    grantAndOpen();
    handoff.outputMode = HandoffOutputMode::primaryAndHd;
    for (const auto &row : table) {
        cancelAt(row.index, row.phase, row.times);
        const HandoffResult result = run(plan());
        EXPECT_THAT(result.succeeded, SizeIs(row.succeeded));
        EXPECT_THAT(result.failed, SizeIs(row.cancelled));
        EXPECT_EQ(result.cancelledCount, row.cancelled);
        EXPECT_EQ(result.cancelled, row.cancelled > 0);
        const Project package = ProjectFileIO::loadNow(*result.projectFileURL);
        EXPECT_THAT(package.videos, SizeIs(row.succeeded));
        EXPECT_EQ(package.notes, text("Bring gulls."));
    }
}

TEST_F(HandoffOutputs, ReportProgressPhaseByPhase) {
    run();
    QList<Phase> phases;
    for (const HandoffProgress &reported : progress) {
        EXPECT_EQ(reported.total, 2);
        if (phases.isEmpty() || phases.last() != reported.phase) {
            phases.append(reported.phase);
        }
    }
    EXPECT_THAT(phases,
                ElementsAre(Phase::starting, Phase::copyingMedia, Phase::generatingThumbnail,
                            Phase::generatingFilmstrip, Phase::done, Phase::starting,
                            Phase::copyingMedia, Phase::generatingThumbnail,
                            Phase::generatingFilmstrip, Phase::done, Phase::starting,
                            Phase::extractingSubclip, Phase::generatingFilmstrip, Phase::done,
                            Phase::writingProject, Phase::done));
    EXPECT_TRUE(std::ranges::any_of(progress, [](const auto &reported) {
        return reported.bytesDone == 3 && reported.bytesTotal == 3;
    }));
}

TEST_F(SelectsHandoffEngineTest, ReportsAFailedRunAndLeavesAStubProject) {
    addVideo("a.mov", "1");
    grantAndOpen();
    handoff.projectName = text("Show");
    const struct {
        const char *operation;
        const char *path;
        const char *error;
        bool hasStub;
    } table[] = {
        {"createFolderAt", "", "Could not reserve package folder: No space left on device", false},
        {"createFileAt", "out/Show/.tmp",
         "Could not write project file: Failed to write "
         "/out/Show/Show.corvane: No space left on device",
         false},
        {"createFolderAt", "thumbnails",
         "Could not create package skeleton: No space left on device", true},
        {"syncVolume", "", "Could not write project file: No space left on device", true},
    };
    for (const auto &row : table) {
        QDir(at("out")).removeRecursively();
        folder.folder("out");
        files.setObserver([row](const QString &operation, const QString &path) {
            if (operation == text(row.operation) && path.contains(text(row.path))) {
                throw FileError(path, ENOSPC);
            }
        });
        const HandoffResult result = run(plan());
        files.setObserver({});
        EXPECT_EQ(shortened(result.generalError), row.error);
        EXPECT_EQ(folder.has("out/Show/Show.corvane"), row.hasStub);
        if (row.hasStub) {
            EXPECT_EQ(delivered().notes,
                      text("Bring gulls.\n\n[Corvane stub manifest — incomplete handoff. Rerun the "
                           "handoff to populate.]"));
        }
    }
}

TEST_F(SelectsHandoffEngineTest, RefusesADestinationWithoutRoomOrFolder) {
    addVideo("a.mov", "12345");
    grantAndOpen();
    HandoffPlan input = plan();
    files.setFreeSpace(4);
    EXPECT_EQ(shortened(run(input).generalError),
              "There isn't enough room in /out: the package needs about 5 bytes, and 4 bytes are "
              "free. Nothing was written. Make room or pick another destination folder, then run "
              "the handoff again.");
    EXPECT_THAT(folder.names("out"), IsEmpty());
    files.setFreeSpace(100'000);
    input.volumeLimits.maxFileSize = 4;
    EXPECT_THAT(
        shortened(run(input).generalError),
        StartsWith("a.mov has 5 bytes, and the drive can't hold files of more than 4 bytes."));
    EXPECT_THAT(folder.names("out"), IsEmpty());
    input.volumeLimits = {};
    input.destinationFolder = folder.link("nowhere", at("missing"));
    EXPECT_EQ(shortened(run(input).generalError),
              "Could not reserve package folder: No such file or directory");
    input.destinationFolder = folder.write("file", "");
    EXPECT_EQ(shortened(run(input).generalError),
              "Could not reserve package folder: Not a directory");
    input.destinationFolder = at("project/media");
    folder.folder("project/media");
    EXPECT_EQ(run(input).generalError, std::nullopt);
    EXPECT_EQ(run(input).packageFolder, at("project/media/Harbor - Selects (2)"));
}

TEST_F(SelectsHandoffEngineTest, ReservesAUniqueFolder) {
    const auto reserve = [this](const char *name) {
        return SelectsHandoff::reserveUniqueSubfolder(text(name), OpenFolder::at(at("out")),
                                                      [] { return 1234; })
            .path();
    };
    folder.write("out/Show", "a file");
    EXPECT_EQ(reserve("Show"), at("out/Show (2)"));
    for (int number = 3; number <= 999; ++number) {
        folder.folder(text("out/Show (%1)").arg(number));
    }
    EXPECT_EQ(reserve("Show"), at("out/Show (1234)"));
    try {
        reserve("Show");
        ADD_FAILURE();
    } catch (const SelectsHandoff::ContainmentError &error) {
        EXPECT_EQ(error.description(), text("Could not reserve a unique subfolder for \"Show\" "
                                            "after exhausting suffixes."));
    }
    EXPECT_THROW(reserve("../Show"), SelectsHandoff::ContainmentError);
    EXPECT_THROW(reserve("."), SelectsHandoff::ContainmentError);
    EXPECT_EQ(folder.read("out/Show"), "a file");
}

TEST_F(HandoffOutputs, GoToTheFolderOfThePackageWhateverTakesItsPlace) {
    addSidecar(project.videos[0].edit(), "A012_C003.xml", "sidecar");
    addCache(text("thumbnails/%1.jpg").arg(uuid(1)), "kept");
    grantAndOpen();
    handoff.projectName = text("Show");
    handoff.outputMode = HandoffOutputMode::primaryAndHd;
    const HandoffPlan input = plan();
    const std::pair<const char *, const char *> table[] = {
        {"out/Show", "out/Show"}, {"out/Show", "out"}, {"out/Show/media", "out/Show/media"}};
    for (const auto &[opened, swapped] : table) {
        int lostRuns = 0;
        swapDestinationDuring(
            at(text(opened)), at(text(swapped)), 17, [&] { return run(input); },
            [&](const HandoffResult &result) {
                if (result.generalError && result.succeeded.isEmpty()) {
                    EXPECT_EQ(shortened(result.generalError), lostText(at(text(opened))));
                    ++lostRuns;
                }
            });
        EXPECT_GT(lostRuns, 2) << swapped;
    }
}

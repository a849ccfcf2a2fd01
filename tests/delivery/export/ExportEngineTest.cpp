#include "delivery/export/ExportEngineFixture.h"

#include "transfer/SidecarCopier.h"
#include "trust/PathSafety.h"

#include <cerrno>

using namespace corvane;
using namespace corvane::test;
using media::ExportPreset;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;
using Phase = ExportProgress::Phase;

TEST_F(ExportEngineTest, RefusesAFileThatTheVolumeCannotHoldAndDeliversTheOthers) {
    addClip("A", "large.mov", "12345");
    addClip("B", "small.mov", "1234");
    grantAndOpen();
    choices.volumeLimits.maxFileSize = 4;
    EXPECT_THAT(failure(), StartsWith("large.mov has 5 bytes, and the drive can't hold files of "
                                      "more than 4 bytes. Nothing of it was copied."));
    EXPECT_FALSE(folder.has("out/large.mov"));
    EXPECT_EQ(delivered("small.mov"), "1234");
}

TEST_F(ExportEngineTest, DeliversClipsWithTheirSidecarsAndAManifest) {
    const QByteArray bytes = noise(100'000);
    addSidecar(addClip("A", "a.mov", bytes), "a.xml", "new");
    addClip("B", "b.mov", "b");
    folder.write("out/a.mov", "older");
    folder.write("out/a.xml", "older");
    grantAndOpen();
    const ExportBatchResult result = run();
    EXPECT_THAT(errorsOf(result), IsEmpty());
    EXPECT_THAT(result.succeeded, SizeIs(2));
    EXPECT_FALSE(result.cancelled);
    EXPECT_EQ(delivered("a.mov"), bytes);
    EXPECT_EQ(delivered("a.xml"), "new");
    EXPECT_EQ(delivered("b.mov"), "b");
    EXPECT_EQ(result.manifestSidecarPath, at("out/manifest-BATCH-1.json"));
    EXPECT_THAT(folder.names("out"), SizeIs(4)) << "no other files";
    const ExportProgress &copied = progress.at(progress.size() / 2 - 2);
    EXPECT_EQ(copied.phase, Phase::inProgress);
    EXPECT_EQ(copied.bytesDone, quint64(bytes.size()));
    EXPECT_EQ(copied.bytesTotal, copied.bytesDone);
    EXPECT_EQ(copied.currentMode, text("fast-copy"));
    EXPECT_EQ(progress.first().phase, Phase::starting);
    EXPECT_EQ(progress.last().phase, Phase::done);
    EXPECT_FALSE(engine.isRunning());
}

TEST_F(ExportEngineTest, RefusesSourcesThatDifferFromTheirGrantAndDeliversTheOthers) {
    addClip("A", "changed.mov", "before");
    addClip("B", "linked.mov", "linked");
    addClip("C", "good.mov", "good");
    grantAndOpen();
    addClip("D", "ungranted.mov", "ungranted");
    folder.write(footage("changed.mov"), "behind");
    QFile::remove(at("footage/linked.mov"));
    folder.link(footage("linked.mov"), at("footage/good.mov"));
    EXPECT_THAT(errorsOf(run()),
                ElementsAre("export source's folder changed since it was authorized, refusing to "
                            "use it: /footage/changed.mov. Re-import or relink it, then try again.",
                            "export source is not a regular file, refusing to use it: "
                            "/footage/linked.mov",
                            "export source was never imported or relinked for this project, "
                            "refusing to use it: /footage/ungranted.mov. Re-import or relink it, "
                            "then try again."));
    EXPECT_THAT(folder.names("out"), ElementsAre(text("good.mov"), text("manifest-BATCH-1.json")));
}

TEST_F(ExportEngineTest, KeepsTheDestinationIfTheSourceChangesAfterVetting) {
    addClip("A", "a.mp4", "before");
    grantAndOpen();
    files.setObserver([this](const QString &operation, const QString &path) {
        if (operation == QLatin1String("openFileAt") && path == QLatin1String("a.mp4")) {
            folder.write(footage("a.mp4"), "behind"); // vetted by now
        }
    });
    for (const auto &[mode, purpose] :
         {std::pair(ExportBatch::Mode::fastCopy, "use"),
          std::pair(ExportBatch::Mode::accurateTranscode, "transcode")}) {
        choices.mode = mode;
        folder.write(footage("a.mp4"), "before");
        folder.write("out/a.mp4", "older");
        EXPECT_THAT(failure(),
                    StartsWith("a.mp4's contents changed since it was authorized, refusing to " +
                               std::string(purpose)));
        EXPECT_EQ(delivered("a.mp4"), "older");
        expectNoTemporaries();
    }
}

TEST_F(ExportEngineTest, RefusesAllRowsIfOneIsAProxyOrTheFolderIsUnwritable) {
    addClip("A", "a.mov", "a");
    addClip("B", "b.mov", "b").sourcePath =
        folder.write("project/.corvane-cache/proxies/b.mov", "proxy");
    grantAndOpen();
    const ExportBatchResult result = run();
    EXPECT_THAT(result.failed, SizeIs(2));
    EXPECT_EQ(errorsOf(result).at(0),
              "Proxy invariant: Export blocked: /project/.corvane-cache/proxies/b.mov resolves "
              "under .corvane-cache/proxies. Exports must read source bytes, never proxies.");
    EXPECT_EQ(result.manifestError, text("skipped manifest — batch aborted by proxy invariant"));
    EXPECT_FALSE(has("out"));
    project.videos.removeLast();
    choices.outputFolder = folder.write("file", "") + text("/out");
    const ExportBatchResult unwritable = run();
    EXPECT_THAT(errorsOf(unwritable).at(0), StartsWith("create output folder: "));
    EXPECT_EQ(unwritable.manifestError, text("skipped manifest — output folder unwritable"));
}

TEST_F(ExportEngineTest, RefusesSidecarsThatAreNotPlainFilesBesideTheirClip) {
    VideoRecord &clip = addClip("A", "a.mov", "a");
    grantAndOpen();
    const QString secret = folder.write("secret.xml", "secret");
    const auto refusal = [&](const QString &sidecar) {
        clip.sidecarPath = sidecar;
        const std::string error = failure();
        EXPECT_EQ(delivered("a.mov"), "a") << "the clip itself is delivered";
        return error;
    };
    EXPECT_EQ(refusal(secret),
              "sidecar copy: sidecar source escapes containing folder: child=/secret.xml "
              "parent=/footage");
    EXPECT_EQ(refusal(folder.link(footage("link.xml"), secret)),
              "sidecar copy: sidecar source reaches through a symbolic link, refusing to use it: "
              "/footage/link.xml");
    EXPECT_EQ(refusal(at("footage/gone.xml")),
              "sidecar copy: The sidecar source isn't a file, so nothing was copied: "
              "/footage/gone.xml. Nothing was deleted.");
    const QString good = folder.write(footage("a.xml"), "sidecar");
    folder.link("out/a.xml", secret);
    EXPECT_EQ(refusal(good),
              "sidecar copy: sidecar destination reaches through a symbolic link, refusing to use "
              "it: /out/a.xml");
    EXPECT_EQ(folder.read("secret.xml"), "secret");
    QFile::remove(at("out/a.xml"));
    auto rows = planRows(project, choices, true);
    folder.folder("out/a.xml");
    EXPECT_EQ(failure(rows),
              "sidecar copy: Something that isn't a file is already at a.xml. Rename it or pick "
              "another export folder. Nothing was deleted.");
    rows[0].sidecarDestination = at("a.xml");
    EXPECT_THAT(failure(rows),
                StartsWith("sidecar copy: sidecar destination escapes containing folder: "));
    const QString linked = folder.link("linked", at("footage"));
    EXPECT_THROW(SidecarCopier::copySidecar(linked + text("/a.xml"), at("out/b.xml"), {linked, {}},
                                            OpenFolder::at(at("out")), Placing::mustBeFree, {}),
                 PathSafety::Violation);
}

TEST_F(ExportEngineTest, ChoosesTheSessionByKindModeAndOutput) {
    VideoRecord &clip = addClip("A", "a.mov", "a");
    addSubclip(clip, 1, 1.25, 2.25);
    grantAndOpen();
    const media::MediaTimeRange range{{750}, {1350}};
    choices.outputMode = OutputMode::primaryAndHd;
    const ExportBatchResult both = run();
    EXPECT_THAT(errorsOf(both), IsEmpty());
    EXPECT_EQ(delivered("a.mov"), "a");
    EXPECT_EQ(delivered("a_subclip-1.mov"),
              FakeSessions::output(ExportPreset::passthrough, "a", range));
    EXPECT_EQ(delivered("HD/a.mp4"), FakeSessions::output(ExportPreset::hd1920x1080, "a"));
    EXPECT_EQ(delivered("HD/a_subclip-1.mp4"),
              FakeSessions::output(ExportPreset::hd1920x1080, "a", range));
    EXPECT_EQ(both.succeeded.at(0).hdOutputPath, at("out/HD/a.mp4"));
    EXPECT_EQ(hdStatus(), text("succeeded"));
    EXPECT_THAT(sessions.assets, SizeIs(3));
    EXPECT_EQ(QSet<QString>(sessions.assets.cbegin(), sessions.assets.cend()).size(), 1)
        << "one private copy for all outputs of a source";
    choices.mode = ExportBatch::Mode::accurateTranscode;
    choices.outputMode = OutputMode::primaryOnly;
    run();
    EXPECT_EQ(delivered("a.mp4"), FakeSessions::output(ExportPreset::highestQuality, "a"));
    EXPECT_EQ(delivered("a_subclip-1.mp4"),
              FakeSessions::output(ExportPreset::highestQuality, "a", range));
    choices.outputMode = OutputMode::hdOnly;
    const ExportBatchResult hd = run();
    EXPECT_EQ(delivered("a.mp4"), FakeSessions::output(ExportPreset::hd1920x1080, "a"));
    EXPECT_EQ(hd.succeeded.at(0).hdOutputPath, hd.succeeded.at(0).destinationPath);
    EXPECT_EQ(progress.last().currentMode, text("hd"));
    auto rows = planRows(project, choices, true);
    rows[1].outSeconds.reset();
    EXPECT_EQ(failure(rows), "subclip job missing range");
}

TEST_F(ExportEngineTest, AFailedHDCopyLeavesTheRowASuccess) {
    addClip("A", "a.mov", "a");
    grantAndOpen();
    choices.outputMode = OutputMode::primaryAndHd;
    sessions.halfway = [](const QString &) { throw Failure(text("No codec.")); };
    const ExportRowOutcome failed = run().succeeded.at(0);
    EXPECT_EQ(failed.hdError, text("Export failed: No codec."));
    EXPECT_FALSE(failed.hdOutputPath);
    EXPECT_EQ(hdStatus(), text("failed"));
    sessions.halfway = [this](const QString &) { engine.cancelToken()->abort(); };
    EXPECT_EQ(run().succeeded.at(0).hdError, text("Cancelled"));
    cancelDuringRow(0);
    EXPECT_EQ(run().succeeded.at(0).hdError, text("Cancelled")) << "not started";
    EXPECT_EQ(hdStatus(), text("cancelled"));
    folder.write(footage("a.mov"), "changed");
    run();
    EXPECT_EQ(hdStatus(), text("not-attempted"));
    EXPECT_THAT(folder.names("out/HD"), IsEmpty());
}

TEST_F(ExportEngineTest, AFirstCancelFinishesTheCurrentFile) {
    addClip("A", "a.mov", "a");
    addSidecar(addClip("B", "b.mov", "b"), "b.xml", "sidecar");
    addClip("C", "c.mov", "c");
    grantAndOpen();
    cancelDuringRow(0);
    const ExportBatchResult first = run();
    EXPECT_THAT(first.succeeded, SizeIs(1));
    EXPECT_THAT(errorsOf(first), ElementsAre("Cancelled", "Cancelled"));
    EXPECT_EQ(first.cancelledCount, 2);
    EXPECT_TRUE(first.cancelled);
    EXPECT_TRUE(first.manifestSidecarPath);
    EXPECT_FALSE(has("out/b.mov"));
    cancelDuringRow(1);
    EXPECT_EQ(errorsOf(run()).at(0), "Cancelled (sidecar skipped)");
    EXPECT_EQ(delivered("b.mov"), "b");
    EXPECT_FALSE(has("out/b.xml"));
    cancelDuringRow(2);
    EXPECT_FALSE(run().cancelled) << "the last row finishes";
}

TEST_F(ExportEngineTest, ASecondCancelAbortsTheCurrentFileAndLeavesNoTemporary) {
    addClip("A", "a.mov", noise(qsizetype(5) << 20));
    addClip("B", "b.mov", "b");
    folder.write("out/a.mov", "older");
    grantAndOpen();
    int written = 0;
    files.setObserver([&](const QString &operation, const QString &) {
        if (operation == QLatin1String("write") && ++written == 2) {
            engine.requestCancel();
            engine.requestCancel();
        }
    });
    const ExportBatchResult result = run();
    files.setObserver({});
    EXPECT_THAT(errorsOf(result), ElementsAre("Cancelled", "Cancelled"));
    EXPECT_EQ(result.cancelledCount, 2);
    EXPECT_EQ(delivered("a.mov"), "older");
    expectNoTemporaries();
}

TEST_F(ExportEngineTest, LeavesOnlyCompleteFilesAfterAnyFailedOperation) {
    const QByteArray bytes = noise((qsizetype(1) << 20) + 17);
    addSidecar(addClip("A", "a.mov", bytes), "a.xml", "new");
    grantAndOpen();
    choices.outputMode = OutputMode::primaryAndHd;
    const QByteArray hd = FakeSessions::output(ExportPreset::hd1920x1080, bytes);
    const auto rows = planRows(project, choices, true);
    const ExportBatchInput batch = input();
    int calls = 1;
    int failedRuns = 0;
    for (int failing = 0; failing <= calls; ++failing) {
        for (const char *name : {"out/a.mov", "out/a.xml", "out/HD/a.mp4"}) {
            folder.write(name, "older");
        }
        QFile::remove(at("out/manifest-BATCH-1.json"));
        files.failAt(failing, EIO);
        const ExportBatchResult result = await(engine.run(
            batch, rows, [](const ExportProgress &) {}, std::make_shared<CancelToken>()));
        calls = failing == 0 ? files.calls() : calls;
        files.failAt(0, 0);
        EXPECT_THAT(delivered("a.mov"), testing::AnyOf(bytes, "older")) << failing;
        EXPECT_THAT(delivered("a.xml"), testing::AnyOf("new", "older")) << failing;
        EXPECT_THAT(delivered("HD/a.mp4"), testing::AnyOf(hd, "older")) << failing;
        expectNoTemporaries();
        const QByteArray manifest = delivered("manifest-BATCH-1.json");
        EXPECT_TRUE(manifest.isEmpty() || manifest.endsWith("}")) << failing;
        EXPECT_EQ(result.succeeded.size() + result.failed.size(), 1);
        if (!result.succeeded.isEmpty()) {
            EXPECT_EQ(delivered("a.mov"), bytes) << failing;
            EXPECT_EQ(delivered("a.xml"), "new") << failing;
            EXPECT_TRUE(!result.succeeded.at(0).hdOutputPath || delivered("HD/a.mp4") == hd);
        }
        failedRuns +=
            !result.failed.isEmpty() || result.manifestError || result.succeeded.at(0).hdError;
    }
    EXPECT_GT(failedRuns, calls / 2) << "most injected failures are reported";
}

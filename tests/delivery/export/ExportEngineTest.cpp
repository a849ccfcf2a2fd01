#include "delivery/export/ExportFixture.h"

#include "delivery/export/ExportEngine.h"
#include "transfer/SidecarCopier.h"
#include "trust/PathSafety.h"

#include <cerrno>

using namespace corvane;
using namespace corvane::test;
using media::ExportPreset;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using Phase = ExportProgress::Phase;

namespace {

class ExportEngineTest : public ExportTest {
  protected:
    ExportBatchInput input() {
        return {.batchId = text("BATCH-1"),
                .outputFolder = *choices.outputFolder,
                .mode = choices.mode,
                .outputMode = choices.outputMode,
                .completedAt = clock.now(),
                .namingOptions = choices.naming,
                .projectFolder = projectFolder(projectFile),
                .authorizedSourcePaths = await(authorization.authorizedPaths(projectFile))};
    }
    ExportBatchResult run(QList<ExportRowJob> rows) {
        return await(engine.run(input(), std::move(rows), [this](const ExportProgress &told) {
            progress.append(told);
            onProgress(told);
        }));
    }
    ExportBatchResult run() { return run(planRows(project, choices, true)); }
    /// Returns the text of the only failure.
    QString failure() {
        const ExportBatchResult result = run();
        EXPECT_THAT(result.failed, SizeIs(1));
        return result.failed.isEmpty() ? QString() : result.failed.first().error;
    }
    /// Returns the manifest's HD status of the first row.
    QString hdStatus() const {
        const QByteArray manifest = delivered("manifest-BATCH-1.json");
        const JSONValue value = JSONDocument::parse(manifest).root().toValue();
        const JSONValue::Array rows = *value.object()->value(text("rows")).array();
        const JSONValue::Object row = *rows.first().object();
        EXPECT_EQ(row.value(text("hdDestinationPath")), JSONValue(at("out/HD/a.mp4")));
        const JSONValue status = row.value(text("hdStatus"));
        return status.string() ? *status.string() : QString();
    }
    /// Requests cancellation once the row has started.
    void cancelDuringRow(int index) {
        onProgress = [this, index](const ExportProgress &told) {
            const bool isAsked = engine.cancelToken()->isRequested();
            if (told.index == index && told.phase == Phase::inProgress && !isAsked) {
                engine.requestCancel();
            }
        };
    }

    ExportEngine engine{sessions, clock};
    QList<ExportProgress> progress;
    std::function<void(const ExportProgress &)> onProgress = [](const ExportProgress &) {};
};

QStringList errorsOf(const ExportBatchResult &result) {
    QStringList errors;
    for (const ExportRowFailure &row : result.failed) {
        errors.append(row.error);
    }
    return errors;
}

} // namespace

TEST_F(ExportEngineTest, DeliversClipsWithTheirSidecarsAndAManifest) {
    const QByteArray bytes = noise(100'000);
    addSidecar(addClip("A", "a.mov", bytes), "a.xml", "new");
    addClip("B", "b.mov", "b");
    folder.write(text("out/a.mov"), "older");
    folder.write(text("out/a.xml"), "older");
    grantAndOpen();
    const ExportBatchResult result = run();
    EXPECT_THAT(errorsOf(result), IsEmpty());
    EXPECT_THAT(result.succeeded, SizeIs(2));
    EXPECT_FALSE(result.cancelled);
    EXPECT_EQ(delivered("a.mov"), bytes);
    EXPECT_EQ(delivered("a.xml"), "new");
    EXPECT_EQ(delivered("b.mov"), "b");
    EXPECT_EQ(result.manifestSidecarPath, at("out/manifest-BATCH-1.json"));
    EXPECT_THAT(folder.names(text("out")), SizeIs(4)) << "nothing but what was asked for";
    const ExportProgress &copied = progress.at(progress.size() / 2 - 2);
    EXPECT_EQ(copied.phase, Phase::inProgress);
    EXPECT_EQ(copied.bytesDone, quint64(bytes.size()));
    EXPECT_EQ(copied.bytesTotal, copied.bytesDone);
    EXPECT_EQ(copied.currentMode, text("fast-copy"));
    EXPECT_EQ(progress.first().phase, Phase::starting);
    EXPECT_EQ(progress.last().phase, Phase::done);
    EXPECT_FALSE(engine.isRunning());
}

TEST_F(ExportEngineTest, RefusesWhatIsNotAsItWasGrantedAndDeliversTheRest) {
    addClip("A", "changed.mov", "before");
    addClip("B", "linked.mov", "linked");
    addClip("C", "good.mov", "good");
    grantAndOpen();
    addClip("D", "ungranted.mov", "ungranted");
    folder.write(footage("changed.mov"), "behind");
    QFile::remove(at("footage/linked.mov"));
    folder.link(footage("linked.mov"), at("footage/good.mov"));
    const ExportBatchResult result = run();
    const QString behind = text(". Re-import or relink it, then try again.");
    EXPECT_THAT(
        errorsOf(result),
        ElementsAre(text("export source's folder changed since it was authorized, refusing to "
                         "use it: ") +
                        at("footage/changed.mov") + behind,
                    text("export source is not a regular file, refusing to use it: ") +
                        at("footage/linked.mov"),
                    text("export source was never imported or relinked for this project, "
                         "refusing to use it: ") +
                        at("footage/ungranted.mov") + behind));
    EXPECT_THAT(folder.names(text("out")),
                ElementsAre(text("good.mov"), text("manifest-BATCH-1.json")));
}

TEST_F(ExportEngineTest, DeliversNothingOfASourceThatChangedSinceItWasVetted) {
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
        folder.write(text("out/a.mp4"), "older");
        EXPECT_TRUE(failure().startsWith(
            text("a.mp4's contents changed since it was authorized, refusing to ") +
            text(purpose)));
        EXPECT_EQ(delivered("a.mp4"), "older");
        expectNoTemporaries();
    }
}

TEST_F(ExportEngineTest, RefusesAllRowsForAProxyAmongThemOrWithoutAnOutputFolder) {
    addClip("A", "a.mov", "a");
    addClip("B", "b.mov", "b").sourcePath =
        folder.write(text("project/.corvane-cache/proxies/b.mov"), "proxy");
    grantAndOpen();
    const ExportBatchResult result = run();
    EXPECT_THAT(result.failed, SizeIs(2));
    EXPECT_EQ(result.failed.first().error,
              text("Proxy invariant: Export blocked: %1 resolves under "
                   ".corvane-cache/proxies. Exports must read source bytes, never proxies.")
                  .arg(at("project/.corvane-cache/proxies/b.mov")));
    EXPECT_EQ(result.manifestError, text("skipped manifest — batch aborted by proxy invariant"));
    EXPECT_FALSE(has("out"));
    project.videos.removeLast();
    choices.outputFolder = folder.write(text("file"), "") + text("/out");
    const ExportBatchResult nowhere = run();
    EXPECT_TRUE(nowhere.failed.at(0).error.startsWith(text("create output folder: ")));
    EXPECT_EQ(nowhere.manifestError, text("skipped manifest — output folder unwritable"));
}

TEST_F(ExportEngineTest, WritesNowhereButInsideTheOutputFolder) {
    addClip("A", "a.mov", "a");
    grantAndOpen();
    ExportRowJob row = planRows(project, choices, true).at(0);
    row.destinationPath = at("out/../out");
    EXPECT_EQ(run({row}).failed.at(0).error,
              text("export destination escapes containing folder: child=%1 parent=%1")
                  .arg(*choices.outputFolder));

    folder.link(text("out/a.mov"), folder.write(text("elsewhere/a.mov"), "kept"));
    EXPECT_TRUE(failure().startsWith(text("Something that isn't a file is already at")));
    EXPECT_EQ(folder.read(text("elsewhere/a.mov")), "kept");

    choices.outputMode = OutputMode::primaryAndHd;
    folder.link(text("out/HD"), at("elsewhere"));
    EXPECT_EQ(failure(), text("HD export destination reaches through a symbolic link, "
                              "refusing to use it: ") +
                             at("out/HD/a.mp4"));

    choices.outputMode = OutputMode::primaryOnly;
    choices.outputFolder = folder.link(text("linked"), at("footage"));
    EXPECT_EQ(failure(),
              text("a.mov belongs to the media of this project, refusing to replace it: %1. Pick "
                   "another export folder, then run the export again.")
                  .arg(at("linked/a.mov")));
    EXPECT_EQ(folder.read(footage("a.mov")), "a");
}

TEST_F(ExportEngineTest, AnExportBesideTheMediaReplacesNoSidecarOfAnotherClip) {
    addSidecar(addClip("A", "a.mov", "a"), "a.xml", "of a");
    addSidecar(addClip("B", "b.mov", "b"), "b.xml", "of b");
    grantAndOpen();
    choices.outputFolder = at("footage");
    choices.mode = ExportBatch::Mode::accurateTranscode;
    auto rows = planRows(project, choices, true);
    EXPECT_THAT(run(rows).succeeded, SizeIs(2)) << "their own sidecars are where they should be";
    rows[1].sidecarDestination = rows[0].sidecarSource;
    EXPECT_THAT(run(rows).failed, SizeIs(1));
    EXPECT_EQ(folder.read(footage("a.xml")), "of a");
}

TEST_F(ExportEngineTest, RefusesSidecarsThatAreNotPlainFilesBesideTheirClip) {
    VideoRecord &clip = addClip("A", "a.mov", "a");
    grantAndOpen();
    const QString secret = folder.write(text("secret.xml"), "secret");
    const auto refusal = [&](const QString &sidecar) {
        clip.sidecarPath = sidecar;
        const QString error = failure();
        EXPECT_EQ(delivered("a.mov"), "a") << "the clip itself stays";
        return error;
    };
    EXPECT_EQ(refusal(secret),
              text("sidecar copy: sidecar source escapes containing folder: child=%1 parent=%2")
                  .arg(secret, at("footage")));
    EXPECT_EQ(refusal(folder.link(footage("link.xml"), secret)),
              text("sidecar copy: sidecar source reaches through a symbolic link, refusing to "
                   "use it: ") +
                  at("footage/link.xml"));
    EXPECT_EQ(refusal(at("footage/gone.xml")),
              text("sidecar copy: The sidecar source isn't a file, so nothing was copied: %1. "
                   "Nothing was deleted.")
                  .arg(at("footage/gone.xml")));
    const QString good = folder.write(footage("a.xml"), "sidecar");
    folder.link(text("out/a.xml"), secret);
    EXPECT_EQ(refusal(good),
              text("sidecar copy: sidecar destination reaches through a symbolic link, "
                   "refusing to use it: ") +
                  at("out/a.xml"));
    EXPECT_EQ(folder.read(text("secret.xml")), "secret");
    QFile::remove(at("out/a.xml"));
    auto rows = planRows(project, choices, true);
    folder.folder(text("out/a.xml"));
    EXPECT_EQ(run(rows).failed.at(0).error,
              text("sidecar copy: Something that isn't a file is already at a.xml. Rename it or "
                   "pick another export folder. Nothing was deleted."));
    rows[0].sidecarDestination = at("a.xml");
    EXPECT_TRUE(run(rows).failed.at(0).error.startsWith(
        text("sidecar copy: sidecar destination escapes containing folder: ")));
    const QString linked = folder.link(text("linked"), at("footage"));
    EXPECT_THROW(SidecarCopier::copySidecar(linked + text("/a.xml"), at("out/b.xml"),
                                            linked + text("/a.mov"), at("out"), {}),
                 PathSafety::Violation);
}

TEST_F(ExportEngineTest, ChoosesTheSessionByKindModeAndOutput) {
    VideoRecord &clip = addClip("A", "a.mov", "a");
    clip.subclips.append(sampleSubclip(text("s"), clip.id, 1));
    clip.subclips[0].selectedForExport = true;
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
    EXPECT_EQ(sessions.assets.filter(at("tmp/cv-transcode-src.")), sessions.assets);
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
    EXPECT_EQ(errorsOf(run(rows)), QStringList{text("subclip job missing range")});
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
    sessions.halfway = [this](const QString &) { engine.abort(); };
    EXPECT_EQ(run().succeeded.at(0).hdError, text("Cancelled"));
    cancelDuringRow(0);
    EXPECT_EQ(run().succeeded.at(0).hdError, text("Cancelled")) << "never begun";
    EXPECT_EQ(hdStatus(), text("cancelled"));
    folder.write(footage("a.mov"), "changed");
    run();
    EXPECT_EQ(hdStatus(), text("not-attempted"));
    EXPECT_THAT(folder.names(text("out/HD")), IsEmpty());
}

TEST_F(ExportEngineTest, AFirstCancelFinishesTheFileInHand) {
    addClip("A", "a.mov", "a");
    addSidecar(addClip("B", "b.mov", "b"), "b.xml", "sidecar");
    addClip("C", "c.mov", "c");
    grantAndOpen();
    cancelDuringRow(0);
    const ExportBatchResult first = run();
    EXPECT_THAT(first.succeeded, SizeIs(1));
    EXPECT_THAT(errorsOf(first), ElementsAre(text("Cancelled"), text("Cancelled")));
    EXPECT_EQ(first.cancelledCount, 2);
    EXPECT_TRUE(first.cancelled);
    EXPECT_TRUE(first.manifestSidecarPath);
    EXPECT_FALSE(has("out/b.mov"));
    cancelDuringRow(1);
    EXPECT_EQ(errorsOf(run()).at(0), text("Cancelled (sidecar skipped)"));
    EXPECT_EQ(delivered("b.mov"), "b");
    EXPECT_FALSE(has("out/b.xml"));
    cancelDuringRow(2);
    EXPECT_FALSE(run().cancelled) << "the last row finishes";
}

TEST_F(ExportEngineTest, ASecondCancelAbortsTheFileInHandAndLeavesNothingOfIt) {
    addClip("A", "a.mov", noise(qsizetype(5) << 20));
    addClip("B", "b.mov", "b");
    folder.write(text("out/a.mov"), "older");
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
    EXPECT_THAT(errorsOf(result), ElementsAre(text("Cancelled"), text("Cancelled")));
    EXPECT_EQ(result.cancelledCount, 2);
    EXPECT_EQ(delivered("a.mov"), "older");
    expectNoTemporaries();
}

TEST_F(ExportEngineTest, WhateverFailsFilesAreWholeAndNothingIsLeftBehind) {
    const QByteArray bytes = noise((qsizetype(1) << 20) + 17);
    addSidecar(addClip("A", "a.mov", bytes), "a.xml", "new");
    grantAndOpen();
    choices.outputMode = OutputMode::primaryAndHd;
    const QByteArray hd = FakeSessions::output(ExportPreset::hd1920x1080, bytes);
    const auto rows = planRows(project, choices, true);
    const ExportBatchInput given = input();
    int calls = 1;
    int failedRuns = 0;
    for (int failing = 0; failing <= calls; ++failing) {
        for (const char *name : {"out/a.mov", "out/a.xml", "out/HD/a.mp4"}) {
            folder.write(QString::fromLatin1(name), "older");
        }
        QFile::remove(at("out/manifest-BATCH-1.json"));
        files.failAt(failing, EIO);
        const ExportBatchResult result =
            await(engine.run(given, rows, [](const ExportProgress &) {}));
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
    EXPECT_GT(failedRuns, calls / 2) << "the failures were met at all";
}

#include "delivery/export/ExportEngineFixture.h"

#include <QTemporaryDir>

using namespace corvane;
using namespace corvane::test;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

namespace {

class ExportDestinationTest : public ExportEngineTest {};

} // namespace

TEST_F(ExportDestinationTest, RefusesDestinationsThatLeaveTheOutputFolderOrReplaceMedia) {
    addClip("A", "a.mov", "a");
    grantAndOpen();
    ExportRowJob row = planRows(project, choices, true).at(0);
    row.destinationPath = at("out/../out");
    EXPECT_EQ(failure({row}),
              "export destination escapes containing folder: child=/out parent=/out");

    folder.link("out/a.mov", folder.write("elsewhere/a.mov", "kept"));
    EXPECT_THAT(failure(), StartsWith("Something that isn't a file is already at"));
    EXPECT_EQ(folder.read("elsewhere/a.mov"), "kept");

    choices.outputMode = OutputMode::primaryAndHd;
    folder.link("out/HD", at("elsewhere"));
    EXPECT_EQ(failure(), "HD export destination reaches through a symbolic link, refusing to use "
                         "it: /out/HD/a.mp4");

    choices.outputMode = OutputMode::primaryOnly;
    choices.outputFolder = folder.link("linked", at("footage"));
    EXPECT_EQ(failure(), "a.mov belongs to the media of this project, refusing to replace it: "
                         "/linked/a.mov. Pick another export folder, then run the export again.");
    EXPECT_EQ(folder.read(footage("a.mov")), "a");
}

TEST_F(ExportDestinationTest, NeverReplacesTheSidecarOfAnotherClip) {
    addSidecar(addClip("A", "a.mov", "a"), "a.xml", "of a");
    addSidecar(addClip("B", "b.mov", "b"), "b.xml", "of b");
    grantAndOpen();
    choices.outputFolder = at("footage");
    choices.mode = ExportBatch::Mode::accurateTranscode;
    auto rows = planRows(project, choices, true);
    EXPECT_THAT(run(rows).succeeded, SizeIs(2)) << "each sidecar is already at its destination";
    rows[1].sidecarDestination = rows[0].sidecarSource;
    EXPECT_THAT(run(rows).failed, SizeIs(1));
    EXPECT_EQ(folder.read(footage("a.xml")), "of a");
}

TEST_F(ExportDestinationTest, WritesNothingToAFolderThatTookThePlaceOfTheOutputFolder) {
    addSidecar(addClip("A", "a.mov", "a"), "a.xml", "sidecar");
    addClip("B", "b.mov", "b");
    grantAndOpen();
    choices.outputMode = OutputMode::primaryAndHd;
    const auto rows = planRows(project, choices, true);
    const ExportBatchInput batch = input();
    int lostRuns = 0;
    swapDestinationDuring(
        at("out"), at("out"), 1,
        [&] {
            return await(engine.run(
                batch, rows, [](const ExportProgress &) {}, std::make_shared<CancelToken>()));
        },
        [&](const ExportBatchResult &result) {
            for (const ExportRowOutcome &row : result.succeeded) {
                const QString name = row.destinationPath.mid(at("out").size());
                EXPECT_TRUE(has(text("out.away") + name)) << "delivered before";
            }
            EXPECT_TRUE(result.manifestError || has("out.away/manifest-BATCH-1.json"));
            if (result.succeeded.isEmpty()) {
                EXPECT_EQ(errorsOf(result).at(1), lostText(at("out")));
                ++lostRuns;
            }
        });
    EXPECT_GT(lostRuns, 10);
}

TEST_F(ExportDestinationTest, DeliversNothingFromAFolderThatTookThePlaceOfTheSources) {
    addSidecar(addClip("A", "a.mov", "a"), "a.xml", "sidecar");
    grantAndOpen();
    const auto rows = planRows(project, choices, true);
    const ExportBatchInput batch = input();
    for (int call = 1; !has("footage/other"); ++call) {
        for (const char *name : {"a.mov", "a.xml"}) {
            folder.write(text("other/") + text(name), "foreign");
        }
        folder.write("other/other", "");
        QDir(at("out")).removeRecursively();
        files.swapAt(call, at("footage"), at("other"));
        const ExportBatchResult result = await(engine.run(
            batch, rows, [](const ExportProgress &) {}, std::make_shared<CancelToken>()));
        files.failAt(0, 0);
        const bool isSwapped = has("footage/other");
        for (const QString &name : folder.names("out")) {
            EXPECT_NE(folder.read(text("out/") + name), "foreign") << call;
        }
        EXPECT_TRUE(result.succeeded.isEmpty() || delivered("a.xml") == "sidecar") << call;
        if (!isSwapped) {
            break;
        }
        QDir(at("footage")).removeRecursively();
        ASSERT_TRUE(QDir().rename(at("footage.away"), at("footage")));
    }
}

TEST_F(ExportDestinationTest, RefusesARunWhosePrivateCopiesDoNotFit) {
    const QTemporaryDir card(text("/dev/shm/card"));
    VideoRecord &clip = addClip("A", "a.mov", "");
    clip.sourcePath = card.filePath(text("a.mov"));
    QFile file(clip.sourcePath);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.resize(70'000));
    grantAndOpen();
    files.setFreeSpace(60'000);
    choices.mode = ExportBatch::Mode::accurateTranscode;
    EXPECT_EQ(failure(), "There isn't enough room in /out: encoding a.mov needs a private copy of "
                         "70.0 kB there, and 60.0 kB are free. No file was written. Make room or "
                         "pick another export folder, then run the export again.");
    EXPECT_THAT(folder.names("out"), IsEmpty());
}

TEST_F(ExportDestinationTest, RemovesOldTemporaryFilesOfKilledRuns) {
    addClip("A", "a.mov", "a");
    grantAndOpen();
    choices.outputMode = OutputMode::primaryAndHd;
    const QString identifier = text(".77.8D7C8C0E-2B6C-4F52-9A35-0D9C6A1F1B11.");
    const QStringList ours{text("out/.tmp") + identifier + text("mov"),
                           text("out/HD/.cv-transcode-src") + identifier + text("mov"),
                           text("tmp/cv-transcode-src") + identifier + text("mov")};
    const QStringList others{text("out/.tmp") + identifier.toLower() + text("mov"),
                             text("out/.tmp.notes"), text("out/cv-transcode-src.1.mov")};
    const QString fresh = ours.first() + text(".new");
    for (const QString &name : ours + others + QStringList{fresh}) {
        QFile file(folder.write(name, ""));
        ASSERT_TRUE(file.open(QIODevice::ReadWrite));
        const auto age = std::chrono::hours(name == fresh ? 23 : 25);
        ASSERT_TRUE(file.setFileTime(clock.now().addMSecs(-std::chrono::milliseconds(age).count()),
                                     QFileDevice::FileModificationTime));
    }
    EXPECT_THAT(errorsOf(run()), IsEmpty());
    for (const QString &name : ours) {
        EXPECT_FALSE(has(name)) << name.toStdString();
    }
    for (const QString &name : others + QStringList{fresh}) {
        EXPECT_TRUE(has(name)) << name.toStdString();
    }
}

#include "CliTest.h"
#include "support/FaultyFileSystem.h"
#include "support/TestMedia.h"

#include <QDir>
#include <QFile>

#include <atomic>
#include <cerrno>
#include <csignal>

namespace corvane {

namespace {

using test::CliTest;
using test::noise;
using testing::HasSubstr;

class DeliveryCommands : public CliTest {};

/// Sends SIGINT at the first operation on a path with this suffix.
void interruptAt(test::FaultyFileSystem &files, const QString &suffix) {
    const auto isDone = std::make_shared<std::atomic<bool>>(false);
    files.setObserver([suffix, isDone](const QString &, const QString &path) {
        if (path.endsWith(suffix) && !isDone->exchange(true)) {
            ::raise(SIGINT);
        }
    });
}

} // namespace

TEST_F(DeliveryCommands, ScanListsMediaWithSidecarsAndReportsSkippedFiles) {
    const QString clip = folder.write("card/A/C0001.MP4", noise(100));
    const QString sidecar = folder.write("card/A/C0001M01.XML", "<x/>");
    folder.write("card/plain.mov", "");
    folder.write("card/notes.txt", "text");

    EXPECT_EQ(list(json("scan @card"), "videos").size(), 1);
    const JSONValue::Array videos = list(json("scan @card --recursive"), "videos");
    ASSERT_EQ(videos.size(), 2);
    const JSONValue::Object first = *videos.first().object();
    expectMembers(first, R"({"fileSizeBytes": 100, "sidecarType": "xml"})");
    EXPECT_EQ(text(first, "path"), clip);
    EXPECT_EQ(text(first, "sidecarPath"), sidecar);
    EXPECT_EQ(text(first, "contentHash").size(), 64);
    EXPECT_TRUE(videos.last().object()->value(QStringLiteral("sidecarPath")).isNull());

    EXPECT_EQ(run("scan @card"), kAllDone);
    EXPECT_TRUE(console.output.endsWith("Left out: 1 file that isn't a video or audio file\n"))
        << console.output.data();
    EXPECT_EQ(run("scan @card @missing"), kRefused);
    EXPECT_THAT(console.error.toStdString(), HasSubstr("missing: No such file or directory"));
}

TEST_F(DeliveryCommands, NamesAFolderThatCannotBeListedAndExitsWithOne) {
    class BrokenFolder : public SystemFileSystem {
        QList<DirectoryEntry> list(const QString &path) const override {
            return path.endsWith(QStringLiteral("/broken")) ? throw FileError(path, EIO)
                                                            : SystemFileSystem::list(path);
        }
    } files;
    const FileSystemScope scope(files);
    createWithClips(1);
    folder.write("more/a.mov", noise(100, 7));
    folder.write("more/broken/b.mov", noise(100, 8));
    for (const auto *command :
         {"scan @more --recursive", "import P @more --recursive", "import P @more/broken"}) {
        EXPECT_EQ(run(command), kRefused) << command;
        EXPECT_THAT(console.error.toStdString(),
                    HasSubstr("/more/broken: It can't be read: Input/output error."));
    }
    EXPECT_EQ(list(json("info P"), "videos").size(), 2);
}

TEST_F(DeliveryCommands, ImportsNewFilesInPlaceOrByCopyAndReportsFailures) {
    createWithClips(2);
    EXPECT_EQ(column(list(json("info P"), "videos"), "sourcePath").first(),
              folder.at("card/clip1.mp4"));
    folder.write("other/clip3.mp4", noise(10, 3));
    folder.write("other/clip3.xml", "<x/>");
    folder.write("other/same.mp4", noise(5000, 1));

    const auto imported = json("import P @other --copy");
    expectMembers(imported, R"({"succeeded": 1, "skipped": 1, "sidecarsImported": 1})");
    EXPECT_EQ(list(imported, "videos").first(),
              JSONValue(text(list(json("info P"), "videos").last(), "id")));
    EXPECT_EQ(folder.read("p/media/clip3.mp4"), noise(10, 3));
    EXPECT_TRUE(folder.has("p/media/clip3.xml"));

    expectMembers(json("import P @card @other --copy --to @elsewhere"),
                  R"({"succeeded": 0, "skipped": 4})");
    EXPECT_FALSE(folder.has("elsewhere"));

    folder.write("other/clip4.mp4", noise(10, 4));
    const auto failed = json("import P @other --copy --to @other/clip3.mp4", kRefused);
    expectMembers(failed, R"({"succeeded": 0, "skipped": 2, "failed": 1})");
    EXPECT_FALSE(text(list(failed, "failures").first(), "message").isEmpty());
    EXPECT_THAT(console.error.toStdString(), HasSubstr("clip3.mp4: "));
}

TEST_F(DeliveryCommands, PreviewsAnExportAndThenDelivers) {
    createWithClips(3);
    ASSERT_EQ(run("mark P clip1.mp4 clip3.mp4 --select on"), kAllDone);
    const auto preview =
        json("export P --preview --to @out --naming custom --custom baseName=Gulls "
             "--custom keepOriginalForWholeVideos=off "
             "--custom includeOriginalFilename=off --custom numberingMode=sequential");
    EXPECT_THAT(
        column(list(preview, "rows"), "proposedName"),
        testing::ElementsAre(QStringLiteral("Gulls_001.mp4"), QStringLiteral("Gulls_002.mp4")));
    EXPECT_FALSE(folder.has("out"));

    console.isTerminal = true;
    const auto result = json("export P --to @out");
    EXPECT_TRUE(console.error.contains("[")) << "a progress bar";
    EXPECT_TRUE(console.error.endsWith("\r\x1b[K")) << "the bar is erased";
    expectMembers(result, R"({"succeededCount": 2, "manifestError": null})");
    EXPECT_EQ(folder.read("out/clip3.mp4"), noise(5000, 3));
    JSONValue::Object manifest = result;
    manifest.remove(QStringLiteral("manifestPath"));
    manifest.remove(QStringLiteral("manifestError"));
    const QString written = text(result, "manifestPath").mid(folder.path().size() + 1);
    EXPECT_EQ(parse(folder.read(written)), manifest);

    expectMembers(json("export P --to @out"), R"({"succeededCount": 0, "manifestPath": null})");
    EXPECT_EQ(list(json("info P"), "exportBatches").size(), 1);
}

TEST_F(DeliveryCommands, OptionsDetermineThePlannedRows) {
    folder.write("card/old.mov", noise(10));
    createWithClips(1);
    ASSERT_EQ(run("mark P old.mov --select on"), kAllDone);
    ASSERT_EQ(run("export P"), kAllDone);
    ASSERT_EQ(run("mark P clip1.mp4 --select on"), kAllDone);
    ASSERT_EQ(run("subclip P clip1.mp4 1 2 --label Pan"), kAllDone);
    const std::pair<const char *, const char *> table[] = {
        {"", "clip1.mp4 clip1_Pan.mp4"},
        {"--no-clips", "clip1_Pan.mp4"},
        {"--all", "clip1.mp4 clip1_Pan.mp4 old.mov"},
        {"--all --no-subclips", "clip1.mp4 old.mov"},
        {"--all --output primary-and-hd", "clip1.mp4 clip1_Pan.mp4 old.mov"},
        {"--all --no-subclips --output hd-only", "clip1.mp4 old.mp4"},
        {"--all --no-subclips --mode accurate-transcode", "clip1.mp4 old.mp4"},
    };
    for (const auto &[options, names] : table) {
        const auto preview = json(("export P --preview " + QByteArray(options)).constData());
        QStringList planned = column(list(preview, "rows"), "proposedName");
        planned.sort(); // rows are sorted by clip ids, which are random
        EXPECT_EQ(planned.join(QLatin1Char(' ')).toStdString(), names) << options;
        EXPECT_TRUE(console.error.isEmpty()) << options;
    }
    expectMembers(json("export P --no-clips --handles 2.5", kRefused),
                  R"({"failedCount": 1, "subclipHandleSeconds": 2.5})");
}

TEST_F(DeliveryCommands, EncodesSubclips) {
    createWithClips(1);
    folder.folder("shoot");
    test::makeClip(folder.at("shoot/take.mov"), {.frames = 100, .bFrames = 2, .audioTracks = 1});
    ASSERT_EQ(run("import P @shoot"), kAllDone);
    ASSERT_EQ(run("subclip P take.mov 1 2 --label Pan"), kAllDone);
    expectMembers(json("export P --to @a --output primary-and-hd --handles 0.5"),
                  R"({"succeededCount": 1})");
    for (const char *const output : {"a/take_Pan.mov", "a/HD/take_Pan.mp4"}) {
        EXPECT_TRUE(folder.read(output).mid(4).startsWith("ftyp")) << output;
    }
}

TEST_F(DeliveryCommands, ReportsAMissingManifestAndAChangedFile) {
    createWithClips(2);
    ASSERT_EQ(run("mark P clip1.mp4 --select on"), kAllDone);
    {
        test::FaultyFileSystem files;
        const FileSystemScope scope(files);
        files.setObserver([](const QString &, const QString &path) {
            if (path.contains(QLatin1String("/manifest-"))) {
                throw FileError(path, ENOSPC);
            }
        });
        const auto result = json("export P --to @a", kRefused);
        expectMembers(result, R"({"succeededCount": 1, "failedCount": 0})");
        EXPECT_THAT(text(result, "manifestError").toStdString(),
                    HasSubstr("No space left on device"));
        EXPECT_THAT(console.error.toStdString(), HasSubstr("manifest write: "));
    }
    ASSERT_EQ(run("mark P clip2.mp4 --select on"), kAllDone);
    folder.write("card/clip2.mp4", noise(5000, 9));
    expectMembers(json("export P --all --to @out", kRefused),
                  R"({"succeededCount": 1, "failedCount": 1, "manifestError": null})");
    EXPECT_THAT(console.error.toStdString(), HasSubstr("clip2.mp4: "));
    EXPECT_TRUE(folder.has("out/clip1.mp4"));
    EXPECT_FALSE(folder.has("out/clip2.mp4"));
}

TEST_F(DeliveryCommands, InterruptedRunsKeepTheirResults) {
    constexpr int kFiles = 40;
    createWithClips(1);
    for (int index = 0; index < kFiles; ++index) {
        folder.write(QStringLiteral("many/m%1.mp4").arg(index, 2, 10, QLatin1Char('0')),
                     noise(300, quint32(100 + index)));
    }
    test::FaultyFileSystem files;
    const FileSystemScope scope(files);
    interruptAt(files, QStringLiteral("media"));
    const auto imported = json("import P @many --copy", kRefused);
    const qsizetype count = list(imported, "videos").size();
    EXPECT_LT(count, kFiles);
    EXPECT_EQ(imported.value(QStringLiteral("succeeded")), JSONValue(count));
    EXPECT_EQ(json("info P").value(QStringLiteral("clips")), JSONValue(count + 1));
    EXPECT_TRUE(folder.temporaries().isEmpty());

    ASSERT_EQ(run("import P @many"), kAllDone);
    ASSERT_EQ(run("mark P clip1.mp4 m30.mp4 m31.mp4 m32.mp4 m33.mp4 --select on"), kAllDone);
    interruptAt(files, QStringLiteral("out"));
    const auto exported = json("export P --to @out", kRefused);
    expectMembers(exported, R"({"cancelled": true})");
    EXPECT_EQ(list(exported, "rows").size(), 5);
    EXPECT_FALSE(text(exported, "manifestPath").isEmpty());

    folder.folder("packages");
    interruptAt(files, QStringLiteral("packages/Show/media"));
    const auto handoff = json("handoff P --to @packages --name Show", kRefused);
    expectMembers(handoff, R"({"cancelled": true})");
    EXPECT_GT(list(handoff, "failures").size(), 0);
    const auto package = json("info @packages/Show/Show.corvane");
    EXPECT_EQ(package.value(QStringLiteral("clips")), handoff.value(QStringLiteral("succeeded")));
    EXPECT_TRUE(text(package, "notes").isEmpty());
}

TEST_F(DeliveryCommands, ListsAndConfirmsPendingMedia) {
    const auto areAnchorsMigrated = [this] {
        return console.userDefaults()
            ->value(QStringLiteral("Corvane.MediaSourceAuthorization.didGrandfatherContentHashV3"))
            .toBool();
    };
    createWithClips(1);
    EXPECT_FALSE(areAnchorsMigrated()) << "commands other than media skip the migration";
    const auto state = json("media P");
    EXPECT_TRUE(areAnchorsMigrated());
    EXPECT_EQ(state.size(), 7);
    expectMembers(state, R"({"legacyPackageMediaNeedsAuthorization": false,
                            "unresolvedMediaPendingPaths": []})");

    // A project from elsewhere has no grant for its media folder.
    folder.write("p/media/clip2.mp4", noise(10, 2));
    ASSERT_EQ(run("import P @p/media"), kAllDone);
    console.useData(folder.at("data2"));
    EXPECT_EQ(run("media P"), kAllDone);
    EXPECT_EQ(console.output,
              "This project's media folder hasn't been authorized, so Export and Handoff will "
              "refuse its clips.\n    To confirm: --confirm legacy-package\n");
    EXPECT_EQ(run("media P --confirm legacy-package --confirm changed"), kAllDone);
    EXPECT_EQ(console.output, "No media wait for a confirmation.\n");
    EXPECT_EQ(console.error, "Nothing waits for \"--confirm changed\".\n");

    // Importing again grants no access to a clip that the project already contains.
    EXPECT_EQ(run("import P @card"), kAllDone);
    EXPECT_TRUE(console.error.contains("1 file of the skipped can't be read for this project"))
        << console.error.data();
    const QString clip = folder.at("card/clip1.mp4");
    EXPECT_EQ(list(json("media P"), "unresolvedMediaPendingPaths"),
              (JSONValue::Array{JSONValue(clip)}));
    ASSERT_TRUE(QFile::rename(clip, clip + QStringLiteral(".away")));
    EXPECT_EQ(run("media P --confirm unresolved"), kRefused);
    EXPECT_TRUE(console.error.startsWith("1 file can't be read and was not confirmed."));
    ASSERT_TRUE(QFile::rename(clip + QStringLiteral(".away"), clip));
    expectMembers(json("media P --confirm unresolved"),
                  R"({"unresolvedMediaNeedsConfirmation": false})");
    ASSERT_EQ(run("mark P clip1.mp4 --select on"), kAllDone);
    EXPECT_EQ(run("export P --to @out"), kAllDone) << console.error.data();
}

TEST_F(DeliveryCommands, AsksAboutSourcesThatADeliveryRefusedBecauseTheyChanged) {
    createWithClips(1);
    folder.folder(QStringLiteral("out"));
    ASSERT_EQ(run("mark P clip1.mp4 --select on"), kAllDone);
    const QString clip = folder.at(QStringLiteral("card/clip1.mp4"));
    const auto changeContents = [&] {
        static int seed = 10;
        folder.write(QStringLiteral("card/clip1.mp4"), noise(5000, quint32(++seed)));
    };
    const auto replaceFolder = [&] {
        const QByteArray bytes = folder.read(QStringLiteral("card/clip1.mp4"));
        ASSERT_TRUE(
            QDir().rename(folder.at(QStringLiteral("card")), folder.at(QStringLiteral("former"))));
        folder.write(QStringLiteral("card/clip1.mp4"), bytes);
    };
    ASSERT_TRUE(QFile::rename(clip, clip + QStringLiteral(".away")));
    EXPECT_EQ(run("export P --all --to @selects"), kRefused);
    EXPECT_TRUE(list(json("media P"), "contentMismatchPendingPaths").empty())
        << "a missing file has not changed";
    ASSERT_TRUE(QFile::rename(clip + QStringLiteral(".away"), clip));
    const std::vector<std::pair<const char *, std::function<void()>>> cases{
        {"export P --all --to @selects", changeContents},
        {"export P --all --to @selects", replaceFolder},
        {"handoff P --to @out --name Show", changeContents},
        {"export P --all --output hd-only --to @selects", changeContents}};
    for (const auto &[command, change] : cases) {
        change();
        EXPECT_EQ(run(command), kRefused);
        EXPECT_THAT(console.error.toStdString(), HasSubstr("See \"corvane-cli media\""));
        EXPECT_EQ(list(json("media P"), "contentMismatchPendingPaths"),
                  (JSONValue::Array{JSONValue(clip)}))
            << command;
        EXPECT_EQ(run("media P --confirm changed"), kAllDone);
    }
    EXPECT_EQ(run("export P --all --to @selects"), kAllDone) << console.error.data();
}

TEST_F(DeliveryCommands, ListsAndForgetsTheGrantsOfProjects) {
    createWithClips(2);
    folder.folder(QStringLiteral("q"));
    ASSERT_EQ(run("create @q/Other.corvane --name Other"), kAllDone);
    ASSERT_EQ(run("import @q/Other.corvane @card"), kAllDone);
    EXPECT_EQ(run("grants"), kAllDone);
    EXPECT_EQ(console.output, "GRANTED  PENDING  PROJECT\n2        0        " + project.toUtf8() +
                                  "\n2        0        " +
                                  folder.at(QStringLiteral("q/Other.corvane")).toUtf8() +
                                  "\n2 projects, 0% of 8 MB used\n");
    ASSERT_TRUE(QFile::remove(folder.at(QStringLiteral("q/Other.corvane"))));
    const auto projects = list(json("grants"), "projects");
    ASSERT_EQ(projects.size(), 2);
    expectMembers(*projects.last().object(),
                  R"({"granted": 2, "pending": 0, "mediaFolder": false, "missing": true})");
    const auto rest = json("grants --forget @q/Other.corvane --forget @nowhere", kRefused);
    EXPECT_EQ(console.error,
              "No grants are stored for " + folder.at(QStringLiteral("nowhere")).toUtf8() + ".\n");
    EXPECT_EQ(column(list(rest, "projects"), "project"), QStringList{project});
    EXPECT_EQ(list(rest, "forgotten").size(), 1);
    folder.write(QStringLiteral("data/media-authorizations.json"), "{");
    EXPECT_EQ(run("grants"), kAllDone);
    EXPECT_THAT(console.error.toStdString(), HasSubstr("can't be read: "));
    EXPECT_EQ(console.output, "0 projects, 0% of 8 MB used\n");
}

TEST_F(DeliveryCommands, AMovedPackageDeliversOnceItsMediaAreConfirmed) {
    createWithClips(3);
    EXPECT_EQ(run("handoff P --to @p"), kAllDone);
    EXPECT_EQ(console.output, "Nothing to hand off.\n");
    ASSERT_EQ(run("mark P clip1.mp4 clip3.mp4 --select on"), kAllDone);
    expectMembers(json("handoff P --to @out", kRefused), R"({
        "generalError": "Could not reserve package folder: No such file or directory",
        "packageFolder": null})");

    folder.folder("out");
    folder.write("card/clip3.mp4", noise(5000, 9));
    const auto result = json("handoff P --to @out --name Show", kRefused);
    expectMembers(result, R"({"succeeded": 1, "failed": 1, "generalError": null})");
    EXPECT_EQ(text(result, "projectFile"), folder.at("out/Show/Show.corvane"));
    EXPECT_EQ(text(list(result, "failures").first(), "videoFileName"), QStringLiteral("clip3.mp4"));

    EXPECT_EQ(run("export @out/Show/Show.corvane --to @here"), kAllDone) << console.error.data();
    folder.folder("far");
    QDir().rename(folder.at("out/Show"), folder.at("far/away"));
    EXPECT_EQ(run("export @far/away/Show.corvane --all --to @there"), kRefused);
    expectMembers(json("media @far/away/Show.corvane"),
                  R"({"legacyPackageMediaNeedsAuthorization": true})");
    EXPECT_EQ(run("media @far/away/Show.corvane --confirm legacy-package"), kAllDone);
    EXPECT_EQ(run("export @far/away/Show.corvane --all --to @there"), kAllDone)
        << console.error.data();
    EXPECT_EQ(folder.read("there/clip1.mp4"), noise(5000, 1));
}

} // namespace corvane

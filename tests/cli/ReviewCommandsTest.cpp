#include "CliTest.h"
#include "document/DocumentLock.h"
#include "document/ProjectFileIO.h"
#include "platform/Clock.h"
#include "support/FaultyFileSystem.h"

namespace corvane {

namespace {

using test::CliTest;
using test::FaultyFileSystem;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

class ReviewCommands : public CliTest {
  protected:
    /// The file names of the listed rows, separated by spaces.
    std::string listed(const char *options) {
        const auto result = json((QByteArray("list P ") + options).constData());
        return column(list(result, "rows"), "fileName").join(QLatin1Char(' ')).toStdString();
    }
};

} // namespace

TEST_F(ReviewCommands, CreatesAProjectAndNeverReplacesAFile) {
    folder.folder("p");
    const char members[] =
        R"({"name": "Harbor", "shootDate": "2024-05-01", "clientOrSeries": "Gulls",
            "location": "Pier", "notes": "Windy", "clips": 0, "schemaVersion": 7})";
    const auto created = json("create @p/Harbor --name Harbor --shoot-date 2024-05-01 "
                              "--client Gulls --location Pier --notes Windy");
    expectMembers(created, members);
    EXPECT_EQ(text(created, "filePath"), project);
    const QByteArray before = folder.read("p/Harbor.corvane");

    EXPECT_EQ(text(json("create P --name Other", kRefused), "error"),
              project + QStringLiteral(" already exists. Nothing was changed."));
    expectMembers(json("info P"), members);
    EXPECT_EQ(folder.read("p/Harbor.corvane"), before);

    EXPECT_EQ(run("create @missing/x --name X"), kRefused);
    EXPECT_THAT(console.error.toStdString(), HasSubstr("Create failed: "));
}

TEST_F(ReviewCommands, AppliesAllMarksToTheClips) {
    createWithClips(3);
    const auto marked =
        json("mark P clip1.mp4 clip2.mp4 clip1.mp4 --rating 4 --favorite on --select on "
             "--reject on --reviewed off --notes Foggy --tag wide --tag gulls --tag wide");
    const JSONValue::Array rows = list(marked, "rows");
    ASSERT_EQ(rows.size(), 2);
    const JSONValue::Object clip = *rows.first().object();
    expectMembers(clip, R"({"rating": 4, "favorite": true, "selectedForExport": true,
                           "rejected": true, "reviewed": false})");
    EXPECT_EQ(list(clip, "tags").size(), 2);

    EXPECT_EQ(run("mark P clip1.mp4 --favorite on --reject off --untag wide"), kAllDone);
    expectMembers(*list(json("info P"), "videos").first().object(),
                  R"({"favorite": true, "rejected": false, "tags": ["gulls"], "notes": "Foggy"})");
}

TEST_F(ReviewCommands, RefusesToOverwriteAProjectThatWasChangedMeanwhile) {
    createWithClips(1);
    const QByteArray foreign = folder.read(QStringLiteral("p/Harbor.corvane")) + ' ';
    FaultyFileSystem files;
    const FileSystemScope scope(files);
    files.setObserver([&](const QString &operation, const QString &path) {
        // The recent list is written when the project has been read.
        if (operation == QLatin1String("createFileAt") &&
            path.startsWith(folder.at(QStringLiteral("data")))) {
            folder.write(QStringLiteral("p/Harbor.corvane"), foreign);
        }
    });
    EXPECT_EQ(run("mark P clip1.mp4 --rating 3"), kRefused);
    EXPECT_THAT(console.error.toStdString(), HasSubstr("was changed by another program"));
    EXPECT_EQ(folder.read(QStringLiteral("p/Harbor.corvane")), foreign);
}

TEST_F(ReviewCommands, WarnsAboutANearlyFullProjectThatIsOpenElsewhere) {
    createWithClips(1);
    EXPECT_TRUE(console.error.isEmpty()) << console.error.data();
    Project large = ProjectFileIO::loadNow(project);
    large.notes = QString(ProjectFileIO::kFileLimit * 9 / 10, QLatin1Char('x'));
    folder.write(QStringLiteral("p/Harbor.corvane"), encodeJSON(large));
    const QDateTime now = Clock::system().now();
    DocumentLock::write(project, {.host = QStringLiteral("STUDIO-2"),
                                  .user = QStringLiteral("Anna"),
                                  .openedAt = now,
                                  .renewedAt = now,
                                  .process = 1,
                                  .session = QStringLiteral("theirs")});
    EXPECT_EQ(run("mark P clip1.mp4 --rating 3"), kAllDone);
    EXPECT_THAT(console.error.toStdString(),
                HasSubstr("Anna has had this project open on STUDIO-2 since "));
    EXPECT_EQ(console.error.count("The project's file is 90 % full."), 1);
}

TEST_F(ReviewCommands, RefusesUnknownAndAmbiguousClipsWithoutChanges) {
    createWithClips(2);
    folder.write("card2/clip1.mp4", "another");
    ASSERT_EQ(run("import P @card2"), kAllDone);
    const QByteArray before = folder.read("p/Harbor.corvane");
    EXPECT_EQ(run("mark P clip2.mp4 clip1.mp4 --rating 3"), kRefused);
    EXPECT_THAT(console.error.toStdString(), HasSubstr("2 clips have the file name \"clip1.mp4\""));
    EXPECT_EQ(run("mark P clip2.mp4 clip9.mp4 --rating 3"), kRefused);
    EXPECT_THAT(console.error.toStdString(), HasSubstr("\"clip9.mp4\""));
    EXPECT_EQ(folder.read("p/Harbor.corvane"), before);

    const QString id = text(list(json("info P"), "videos").last(), "id");
    EXPECT_EQ(run(("mark P --rating 3 " + id.toUtf8()).constData()), kAllDone);
    EXPECT_EQ(listed("--rating 3"), "clip1.mp4");
}

TEST_F(ReviewCommands, ListsFilteredAndSortedClips) {
    createWithClips(11);
    ASSERT_EQ(run("mark P clip2.mp4 clip10.mp4 --rating 3 --select on"), kAllDone);
    ASSERT_EQ(run("mark P clip10.mp4 --rating 5 --tag Gulls"), kAllDone);
    ASSERT_EQ(run("mark P clip3.mp4 --reject on"), kAllDone);

    const auto all = json("list P");
    expectMembers(all, R"({"label": "11 clips", "visible": 10})");
    expectMembers(*list(all, "rows").first().object(), R"({"parentId": null})");

    EXPECT_THAT(listed(""), StartsWith("clip1.mp4 clip2.mp4 clip4.mp4 "));
    EXPECT_EQ(listed("--rating 3 --sort rating"), "clip10.mp4 clip2.mp4");
    EXPECT_EQ(listed("--rating 5only"), "clip10.mp4");
    EXPECT_EQ(listed("--search gULL"), "clip10.mp4");
    expectMembers(json("list P --unreviewed"), R"({"visible": 8})");
    expectMembers(json("list P --rejects"), R"({"visible": 11})");
    expectMembers(json("list P --favorites"), R"({"label": "0 of 11 visible"})");
    EXPECT_EQ(run("list P --selected"), kAllDone);
    EXPECT_TRUE(console.output.contains("5★")) << console.output.data();
    EXPECT_TRUE(console.output.endsWith("2 of 11 visible\n")) << console.output.data();
}

TEST_F(ReviewCommands, AddsASubclip) {
    createWithClips(2);
    const auto row = json("subclip P clip2.mp4 1.5 4 --label Pan --rating 2 --select off");
    expectMembers(row, R"({"kind": "subclip", "fileName": "clip2.mp4", "label": "Pan",
                          "inSeconds": 1.5, "rating": 2, "selectedForExport": false})");
    ASSERT_EQ(run("subclip P clip2.mp4 0 1"), kAllDone);

    const JSONValue::Array rows = list(json("list P --subclips"), "rows");
    EXPECT_THAT(column(rows, "label"), ElementsAre(QStringLiteral("Pan"), QString()));
    EXPECT_EQ(text(rows.first(), "parentId"), text(row, "sourceVideoId"));
    EXPECT_EQ(list(json("list P --subclips --selected"), "rows").size(), 1);
    expectMembers(json("info P"), R"({"subclips": 2})");
}

} // namespace corvane

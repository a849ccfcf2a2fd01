#include "CliTest.h"

namespace corvane {

namespace {

using test::CliTest;
using testing::ElementsAre;
using testing::HasSubstr;

class ReviewCommands : public CliTest {
  protected:
    QStringList listed(const char *options) {
        return column(list(json((QByteArray("list P ") + options).constData()), "rows"),
                      "fileName");
    }
};

QStringList names(std::initializer_list<const char *> texts) {
    QStringList names;
    for (const char *text : texts) {
        names.append(QString::fromUtf8(text));
    }
    return names;
}

} // namespace

TEST_F(ReviewCommands, CreatesAProjectAndNeverOverAFile) {
    folder.folder(QStringLiteral("p"));
    auto created = json("create @p/Harbor --name Harbor --shoot-date 2024-05-01 --client Gulls "
                        "--location Pier --notes Windy");
    EXPECT_EQ(text(created, "name"), QStringLiteral("Harbor"));
    EXPECT_EQ(text(created, "filePath"), project);
    EXPECT_EQ(created.value(QStringLiteral("clips")), JSONValue(0));
    const QByteArray before = folder.read(QStringLiteral("p/Harbor.corvane"));

    const auto refused = json("create P --name Other", kRefused);
    EXPECT_EQ(text(refused, "error"),
              project + QStringLiteral(" already exists. Nothing was changed."));
    const auto info = json("info P");
    EXPECT_EQ(text(info, "shootDate"), QStringLiteral("2024-05-01"));
    EXPECT_EQ(text(info, "clientOrSeries"), QStringLiteral("Gulls"));
    EXPECT_EQ(text(info, "location"), QStringLiteral("Pier"));
    EXPECT_EQ(text(info, "notes"), QStringLiteral("Windy"));
    EXPECT_EQ(info.value(QStringLiteral("schemaVersion")), JSONValue(7));
    EXPECT_EQ(folder.read(QStringLiteral("p/Harbor.corvane")), before);

    EXPECT_EQ(run("create @missing/x --name X"), kRefused);
    EXPECT_THAT(console.error.toStdString(), HasSubstr("Create failed: "));
}

TEST_F(ReviewCommands, MarksClipsSoThatEverythingAskedForHolds) {
    createWithClips(3);
    const auto marked =
        json("mark P clip1.mp4 clip2.mp4 clip1.mp4 --rating 4 --favorite on --select on "
             "--reject on --reviewed off --notes Foggy --tag wide --tag gulls --tag wide");
    const JSONValue::Array rows = list(marked, "rows");
    ASSERT_EQ(rows.size(), 2);
    const JSONValue::Object clip = *rows.first().object();
    EXPECT_EQ(clip.value(QStringLiteral("rating")), JSONValue(4));
    for (const char *flag : {"favorite", "selectedForExport", "rejected"}) {
        EXPECT_EQ(clip.value(QLatin1String(flag)), JSONValue(true)) << flag;
    }
    EXPECT_EQ(clip.value(QStringLiteral("reviewed")), JSONValue(false));
    EXPECT_EQ(list(clip, "tags").size(), 2);

    EXPECT_EQ(run("mark P clip1.mp4 --favorite on --reject off --untag wide"), kAllDone);
    const JSONValue::Array after = list(json("info P"), "videos");
    const JSONValue::Object first = *after.first().object();
    EXPECT_EQ(first.value(QStringLiteral("favorite")), JSONValue(true));
    EXPECT_EQ(first.value(QStringLiteral("rejected")), JSONValue(false));
    EXPECT_EQ(list(first, "tags"), JSONValue::Array{JSONValue(QStringLiteral("gulls"))});
    EXPECT_EQ(text(first, "notes"), QStringLiteral("Foggy"));
}

TEST_F(ReviewCommands, ChangesNothingWhereAClipIsUnknownOrAmbiguous) {
    createWithClips(2);
    folder.write(QStringLiteral("card2/clip1.mp4"), "another");
    ASSERT_EQ(run("import P @card2"), kAllDone);
    const QByteArray before = folder.read(QStringLiteral("p/Harbor.corvane"));
    EXPECT_EQ(run("mark P clip2.mp4 clip1.mp4 --rating 3"), kRefused);
    EXPECT_THAT(console.error.toStdString(), HasSubstr("2 clips have the file name \"clip1.mp4\""));
    EXPECT_EQ(run("mark P clip2.mp4 clip9.mp4 --rating 3"), kRefused);
    EXPECT_THAT(console.error.toStdString(), HasSubstr("\"clip9.mp4\""));
    EXPECT_EQ(folder.read(QStringLiteral("p/Harbor.corvane")), before);

    const QString id = text(list(json("info P"), "videos").last(), "id");
    EXPECT_EQ(run(("mark P --rating 3 " + id.toUtf8()).constData()), kAllDone);
    EXPECT_EQ(listed("--rating 3"), names({"clip1.mp4"}));
}

TEST_F(ReviewCommands, ListsWhatPassesTheFilter) {
    createWithClips(11);
    ASSERT_EQ(run("mark P clip2.mp4 clip10.mp4 --rating 3 --select on"), kAllDone);
    ASSERT_EQ(run("mark P clip10.mp4 --rating 5 --tag Gulls"), kAllDone);
    ASSERT_EQ(run("mark P clip3.mp4 --reject on"), kAllDone);

    const auto all = json("list P");
    EXPECT_EQ(text(all, "label"), QStringLiteral("11 clips"));
    EXPECT_EQ(all.value(QStringLiteral("visible")), JSONValue(10));
    EXPECT_EQ(column(list(all, "rows"), "fileName").mid(1, 2), names({"clip2.mp4", "clip4.mp4"}));
    EXPECT_TRUE(list(all, "rows").first().object()->value(QStringLiteral("parentId")).isNull());

    EXPECT_EQ(listed("--rating 3 --sort rating"), names({"clip10.mp4", "clip2.mp4"}));
    EXPECT_EQ(listed("--rating 5only"), names({"clip10.mp4"}));
    EXPECT_EQ(listed("--search gULL"), names({"clip10.mp4"}));
    EXPECT_EQ(listed("--unreviewed").size(), 8);
    EXPECT_EQ(listed("--rejects").size(), 11);
    EXPECT_EQ(text(json("list P --favorites"), "label"), QStringLiteral("0 of 11 visible"));
    EXPECT_EQ(run("list P --selected"), kAllDone);
    EXPECT_TRUE(console.output.contains("5★")) << console.output.data();
    EXPECT_TRUE(console.output.endsWith("2 of 11 visible\n")) << console.output.data();
}

TEST_F(ReviewCommands, MarksARangeOfAClip) {
    createWithClips(2);
    const auto row = json("subclip P clip2.mp4 1.5 4 --label Pan --rating 2 --select off");
    EXPECT_EQ(text(row, "kind"), QStringLiteral("subclip"));
    EXPECT_EQ(text(row, "fileName"), QStringLiteral("clip2.mp4"));
    EXPECT_EQ(text(row, "label"), QStringLiteral("Pan"));
    EXPECT_EQ(row.value(QStringLiteral("inSeconds")), JSONValue(1.5));
    EXPECT_EQ(row.value(QStringLiteral("rating")), JSONValue(2));
    EXPECT_EQ(row.value(QStringLiteral("selectedForExport")), JSONValue(false));
    ASSERT_EQ(run("subclip P clip2.mp4 0 1"), kAllDone);

    const JSONValue::Array rows = list(json("list P --subclips"), "rows");
    EXPECT_EQ(column(rows, "label"), names({"Pan", ""}));
    EXPECT_EQ(text(rows.first(), "parentId"), text(row, "sourceVideoId"));
    EXPECT_EQ(list(json("list P --subclips --selected"), "rows").size(), 1);
    EXPECT_EQ(json("info P").value(QStringLiteral("subclips")), JSONValue(2));
}

} // namespace corvane

#include "document/ProjectMigration.h"
#include "document/ProjectFileIO.h"
#include "support/SampleProject.h"
#include "support/TestFolder.h"

#include <gmock/gmock.h>

using namespace corvane;
using namespace corvane::test;

namespace {

JSONValue::Object object(const QByteArray &text) {
    return *JSONDocument::parse(text).root().toValue().object();
}

/// A document of an older version: a current one without the keys that were added later.
QByteArray olderDocument(int version) {
    const std::pair<int, const char *> introduced[] = {
        {2, "creationIndex"}, {3, "succeededCount"}, {3, "failedCount"}, {3, "cancelledCount"},
        {3, "cancelled"},     {4, "rating"},         {5, "favorite"}};
    const auto makeOlder = [&](JSONValue &record) {
        for (const auto &[since, key] : introduced) {
            if (version < since) {
                record.object()->remove(QString::fromLatin1(key));
            }
        }
    };
    JSONValue::Object document = object(fullProjectText());
    document[QStringLiteral("schemaVersion")] = version;
    std::ranges::for_each(*document[QStringLiteral("exportBatches")].array(), makeOlder);
    for (JSONValue &video : *document[QStringLiteral("videos")].array()) {
        std::ranges::for_each(*(*video.object())[QStringLiteral("subclips")].array(), makeOlder);
    }
    return encodeJSON(JSONValue(document));
}

} // namespace

TEST(ProjectMigration, EveryOlderVersionOpens) {
    const TestFolder folder;
    for (int version = 1; version <= 6; ++version) {
        const QByteArray bytes = olderDocument(version);
        const QString path = folder.write("old.corvane", bytes);
        const Project project = ProjectFileIO::loadNow(path);
        EXPECT_EQ(project.schemaVersion, 7);
        Project expected = fullProject();
        expected.filePath = path;
        if (version < 3) {
            expected.exportBatches[0].succeededCount = 0;
            expected.exportBatches[0].cancelled = false;
        }
        EXPECT_EQ(project, expected) << "version " << version;
        EXPECT_EQ(folder.read("old.corvane"), bytes) << "the file is unchanged";
    }
}

TEST(ProjectMigration, RanksSubclipsByInPointAndKeepsExistingMembers) {
    auto document = object(R"({"videos":[{"subclips":[
        {"inSeconds":9},{"inSeconds":1},{"inSeconds":5},{"inSeconds":"x","creationIndex":40},7]},
        {"subclips":"none"}, 3]})");
    ProjectMigration::migrate(document);
    const QByteArray expected =
        R"({"schemaVersion":7,"videos":[{"subclips":[
        {"inSeconds":9,"creationIndex":5,"rating":0,"favorite":false},
        {"inSeconds":1,"creationIndex":3,"rating":0,"favorite":false},
        {"inSeconds":5,"creationIndex":4,"rating":0,"favorite":false},
        {"inSeconds":"x","creationIndex":40,"rating":0,"favorite":false},7]},
        {"subclips":"none"}, 3]})";
    EXPECT_EQ(document, object(expected));
}

TEST(ProjectMigration, TreatsANonNumericVersionAsTheFirstAndRefusesNewerVersions) {
    auto text = object(R"({"schemaVersion":"3","exportBatches":[{"failedCount":2}]})");
    ProjectMigration::migrate(text);
    EXPECT_EQ(text, object(R"({"schemaVersion":7,"exportBatches":[{"failedCount":2,
        "succeededCount":0,"cancelledCount":0,"cancelled":false}]})"));
    auto future = object(R"({"schemaVersion":8,"exportBatches":[{}]})");
    EXPECT_THROW(ProjectMigration::migrate(future), ProjectMigration::MigrationError);
    EXPECT_EQ(future, object(R"({"schemaVersion":8,"exportBatches":[{}]})"));
}

TEST(ProjectMigration, MarksClipsWithReviewMarksAsReviewed) {
    const QDateTime now = QDateTime::fromMSecsSinceEpoch(5000, Qt::UTC);
    Project project = sampleProject(3);
    EXPECT_FALSE(ProjectMigration::migrateReviewedFlags(project, now));
    project.videos[1].edit().rejected = true;
    project.videos[2].edit().subclips.append(
        sampleSubclip(QStringLiteral("s"), QStringLiteral("c")));
    EXPECT_TRUE(ProjectMigration::migrateReviewedFlags(project, now));
    EXPECT_FALSE(project.videos.at(0)->reviewed);
    EXPECT_EQ(project.videos.at(1)->reviewedAt, now);
    EXPECT_TRUE(project.videos.at(2)->reviewed);
    EXPECT_FALSE(ProjectMigration::migrateReviewedFlags(project, now));
}

#include "document/Project.h"
#include "support/SampleProject.h"

#include <gmock/gmock.h>

using namespace corvane;
using namespace corvane::test;

namespace {

Project decoded(const QByteArray &text) {
    return decodeJSON<Project>(JSONDocument::parse(text).root());
}

QString failureOf(const QByteArray &text) {
    try {
        decoded(text);
        return QStringLiteral("none");
    } catch (const JSONDecodeError &error) {
        return error.description();
    }
}

} // namespace

TEST(Project, ReadsAndWritesEveryFieldUnderItsKeyOnDisk) {
    const QByteArray text = fullProjectText();
    const Project project = decoded(text);
    EXPECT_EQ(encodeJSON(project), text);
    EXPECT_EQ(decoded(encodeJSON(project)), project);
    EXPECT_EQ(qHash(decoded(text), 0), qHash(project, 0));
}

TEST(Project, OmitsUnsetMembersReadsNullAsUnsetAndIgnoresUnknownKeys) {
    const QByteArray text = encodeJSON(sampleProject(1));
    EXPECT_FALSE(text.contains("\"notes\""));
    EXPECT_FALSE(text.contains("null"));
    EXPECT_TRUE(encodeJSON(sampleProject(0)).contains("\"videos\": []"));
    QByteArray withNull = text;
    withNull.replace("\"rating\": 0", "\"rating\": 0, \"notes\": null, \"exportedAt\": null");
    EXPECT_EQ(decoded(withNull), decoded(text));
    QByteArray newer = text;
    newer.replace("\"rating\"", "\"future\": [{}], \"rating\"");
    EXPECT_EQ(decoded(newer), decoded(text));
}

TEST(Project, OfARepeatedKeyTheLastValueReplacesTheFirstEntirely) {
    Project project = sampleProject(0);
    project.exportBatches.append(ExportBatch{});
    const QByteArray text = encodeJSON(project);
    const QByteArray first = encodeJSON(ExportNamingOptions{.baseName = QStringLiteral("first")});
    QByteArray repeated = text;
    repeated.replace("\"namingOptions\":", "\"namingOptions\": " + first + ", \"namingOptions\":");
    EXPECT_NE(repeated, text);
    EXPECT_EQ(decoded(repeated), decoded(text));
}

TEST(Project, DecodeErrorsNameTheFieldPathAndTheProblem) {
    const QByteArray good = encodeJSON(fullProject());
    const auto changed = [&](const char *before, const char *after) {
        QByteArray text = good;
        text.replace(before, after);
        EXPECT_NE(text, good) << before;
        return failureOf(text);
    };
    EXPECT_EQ(changed("\"sidecarType\": \"xml\"", "\"sidecarType\": \"doc\""),
              QStringLiteral("videos[0].sidecarType: unknown value \"doc\""));
    EXPECT_EQ(changed("\"rating\": 5", "\"rating\": \"5\""),
              QStringLiteral("videos[0].rating: expected a whole number of 32 bits"));
    EXPECT_EQ(changed("\"rating\": 5", "\"rating\": null"),
              QStringLiteral("videos[0].rating: is missing"));
    EXPECT_EQ(changed("\"creationIndex\"", "\"creationindex\""),
              QStringLiteral("videos[0].subclips[0].creationIndex: is missing"));
    EXPECT_EQ(changed("2026-03-01T09:30:12.345Z", "yesterday"),
              QStringLiteral("videos[0].reviewedAt: Invalid ISO-8601 date: yesterday"));
    EXPECT_EQ(changed("\"numberingMode\": \"off\"", "\"numberingMode\": 0"),
              QStringLiteral("exportBatches[0].namingOptions.numberingMode: expected a text"));
    EXPECT_EQ(failureOf("{}"), QStringLiteral("id: is missing"));
}

TEST(Project, CopiesShareStorageUntilOneIsChanged) {
    const Project original = sampleProject(3, 1);
    Project copy = original;
    copy.videos[1].edit().rating = 4;
    EXPECT_EQ(original.videos.at(1)->rating, 0);
    EXPECT_TRUE(copy.videos.at(0).isSharedWith(original.videos.at(0)));
    EXPECT_NE(copy, original);
}

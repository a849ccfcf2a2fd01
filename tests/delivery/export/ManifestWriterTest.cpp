#include "delivery/export/ManifestWriter.h"

#include "delivery/export/ExportFixture.h"

#include <limits>

using namespace corvane;
using namespace corvane::test;
using ManifestWriter::WriteError;

namespace {

class ManifestWriterTest : public testing::Test {
  protected:
    QString write() {
        const OpenFolder out = OpenFolder::at(input.outputFolder);
        return await(ManifestWriter::write(out, input, succeeded, failed));
    }
    WriteError failure() {
        try {
            write();
        } catch (const WriteError &error) {
            return error;
        }
        return WriteError::serializationFailed(text("nothing failed"));
    }

    TestFolder folder;
    ExportBatchInput input{.batchId = text("run_1"),
                           .outputFolder = folder.folder("out"),
                           .outputMode = OutputMode::primaryAndHd,
                           .completedAt = QDateTime::fromMSecsSinceEpoch(1772357412345, Qt::UTC),
                           .namingOptions = {.baseName = text("Süd")},
                           .subclipHandleSeconds = 0.5,
                           .includeSubclipSelects = false};
    QList<ExportRowOutcome> succeeded{{.rowId = text("whole:A"),
                                       .parentVideoId = text("A"),
                                       .destinationPath = text("/out/a.mov"),
                                       .hdError = text("Cancelled"),
                                       .hdDestinationPath = text("/out/HD/a.mp4")}};
    QList<ExportRowFailure> failed{{.rowId = text("sub:A:s"),
                                    .parentVideoId = text("A"),
                                    .subclipId = text("s"),
                                    .destinationPath = text("/out/s.mov"),
                                    .error = text("Cancelled"),
                                    .cancelled = true,
                                    .hdDestinationPath = text("/out/HD/s.mp4")}};
};

} // namespace

TEST_F(ManifestWriterTest, WritesIndentedJSONWithAnHDStatusOnlyForHDRuns) {
    EXPECT_EQ(write(), folder.at("out/manifest-run_1.json"));
    const QByteArray written = folder.read("out/manifest-run_1.json");
    const JSONValue value = JSONDocument::parse(written).root().toValue();
    EXPECT_EQ(written, encodeJSON(value, JSONWriter::Style::Pretty));
    EXPECT_EQ(
        encodeJSON(value, JSONWriter::Style::Compact),
        R"({"cancelled":true,"cancelledCount":1,"completedAt":"2026-03-01T09:30:12.345Z",)"
        R"("failedCount":0,"id":"run_1","includeSubclipSelects":false,)"
        R"("includeWholeVideoSelects":true,"mode":"fast-copy","namingOptions":{"baseName":"Süd",)"
        R"("includeOriginalFileNumber":false,"includeOriginalFilename":false,)"
        R"("includeSelectType":false,"includeShootDate":false,"includeSubclipLabel":false,)"
        R"("keepOriginalForWholeVideos":false,"numberingMode":"off"},"namingOptionsError":null,)"
        R"("outputFolder":")" +
            input.outputFolder.toUtf8() +
            R"(","outputMode":"primary-and-hd",)"
            R"("rows":[{"destinationPath":"/out/a.mov","hdDestinationPath":"/out/HD/a.mp4",)"
            R"("hdError":"Cancelled","hdStatus":"cancelled","parentVideoId":"A","rowId":"whole:A",)"
            R"("status":"succeeded","subclipId":null},{"destinationPath":"/out/s.mov",)"
            R"("error":"Cancelled","hdDestinationPath":"/out/HD/s.mp4","hdStatus":"not-attempted",)"
            R"("parentVideoId":"A","rowId":"sub:A:s","status":"cancelled","subclipId":"s"}],)"
            R"("subclipHandleSeconds":0.5,"succeededCount":1})");

    input.outputMode = OutputMode::primaryOnly;
    write();
    EXPECT_FALSE(folder.read("out/manifest-run_1.json").contains("hdStatus"));
}

TEST_F(ManifestWriterTest, RefusesInvalidInputWithoutWriting) {
    for (const char *id : {"", "a/b", "a.b", "ä"}) {
        input.batchId = QString::fromUtf8(id);
        EXPECT_EQ(failure().kind(), WriteError::Kind::invalidBatchId) << id;
    }
    input.batchId = text("run");
    input.subclipHandleSeconds = std::numeric_limits<double>::infinity();
    EXPECT_EQ(failure().kind(), WriteError::Kind::serializationFailed);
    input.subclipHandleSeconds = 0;
    EXPECT_THAT(folder.names("out"), testing::IsEmpty());
    const QString target = folder.write("elsewhere", "kept");
    const QString path = folder.link("out/manifest-run.json", target);
    EXPECT_EQ(failure().description(), text("manifest write failed at %1: File exists").arg(path));
    EXPECT_EQ(folder.read("elsewhere"), "kept");
}

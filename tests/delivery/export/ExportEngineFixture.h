#pragma once

#include "delivery/export/ExportEngine.h"
#include "delivery/export/ExportFixture.h"

#include <QJsonDocument>

namespace corvane::test {

/// Runs the planned rows of the clips.
class ExportEngineTest : public ExportTest {
  protected:
    ExportBatchInput input() {
        return {.batchId = text("BATCH-1"),
                .outputFolder = *choices.outputFolder,
                .mode = choices.mode,
                .outputMode = choices.outputMode,
                .completedAt = clock.now(),
                .namingOptions = choices.naming,
                .volumeLimits = choices.volumeLimits,
                .projectFolder = projectFolder(projectFile),
                .authorizedSourcePaths = await(authorization.authorizedPaths(projectFile))};
    }
    ExportBatchResult run(QList<ExportRowJob> rows) {
        const auto report = [this](const ExportProgress &reported) {
            progress.append(reported);
            onProgress(reported);
        };
        return await(engine.run(input(), std::move(rows), report, std::make_shared<CancelToken>()));
    }
    ExportBatchResult run() { return run(planRows(project, choices, true)); }
    /// Returns the text of the only failure.
    std::string failure(const QList<ExportRowJob> &rows) {
        const auto errors = errorsOf(run(rows));
        EXPECT_THAT(errors, testing::SizeIs(1));
        return errors.empty() ? std::string() : errors.front();
    }
    std::string failure() { return failure(planRows(project, choices, true)); }
    /// Returns the manifest's HD status of the first row.
    QString hdStatus() const {
        const auto manifest = QJsonDocument::fromJson(delivered("manifest-BATCH-1.json"));
        const QJsonValue row = manifest[text("rows")][0];
        EXPECT_EQ(row[text("hdDestinationPath")].toString(), at("out/HD/a.mp4"));
        return row[text("hdStatus")].toString();
    }
    /// Requests cancellation once the row has started.
    void cancelDuringRow(int index) {
        onProgress = [this, index](const ExportProgress &reported) {
            if (reported.index == index && reported.phase == ExportProgress::Phase::inProgress &&
                !engine.cancelToken()->isRequested()) {
                engine.requestCancel();
            }
        };
    }

    ExportEngine engine{sessions, clock};
    QList<ExportProgress> progress;
    std::function<void(const ExportProgress &)> onProgress = [](const ExportProgress &) {};
};

} // namespace corvane::test

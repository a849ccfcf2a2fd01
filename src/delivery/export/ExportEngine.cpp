#include "delivery/export/ExportEngine.h"

#include "delivery/export/ExportRowRunner.h"
#include "delivery/export/ManifestWriter.h"
#include "platform/FileSystem.h"
#include "platform/Paths.h"
#include "platform/SerialExecutor.h"
#include "transfer/DestinationSafety.h"

namespace corvane {

namespace {

/// Result of a run that is refused before its first row.
ExportBatchResult refusal(const QList<ExportRowJob> &rows, const QString &rowError,
                          const QString &manifestError) {
    ExportBatchResult result{.manifestError = manifestError};
    for (const ExportRowJob &row : rows) {
        result.failed.append(failedRow(row, rowError));
    }
    return result;
}

void refuseProxies(const QList<ExportRowJob> &rows) {
    QStringList sources;
    sources.reserve(rows.size());
    for (const ExportRowJob &row : rows) {
        sources.append(row.sourcePath);
    }
    ProxyInvariant::assertNoProxySources(sources);
}

void createFolders(const QString &outputFolder, OutputMode outputMode) {
    fileSystem().createFolders(outputFolder);
    if (outputMode == OutputMode::primaryAndHd) {
        fileSystem().createFolders(paths::joined(outputFolder, QStringLiteral("HD")));
    }
}

/// Checks the sources and creates the folders. Returns the result if the run is refused.
QCoro::Task<std::optional<ExportBatchResult>> prepare(ExportBatchInput input,
                                                      QList<ExportRowJob> rows) {
    try {
        co_await userInitiatedExecutor().run([&] { refuseProxies(rows); });
    } catch (const std::exception &error) {
        co_return refusal(rows, QStringLiteral("Proxy invariant: ") + describe(error),
                          QStringLiteral("skipped manifest — batch aborted by proxy invariant"));
    }
    try {
        co_await userInitiatedExecutor().run(
            [&] { createFolders(input.outputFolder, input.outputMode); });
    } catch (const std::exception &error) {
        co_return refusal(
            rows,
            QStringLiteral("create output folder: %1: %2").arg(input.outputFolder, describe(error)),
            QStringLiteral("skipped manifest — output folder unwritable"));
    }
    co_return std::nullopt;
}

/// Returns the full anchors that the sources must match, by standardized path.
QHash<QString, ContentHasher::FullAnchor> anchorsOf(const QList<ExportRowJob> &rows,
                                                    const AuthorizedPaths &grants) {
    QHash<QString, ContentHasher::FullAnchor> anchors;
    for (const ExportRowJob &row : rows) {
        const QString path = paths::standardized(row.sourcePath);
        const auto identity = grants.value(path);
        if (!identity || !identity->contentHash) {
            continue;
        }
        if (const auto anchor = ContentHasher::parseFullAnchor(*identity->contentHash)) {
            anchors.insert(path, *anchor);
        }
    }
    return anchors;
}

/// Returns the files that no output may replace.
QStringList protectedFiles(const QList<ExportRowJob> &rows, const ExportBatchInput &input) {
    QStringList files = input.authorizedSourcePaths.keys() + input.protectedFiles;
    for (const ExportRowJob &row : rows) {
        files.append(row.sourcePath);
        if (row.sidecarSource) {
            files.append(*row.sidecarSource);
        }
    }
    return files;
}

QCoro::Task<ExportBatchResult> runRows(std::shared_ptr<const ExportRunContext> context,
                                       QList<ExportRowJob> rows) {
    ExportBatchResult result;
    for (int index = 0; index < context->total; ++index) {
        if (context->cancelToken->isRequested()) {
            result.failed.append(failedRow(rows.at(index), kCancelledText, true));
            continue;
        }
        ExportRowRunner runner(context, rows.at(index), index);
        const ExportRowResult rowResult = co_await runner.run();
        if (runner.isSourceChanged()) {
            result.changedSources.append(paths::standardized(rows.at(index).sourcePath));
        }
        if (const auto *outcome = std::get_if<ExportRowOutcome>(&rowResult)) {
            result.succeeded.append(*outcome);
        } else {
            result.failed.append(std::get<ExportRowFailure>(rowResult));
        }
    }
    result.cancelledCount = int(std::ranges::count_if(result.failed, &ExportRowFailure::cancelled));
    result.cancelled = result.cancelledCount != 0;
    co_return result;
}

} // namespace

ExportEngine::ExportEngine(media::ExportSessionFactory &sessions, Clock &clock)
    : m_sessions(sessions), m_clock(clock) {}

QCoro::Task<ExportBatchResult> ExportEngine::run(ExportBatchInput input, QList<ExportRowJob> rows,
                                                 ExportProgressHandler onProgress,
                                                 std::shared_ptr<CancelToken> cancelToken) {
    startRun(std::move(cancelToken));
    std::optional<ExportBatchResult> result = co_await prepare(input, rows);
    if (!result) {
        const auto context = co_await makeContext(input, rows, std::move(onProgress));
        result = co_await runRows(context, rows);
        try {
            result->manifestSidecarPath =
                co_await ManifestWriter::write(input, result->succeeded, result->failed);
        } catch (const std::exception &error) {
            result->manifestError = QStringLiteral("manifest write: ") + describe(error);
        }
    }
    endRun();
    co_return *result;
}

/// Hashes the sources ahead of the rows. Hashing stops, even within a file, when the run is
/// cancelled: no row has begun then.
QCoro::Task<std::shared_ptr<const ExportRunContext>>
ExportEngine::makeContext(ExportBatchInput input, QList<ExportRowJob> rows,
                          ExportProgressHandler onProgress) {
    const auto token = cancelToken();
    const auto locations =
        co_await userInitiatedExecutor().run([files = protectedFiles(rows, input)] {
            return DestinationSafety::FileLocations::of(files);
        });
    const auto verifications = co_await utilityExecutor().run(
        [anchors = anchorsOf(rows, input.authorizedSourcePaths), token] {
            return ContentHasher::verifyAnchors(anchors, {}, token->requestToken());
        });
    co_return std::make_shared<const ExportRunContext>(
        ExportRunContext{.input = input,
                         .total = int(rows.size()),
                         .grants = {.projectFolder = input.projectFolder,
                                    .authorizedSourcePaths = input.authorizedSourcePaths,
                                    .mediaRootAuthorized = input.mediaRootAuthorized,
                                    .preverifiedAnchors = verifications},
                         .protectedFiles = locations,
                         .cancelToken = token,
                         .onProgress = std::move(onProgress),
                         .maker = OutputMaker(m_sessions, m_clock, token->stopToken())});
}

} // namespace corvane

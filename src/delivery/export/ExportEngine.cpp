#include "delivery/export/ExportEngine.h"

#include "delivery/export/ExportRowRunner.h"
#include "delivery/export/ManifestWriter.h"
#include "platform/FileSystem.h"
#include "platform/Paths.h"
#include "platform/SerialExecutor.h"
#include "transfer/DestinationSafety.h"

namespace corvane {

namespace {

/// A run that ends before its first row.
struct BatchRefusal {
    QString rowError;
    QString manifestError;
};

QStringList sourcesOf(const QList<ExportRowJob> &rows) {
    QStringList sources;
    sources.reserve(rows.size());
    for (const ExportRowJob &row : rows) {
        sources.append(row.sourcePath);
    }
    return sources;
}

QCoro::Task<std::optional<BatchRefusal>> refuseProxies(QList<ExportRowJob> rows) {
    try {
        co_await userInitiatedExecutor().run(
            [sources = sourcesOf(rows)] { ProxyInvariant::assertNoProxySources(sources); });
    } catch (const std::exception &error) {
        co_return BatchRefusal{
            QStringLiteral("Proxy invariant: ") + describe(error),
            QStringLiteral("skipped manifest — batch aborted by proxy invariant")};
    }
    co_return std::nullopt;
}

QCoro::Task<std::optional<BatchRefusal>> createFolders(QString outputFolder,
                                                       OutputMode outputMode) {
    const QString prefix = QStringLiteral("create output folder: ");
    try {
        co_await userInitiatedExecutor().run([outputFolder, outputMode] {
            fileSystem().createFolders(outputFolder);
            if (outputMode == OutputMode::primaryAndHd) {
                fileSystem().createFolders(paths::joined(outputFolder, QStringLiteral("HD")));
            }
        });
    } catch (const std::exception &error) {
        co_return BatchRefusal{prefix + outputFolder + QStringLiteral(": ") + describe(error),
                               QStringLiteral("skipped manifest — output folder unwritable")};
    }
    co_return std::nullopt;
}

/// The full anchors that the rows' sources must reproduce, by standardized path.
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

/// Every file that the project delivers from: no output may take its place.
QStringList projectMedia(const QList<ExportRowJob> &rows, const ExportBatchInput &input) {
    QStringList files = input.authorizedSourcePaths.keys() + input.protectedFiles;
    for (const ExportRowJob &row : rows) {
        files.append(row.sourcePath);
        if (row.sidecarSource) {
            files.append(*row.sidecarSource);
        }
    }
    return files;
}

QCoro::Task<DestinationSafety::Places> mediaPlaces(QStringList files) {
    co_return co_await userInitiatedExecutor().run(
        [files] { return DestinationSafety::placesOf(files); });
}

/// Hashes the sources ahead of the rows; stops between two files once the run is cancelled, and
/// within one once it is aborted.
QCoro::Task<QHash<QString, ContentHasher::AnchorVerification>>
verifyAhead(QHash<QString, ContentHasher::FullAnchor> anchors, std::shared_ptr<CancelToken> token) {
    co_return co_await utilityExecutor().run([anchors, token] {
        return ContentHasher::verifyAnchors(
            anchors, [&] { return token->isRequested(); }, token->stopToken());
    });
}

void refuseAll(const QList<ExportRowJob> &rows, const BatchRefusal &refusal,
               ExportBatchResult &result) {
    for (const ExportRowJob &row : rows) {
        result.failed.append(failedRow(row, refusal.rowError));
    }
    result.manifestError = refusal.manifestError;
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
        const ExportRowResult done = co_await runner.run();
        if (const auto *outcome = std::get_if<ExportRowOutcome>(&done)) {
            result.succeeded.append(*outcome);
        } else {
            result.failed.append(std::get<ExportRowFailure>(done));
        }
    }
    result.cancelledCount = int(std::ranges::count_if(result.failed, &ExportRowFailure::cancelled));
    result.cancelled = result.cancelledCount != 0;
    co_return result;
}

QCoro::Task<ExportBatchResult> withManifest(ExportBatchInput input, ExportBatchResult result) {
    try {
        result.manifestSidecarPath =
            co_await ManifestWriter::write(input, result.succeeded, result.failed);
    } catch (const std::exception &error) {
        result.manifestError = QStringLiteral("manifest write: ") + describe(error);
    }
    co_return result;
}

} // namespace

ExportEngine::ExportEngine(media::ExportSessionFactory &sessions, Clock &clock)
    : m_sessions(sessions), m_clock(clock) {}

void ExportEngine::requestCancel() {
    if (m_cancelToken) {
        m_cancelToken->request();
    }
}

void ExportEngine::abort() {
    if (m_cancelToken) {
        m_cancelToken->abort();
    }
}

QCoro::Task<ExportBatchResult> ExportEngine::run(ExportBatchInput input, QList<ExportRowJob> rows,
                                                 ExportProgressHandler onProgress) {
    m_cancelToken = std::make_shared<CancelToken>();
    m_isRunning = true;
    auto refusal = co_await refuseProxies(rows);
    if (!refusal) {
        refusal = co_await createFolders(input.outputFolder, input.outputMode);
    }
    ExportBatchResult result;
    if (refusal) {
        refuseAll(rows, *refusal, result);
    } else {
        const auto context = co_await makeContext(input, rows, std::move(onProgress));
        result = co_await runRows(context, rows);
        result = co_await withManifest(input, std::move(result));
    }
    m_isRunning = false;
    co_return result;
}

QCoro::Task<std::shared_ptr<const ExportRunContext>>
ExportEngine::makeContext(ExportBatchInput input, QList<ExportRowJob> rows,
                          ExportProgressHandler onProgress) {
    const AuthorizedPaths grants = input.authorizedSourcePaths;
    const DestinationSafety::Places places = co_await mediaPlaces(projectMedia(rows, input));
    const auto verdicts = co_await verifyAhead(anchorsOf(rows, grants), m_cancelToken);
    co_return std::make_shared<const ExportRunContext>(
        ExportRunContext{.input = input,
                         .total = int(rows.size()),
                         .grants = {.projectFolder = input.projectFolder,
                                    .authorizedSourcePaths = grants,
                                    .mediaRootAuthorized = input.mediaRootAuthorized,
                                    .preverifiedAnchors = verdicts},
                         .mediaPlaces = places,
                         .cancelToken = m_cancelToken,
                         .onProgress = std::move(onProgress),
                         .sessions = m_sessions,
                         .clock = m_clock});
}

} // namespace corvane

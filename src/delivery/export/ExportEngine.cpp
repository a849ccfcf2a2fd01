#include "delivery/export/ExportEngine.h"

#include "delivery/export/ExportRowRunner.h"
#include "delivery/export/ManifestWriter.h"
#include "platform/FileSystem.h"
#include "platform/Paths.h"
#include "platform/SerialExecutor.h"
#include "platform/TextFormat.h"
#include "transfer/DestinationSafety.h"
#include "transfer/Leftovers.h"

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

/// Opens the folder of the outputs and creates it and the folder of the HD copies if they are
/// missing. Removes what a killed run left there. A link in place of the latter is left to the
/// rows, which refuse it.
OpenFolder openOutputFolder(const QString &path, OutputMode outputMode, const QDateTime &now) {
    const QString hdName = QStringLiteral("HD");
    fileSystem().createFolders(path);
    OpenFolder folder = OpenFolder::at(paths::standardized(path));
    if (outputMode == OutputMode::primaryAndHd) {
        const auto existing = fileSystem().linkStatusAt(folder.descriptor(), hdName);
        if (!existing || existing->type != FileType::SymbolicLink) {
            Leftovers::removeFrom(folder.subfolder(hdName), now);
        }
    }
    Leftovers::removeFrom(folder, now);
    Leftovers::removeFromTemporaryFolder(now);
    return folder;
}

bool isEncoded(const ExportRowJob &row, const ExportBatchInput &input) {
    return input.mode != ExportBatch::Mode::fastCopy || row.kind == ExportRowKind::subclip ||
           input.outputMode != OutputMode::primaryOnly;
}

/// Returns why the private copy of a source that is to be encoded doesn't fit into the folder;
/// nullopt if all fit. Leaves out sources on the same volume, which may be able to share their
/// bytes, and a volume that doesn't report its free space.
std::optional<QString> lackOfRoom(const OpenFolder &folder, const QList<ExportRowJob> &rows,
                                  const ExportBatchInput &input) {
    const quint64 device = fileSystem().status(folder.descriptor()).device;
    FileStatus largest;
    QString name;
    for (const ExportRowJob &row : rows) {
        const auto status =
            isEncoded(row, input) ? fileSystem().linkStatus(row.sourcePath) : std::nullopt;
        if (status && status->device != device && status->size > largest.size) {
            largest = *status;
            name = row.originalFilename;
        }
    }
    const qint64 available =
        largest.size > 0 ? fileSystem().availableBytes(folder.anchoredPath()) : 0;
    if (largest.size <= available) {
        return std::nullopt;
    }
    return QStringLiteral("There isn't enough room in %1: encoding %2 needs a private copy of %3 "
                          "there, and %4 are free. No file was written. Make room or pick another "
                          "export folder, then run the export again.")
        .arg(folder.path(), name, formattedByteCount(quint64(largest.size)),
             formattedByteCount(quint64(available)));
}

/// The open folder of the outputs, or the result of a run that is refused.
using Preparation = std::variant<OpenFolder, ExportBatchResult>;

QCoro::Task<Preparation> prepare(ExportBatchInput input, QList<ExportRowJob> rows) {
    try {
        co_await userInitiatedExecutor().run([&] { refuseProxies(rows); });
    } catch (const std::exception &error) {
        co_return refusal(rows, QStringLiteral("Proxy invariant: ") + describe(error),
                          QStringLiteral("skipped manifest — batch aborted by proxy invariant"));
    }
    std::optional<QString> problem;
    try {
        const OpenFolder folder = co_await userInitiatedExecutor().run([&] {
            return openOutputFolder(input.outputFolder, input.outputMode, input.completedAt);
        });
        problem =
            co_await userInitiatedExecutor().run([&] { return lackOfRoom(folder, rows, input); });
        if (!problem) {
            co_return folder;
        }
    } catch (const std::exception &error) {
        co_return refusal(
            rows,
            QStringLiteral("create output folder: %1: %2").arg(input.outputFolder, describe(error)),
            QStringLiteral("skipped manifest — output folder unwritable"));
    }
    co_return refusal(rows, *problem, QStringLiteral("skipped manifest — not enough room"));
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
    co_await context->maker.finish();
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
    const Preparation preparation = co_await prepare(input, rows);
    ExportBatchResult result;
    if (const auto *folder = std::get_if<OpenFolder>(&preparation)) {
        const auto context = co_await makeContext(input, *folder, rows, std::move(onProgress));
        result = co_await runRows(context, rows);
        try {
            result.manifestSidecarPath =
                co_await ManifestWriter::write(*folder, input, result.succeeded, result.failed);
        } catch (const std::exception &error) {
            result.manifestError = QStringLiteral("manifest write: ") + describe(error);
        }
    } else {
        result = std::get<ExportBatchResult>(preparation);
    }
    endRun();
    co_return result;
}

/// Hashes the sources ahead of the rows. Hashing stops, even within a file, when the run is
/// cancelled: no row has begun then.
QCoro::Task<std::shared_ptr<const ExportRunContext>>
ExportEngine::makeContext(ExportBatchInput input, OpenFolder folder, QList<ExportRowJob> rows,
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
                         .folder = folder,
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

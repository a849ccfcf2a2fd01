#include "delivery/export/ExportRowRunner.h"

#include "platform/Paths.h"
#include "platform/SerialExecutor.h"
#include "transfer/DestinationSafety.h"
#include "transfer/ImportCopier.h"
#include "transfer/ProgressPoll.h"
#include "transfer/SidecarCopier.h"

#include <atomic>

namespace corvane {

namespace {

using media::ExportPreset;
using Phase = ExportProgress::Phase;

constexpr std::chrono::milliseconds kByteProgressInterval{50};

/// Ends a row with a finished text.
class RowError : public Failure {
  public:
    explicit RowError(QString text, bool cancelled = false)
        : Failure(std::move(text)), cancelled(cancelled) {}

    bool cancelled;
};

/// What is told of anything that ended a row or its HD copy.
RowError asRowError(const std::exception &error) {
    if (const auto *known = dynamic_cast<const RowError *>(&error)) {
        return *known;
    }
    const auto *session = dynamic_cast<const AVExportSession::SessionError *>(&error);
    const bool isCancelled =
        dynamic_cast<const Cancelled *>(&error) ||
        (session && session->kind() == AVExportSession::SessionError::Kind::cancelled);
    return isCancelled ? RowError(kCancelledText, true) : RowError(describe(error));
}

RowError sidecarSkipped() {
    return RowError(QStringLiteral("Cancelled (sidecar skipped)"), true);
}

QString modeText(const ExportBatchInput &input) {
    return input.outputMode == OutputMode::hdOnly ? QStringLiteral("hd") : rawValue(input.mode);
}

} // namespace

ExportRowFailure failedRow(const ExportRowJob &row, const QString &error, bool cancelled) {
    return {.rowId = row.id,
            .parentVideoId = row.parentVideoId,
            .subclipId = row.subclipId,
            .destinationPath = row.destinationPath,
            .error = error,
            .cancelled = cancelled,
            .hdDestinationPath = row.hdDestinationPath};
}

ExportRowRunner::ExportRowRunner(std::shared_ptr<const ExportRunContext> context, ExportRowJob row,
                                 int index)
    : m_context(std::move(context)), m_row(std::move(row)) {
    m_progress = {.index = index,
                  .total = m_context->total,
                  .currentFilename = m_row.proposedName,
                  .kind = m_row.kind};
    m_outcome = {.rowId = m_row.id,
                 .parentVideoId = m_row.parentVideoId,
                 .subclipId = m_row.subclipId,
                 .destinationPath = m_row.destinationPath,
                 .hdDestinationPath = m_row.hdDestinationPath};
}

bool ExportRowRunner::isByteCopy() const {
    return !isHDOnly() && m_row.kind == ExportRowKind::wholeClip &&
           m_context->input.mode == ExportBatch::Mode::fastCopy;
}

bool ExportRowRunner::hasHDCopy() const {
    return m_context->input.outputMode == OutputMode::primaryAndHd && m_row.hdDestinationPath;
}

QCoro::Task<ExportRowResult> ExportRowRunner::run() {
    begin(modeText(m_context->input), isHDOnly() ? Phase::hdEncoding : Phase::starting);
    ExportRowResult result = m_outcome;
    try {
        co_await vet();
        co_await makePrimary();
        co_await deliverSidecar();
        co_await makeHDCopy();
        result = m_outcome;
    } catch (const std::exception &error) {
        const RowError told = asRowError(error);
        result = failedRow(m_row, told.description(), told.cancelled);
    }
    reportProgress(1, Phase::done);
    co_return result;
}

void ExportRowRunner::begin(const QString &mode, Phase phase) {
    m_progress.currentMode = mode;
    m_progress.bytesDone = 0;
    m_progress.bytesTotal = 0;
    reportProgress(0, phase);
}

void ExportRowRunner::reportProgress(double rowProgress, Phase phase) {
    m_progress.rowProgress = rowProgress;
    m_progress.phase = phase;
    m_context->onProgress(m_progress);
}

/// It may hash the whole source, so it doesn't run on the main thread.
QCoro::Task<> ExportRowRunner::vet() {
    co_await userInitiatedExecutor().run([this] { vetNow(); });
}

void ExportRowRunner::vetNow() const {
    const QString &folder = m_context->input.outputFolder;
    const auto vetDestination = [&](const QString &path, const QString &label) {
        DestinationSafety::assertContained(path, folder, label);
        DestinationSafety::assertNoLinkedFolder(path, folder, label);
        DestinationSafety::assertReplacesNoMedia(path, m_context->mediaPlaces);
    };
    PathSafety::validateSource(m_row.sourcePath, m_context->grants,
                               QStringLiteral("export source"));
    vetDestination(m_row.destinationPath, QStringLiteral("export destination"));
    if (m_row.hdDestinationPath) {
        vetDestination(*m_row.hdDestinationPath, QStringLiteral("HD export destination"));
    }
}

QCoro::Task<> ExportRowRunner::makePrimary() {
    if (isByteCopy()) {
        co_await copyBytes();
        co_return;
    }
    const bool isSubclip = m_row.kind == ExportRowKind::subclip;
    if (isSubclip && !m_row.range()) {
        throw RowError(QStringLiteral("subclip job missing range"));
    }
    if (isHDOnly()) {
        co_await transcode(m_row.destinationPath, ExportPreset::hd1920x1080);
        m_outcome.hdOutputPath = m_row.destinationPath;
        co_return;
    }
    const bool passesThrough = isSubclip && m_context->input.mode == ExportBatch::Mode::fastCopy;
    co_await transcode(m_row.destinationPath,
                       passesThrough ? ExportPreset::passthrough : ExportPreset::highestQuality);
}

QCoro::Task<> ExportRowRunner::copyBytes() {
    const QString folder = paths::parentFolder(paths::standardized(m_row.sourcePath));
    const auto identity =
        m_context->grants.authorizedSourcePaths.value(paths::standardized(m_row.sourcePath));
    std::atomic<quint64> bytesDone = 0;
    std::atomic<quint64> bytesTotal = 0;
    const auto look = [&] {
        m_progress.bytesDone = bytesDone;
        m_progress.bytesTotal = bytesTotal;
        const double total = double(m_progress.bytesTotal);
        reportProgress(total > 0 ? std::min(1.0, double(m_progress.bytesDone) / total) : 0,
                       Phase::inProgress);
    };
    const ProgressPoll poll(m_context->clock, kByteProgressInterval, look);
    co_await userInitiatedExecutor().run([&] {
        const auto status = fileSystem().linkStatus(m_row.sourcePath);
        bytesTotal = status ? quint64(status->size) : 0;
        ImportCopier::copy(
            m_row.sourcePath, m_row.destinationPath, ImportCopier::SourceRoot{folder, identity},
            [&](quint64 done) { bytesDone = done; }, m_context->cancelToken->stopToken());
    });
    look();
}

QCoro::Task<> ExportRowRunner::transcode(QString destination, ExportPreset preset) {
    const bool isSubclip = m_row.kind == ExportRowKind::subclip;
    const bool isHD = preset == ExportPreset::hd1920x1080;
    const AVExportSession::Transcode transcode{
        .source = m_row.sourcePath,
        .destination = std::move(destination),
        .preset = preset,
        .range = isSubclip ? m_row.range() : std::nullopt,
        .expectedIdentity =
            m_context->grants.authorizedSourcePaths.value(paths::standardized(m_row.sourcePath)),
    };
    const auto report = [this, isHD](double progress) {
        reportProgress(progress, isHD ? Phase::hdEncoding : Phase::inProgress);
    };
    co_await AVExportSession::transcodeVetted(transcode, m_context->sessions, report,
                                              m_context->cancelToken->stopToken(),
                                              m_context->clock);
}

QCoro::Task<> ExportRowRunner::deliverSidecar() {
    if (isHDOnly() || m_row.kind != ExportRowKind::wholeClip || !m_row.sidecarSource ||
        !m_row.sidecarDestination) {
        co_return;
    }
    if (m_context->cancelToken->isRequested()) {
        throw sidecarSkipped();
    }
    try {
        co_await userInitiatedExecutor().run([this] { copySidecarNow(); });
    } catch (const Cancelled &) {
        throw sidecarSkipped();
    } catch (const std::exception &error) {
        throw RowError(QStringLiteral("sidecar copy: ") + describe(error));
    }
}

void ExportRowRunner::copySidecarNow() const {
    const QString source = paths::standardized(*m_row.sidecarSource);
    const QString destination = paths::standardized(*m_row.sidecarDestination);
    if (destination != source) {
        DestinationSafety::assertReplacesNoMedia(destination, m_context->mediaPlaces);
    }
    SidecarCopier::copySidecar(source, destination, m_row.sourcePath, m_context->input.outputFolder,
                               m_context->cancelToken->stopToken());
}

/// The primary output stands, so nothing here fails the row.
QCoro::Task<> ExportRowRunner::makeHDCopy() {
    if (!hasHDCopy()) {
        co_return;
    }
    if (m_context->cancelToken->isRequested()) {
        m_outcome.hdError = kCancelledText;
        co_return;
    }
    begin(QStringLiteral("hd"), Phase::hdEncoding);
    try {
        co_await transcode(*m_row.hdDestinationPath, ExportPreset::hd1920x1080);
        m_outcome.hdOutputPath = m_row.hdDestinationPath;
    } catch (const std::exception &error) {
        m_outcome.hdError = asRowError(error).description();
    }
}

} // namespace corvane

#include "delivery/export/ExportRowRunner.h"

#include "delivery/SourceChange.h"
#include "platform/FileSystem.h"
#include "platform/Paths.h"
#include "platform/SerialExecutor.h"
#include "transfer/SidecarCopier.h"

namespace corvane {

namespace {

using media::ExportPreset;
using Phase = ExportProgress::Phase;

/// Fails a row with a finished text.
class RowError : public Failure {
  public:
    using Failure::Failure;
};

class SidecarCancelled : public RowError {
  public:
    SidecarCancelled() : RowError(QStringLiteral("Cancelled (sidecar skipped)")) {}
};

} // namespace

ExportRowFailure failedRow(const ExportRowJob &row, const QString &error, bool isCancelled) {
    return {.rowId = row.id,
            .parentVideoId = row.parentVideoId,
            .subclipId = row.subclipId,
            .destinationPath = row.destinationPath,
            .error = error,
            .cancelled = isCancelled,
            .hdDestinationPath = row.hdDestinationPath};
}

ExportRowRunner::ExportRowRunner(std::shared_ptr<const ExportRunContext> context, ExportRowJob row,
                                 int index)
    : m_context(std::move(context)), m_row(std::move(row)) {
    const QString source = paths::standardized(m_row.sourcePath);
    m_sourceRoot.path = paths::parentFolder(source);
    m_sourceRoot.identity = m_context->grants.authorizedSourcePaths.value(source);
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

QCoro::Task<ExportRowResult> ExportRowRunner::run() {
    startProgress(isHDOnly() ? QStringLiteral("hd") : rawValue(m_context->input.mode),
                  isHDOnly() ? Phase::hdEncoding : Phase::starting);
    ExportRowResult result;
    try {
        co_await userInitiatedExecutor().run([this] { validatePaths(); });
        co_await makePrimary();
        co_await copySidecar();
        co_await makeHDCopy();
        co_await userInitiatedExecutor().run([this] { assertOutputsInPlace(); });
        result = m_outcome;
    } catch (const Cancelled &) {
        result = failedRow(m_row, kCancelledText, true);
    } catch (const SidecarCancelled &error) {
        result = failedRow(m_row, error.description(), true);
    } catch (const std::exception &error) {
        m_isSourceChanged = m_isSourceChanged || isSourceChange(error);
        result = failedRow(m_row, describe(error));
    }
    reportProgress(1, Phase::done);
    co_return result;
}

void ExportRowRunner::startProgress(const QString &mode, Phase phase) {
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

/// May hash the entire source, so it runs on an executor.
void ExportRowRunner::validatePaths() {
    assertInPlace(m_context->folder);
    refuseTooLarge();
    PathSafety::validateSource(m_row.sourcePath, m_context->grants,
                               QStringLiteral("export source"));
    m_primary = validatedDestination(m_row.destinationPath, QStringLiteral("export destination"));
    if (m_row.hdDestinationPath) {
        m_hd =
            validatedDestination(*m_row.hdDestinationPath, QStringLiteral("HD export destination"));
    }
}

Destination ExportRowRunner::validatedDestination(const QString &path, const QString &label) const {
    const QString &folder = m_context->input.outputFolder;
    DestinationSafety::assertContained(path, folder, label);
    DestinationSafety::assertNoLinkedFolder(path, folder, label);
    Destination destination =
        Destination::below(m_context->folder, path, Placing::mayReplaceRegular);
    DestinationSafety::assertReplacesNoMedia(destination, m_context->protectedFiles);
    return destination;
}

/// Outputs may be in subfolders, which can be replaced on their own.
void ExportRowRunner::assertOutputsInPlace() const {
    assertInPlace(m_context->folder);
    assertInPlace(m_primary->folder);
    if (m_hd) {
        assertInPlace(m_hd->folder);
    }
}

/// Before the source is hashed. The size of an encoded output isn't known in advance.
void ExportRowRunner::refuseTooLarge() const {
    const VolumeLimits &limits = m_context->input.volumeLimits;
    const auto status = fileSystem().linkStatus(m_row.sourcePath);
    const bool isByteCopy =
        m_context->input.mode == ExportBatch::Mode::fastCopy && !isHDOnly() && !isSubclip();
    if (isByteCopy && status && !limits.allowsSize(status->size)) {
        throw RowError(tooLargeText(m_row.originalFilename, status->size, *limits.maxFileSize));
    }
}

QCoro::Task<> ExportRowRunner::makePrimary() {
    const bool isFastCopy = m_context->input.mode == ExportBatch::Mode::fastCopy;
    std::optional<ExportPreset> preset;
    if (isHDOnly()) {
        preset = ExportPreset::hd1920x1080;
    } else if (!isFastCopy) {
        preset = ExportPreset::highestQuality;
    } else if (isSubclip()) {
        preset = ExportPreset::passthrough;
    }
    if (isSubclip() && !m_row.range()) {
        throw RowError(QStringLiteral("subclip job missing range"));
    }
    co_await makeOutput(*m_primary, preset);
    if (isHDOnly()) {
        m_outcome.hdOutputPath = m_row.destinationPath;
    }
}

QCoro::Task<> ExportRowRunner::makeOutput(Destination destination,
                                          std::optional<ExportPreset> preset) {
    const Phase phase = preset == ExportPreset::hd1920x1080 ? Phase::hdEncoding : Phase::inProgress;
    const auto report = [this, phase](const OutputProgress &progress) {
        m_progress.bytesDone = progress.bytesDone;
        m_progress.bytesTotal = progress.bytesTotal;
        reportProgress(progress.fraction, phase);
    };
    co_await m_context->maker.make({.source = m_row.sourcePath,
                                    .sourceRoot = m_sourceRoot,
                                    .destination = std::move(destination),
                                    .preset = preset,
                                    .range = isSubclip() ? m_row.range() : std::nullopt},
                                   report);
}

QCoro::Task<> ExportRowRunner::copySidecar() {
    if (isHDOnly() || isSubclip() || !m_row.sidecarSource || !m_row.sidecarDestination) {
        co_return;
    }
    if (m_context->cancelToken->isRequested()) {
        throw SidecarCancelled();
    }
    try {
        co_await userInitiatedExecutor().run([this] {
            const QString source = paths::standardized(*m_row.sidecarSource);
            const QString destination = paths::standardized(*m_row.sidecarDestination);
            const OpenFolder &folder = m_context->folder;
            const auto placing = Placing::mayReplaceRegular;
            if (destination != source && paths::isBelow(destination, folder.path())) {
                DestinationSafety::assertReplacesNoMedia(
                    Destination::below(folder, destination, placing), m_context->protectedFiles);
            }
            SidecarCopier::copySidecar(source, destination, m_sourceRoot, folder, placing,
                                       m_context->cancelToken->stopToken());
        });
    } catch (const Cancelled &) {
        throw SidecarCancelled();
    } catch (const std::exception &error) {
        throw RowError(QStringLiteral("sidecar copy: ") + describe(error));
    }
}

/// A failure does not fail the row, because the primary output is complete.
QCoro::Task<> ExportRowRunner::makeHDCopy() {
    if (m_context->input.outputMode != OutputMode::primaryAndHd || !m_hd) {
        co_return;
    }
    if (m_context->cancelToken->isRequested()) {
        m_outcome.hdError = kCancelledText;
        co_return;
    }
    startProgress(QStringLiteral("hd"), Phase::hdEncoding);
    try {
        co_await makeOutput(*m_hd, ExportPreset::hd1920x1080);
        m_outcome.hdOutputPath = m_row.hdDestinationPath;
    } catch (const std::exception &error) {
        m_isSourceChanged = m_isSourceChanged || isSourceChange(error);
        m_outcome.hdError = describe(error);
    }
}

} // namespace corvane

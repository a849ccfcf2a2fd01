#pragma once

#include "delivery/export/ExportRow.h"
#include "transfer/CancelToken.h"
#include "transfer/DestinationSafety.h"
#include "transfer/OutputMaker.h"
#include "trust/PathSafety.h"

#include <QCoroTask>

#include <memory>
#include <variant>

namespace corvane {

/// Shared by all rows of one run.
struct ExportRunContext {
    ExportBatchInput input;
    OpenFolder folder; ///< of the outputs
    int total = 0;     ///< rows
    PathSafety::SourceGrants grants;
    DestinationSafety::FileLocations protectedFiles;
    std::shared_ptr<CancelToken> cancelToken;
    ExportProgressHandler onProgress;
    OutputMaker maker;
};

using ExportRowResult = std::variant<ExportRowOutcome, ExportRowFailure>;

ExportRowFailure failedRow(const ExportRowJob &row, const QString &error, bool isCancelled = false);

/// Runs one row: validates its paths, makes the primary output, copies the sidecar and makes the HD
/// copy. Main thread; file access runs on executors. Must outlive the task of `run`.
class ExportRowRunner {
  public:
    ExportRowRunner(std::shared_ptr<const ExportRunContext> context, ExportRowJob row, int index);

    /// Never throws.
    QCoro::Task<ExportRowResult> run();
    /// True if an output was refused because the source is no longer the granted file.
    bool isSourceChanged() const { return m_isSourceChanged; }

  private:
    void validatePaths();
    void refuseTooLarge() const;
    void assertOutputsInPlace() const;
    Destination validatedDestination(const QString &path, const QString &label) const;
    QCoro::Task<> makePrimary();
    QCoro::Task<> copySidecar();
    QCoro::Task<> makeHDCopy();
    QCoro::Task<> makeOutput(Destination destination, std::optional<media::ExportPreset> preset);
    void startProgress(const QString &mode, ExportProgress::Phase phase);
    void reportProgress(double rowProgress, ExportProgress::Phase phase);

    bool isHDOnly() const { return m_context->input.outputMode == OutputMode::hdOnly; }
    bool isSubclip() const { return m_row.kind == ExportRowKind::subclip; }

    std::shared_ptr<const ExportRunContext> m_context;
    ExportRowJob m_row;
    ImportCopier::SourceRoot m_sourceRoot;
    std::optional<Destination> m_primary; ///< set by `validatePaths`, as the next
    std::optional<Destination> m_hd;      ///< nullopt without an HD copy
    ExportProgress m_progress;
    ExportRowOutcome m_outcome;
    bool m_isSourceChanged = false;
};

} // namespace corvane

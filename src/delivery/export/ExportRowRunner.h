#pragma once

#include "delivery/ExportRow.h"
#include "transfer/AVExportSession.h"
#include "transfer/CancelToken.h"
#include "transfer/DestinationSafety.h"
#include "trust/PathSafety.h"

#include <QCoroTask>

#include <memory>
#include <variant>

namespace corvane {

/// What all rows of one run share.
struct ExportRunContext {
    ExportBatchInput input;
    int total = 0; ///< rows
    PathSafety::SourceGrants grants;
    DestinationSafety::Places mediaPlaces; ///< of the files that no output may replace
    std::shared_ptr<CancelToken> cancelToken;
    ExportProgressHandler onProgress;
    media::ExportSessionFactory &sessions;
    Clock &clock;
};

using ExportRowResult = std::variant<ExportRowOutcome, ExportRowFailure>;

/// A failure of the row with this text; with `cancelled` it is none of the row's own.
ExportRowFailure failedRow(const ExportRowJob &row, const QString &error, bool cancelled = false);

/// Runs one row: vets its source and destinations, makes the primary output, copies the sidecar,
/// makes the HD copy. Main thread; it leaves it for everything that touches a file. It must live
/// until the task of `run` is done.
class ExportRowRunner {
  public:
    ExportRowRunner(std::shared_ptr<const ExportRunContext> context, ExportRowJob row, int index);

    /// Never throws.
    QCoro::Task<ExportRowResult> run();

  private:
    QCoro::Task<> vet();
    QCoro::Task<> makePrimary();
    QCoro::Task<> copyBytes();
    QCoro::Task<> transcode(QString destination, media::ExportPreset preset);
    QCoro::Task<> deliverSidecar();
    QCoro::Task<> makeHDCopy();
    void vetNow() const;
    void copySidecarNow() const;
    void begin(const QString &mode, ExportProgress::Phase phase);
    void reportProgress(double rowProgress, ExportProgress::Phase phase);

    bool isHDOnly() const { return m_context->input.outputMode == OutputMode::hdOnly; }
    bool isByteCopy() const;
    bool hasHDCopy() const;

    std::shared_ptr<const ExportRunContext> m_context;
    ExportRowJob m_row;
    ExportProgress m_progress;
    ExportRowOutcome m_outcome;
};

} // namespace corvane

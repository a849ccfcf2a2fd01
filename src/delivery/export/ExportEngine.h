#pragma once

#include "delivery/export/ExportRow.h"
#include "media/ExportSession.h"
#include "platform/Clock.h"
#include "transfer/CancelToken.h"

#include <QCoroTask>

namespace corvane {

struct ExportRunContext;

/// Runs the planned rows of an export one after another and writes the manifest. A failed row does
/// not stop the others, and a run never throws.
///
/// Main thread; file access runs on executors. The engine must outlive the task of `run`.
class ExportEngine {
  public:
    explicit ExportEngine(media::ExportSessionFactory &sessions, Clock &clock = Clock::system());

    /// One run at a time. `cancelToken` may be requested before the run.
    QCoro::Task<ExportBatchResult>
    run(ExportBatchInput input, QList<ExportRowJob> rows, ExportProgressHandler onProgress,
        std::shared_ptr<CancelToken> cancelToken = std::make_shared<CancelToken>());

    /// The first call lets the current output finish, the second aborts it. A no-op before a run.
    void requestCancel();
    /// Aborts the current output. A no-op before a run.
    void abort();

    bool isRunning() const { return m_isRunning; }
    /// Token of the current or last run; nullptr before the first.
    const std::shared_ptr<CancelToken> &cancelToken() const { return m_cancelToken; }

  private:
    QCoro::Task<std::shared_ptr<const ExportRunContext>>
    makeContext(ExportBatchInput input, QList<ExportRowJob> rows, ExportProgressHandler onProgress);

    media::ExportSessionFactory &m_sessions;
    Clock &m_clock;
    std::shared_ptr<CancelToken> m_cancelToken;
    bool m_isRunning = false;
};

} // namespace corvane

#pragma once

#include "delivery/ExportRow.h"
#include "media/ExportSession.h"
#include "platform/Clock.h"
#include "transfer/CancelToken.h"

#include <QCoroTask>

namespace corvane {

struct ExportRunContext;

/// Runs the planned rows of one export, one after another, and tells what became of each. A bad row
/// never stops the others, and a run never throws.
///
/// Main thread; it leaves it for everything that touches a file. The engine must live until the
/// task of `run` is done.
class ExportEngine {
  public:
    explicit ExportEngine(media::ExportSessionFactory &sessions, Clock &clock = Clock::system());

    /// One run at a time.
    QCoro::Task<ExportBatchResult> run(ExportBatchInput input, QList<ExportRowJob> rows,
                                       ExportProgressHandler onProgress);

    /// The first call lets the output in hand finish, the second aborts it. Nothing before a run.
    void requestCancel();
    /// Aborts the output in hand at once.
    void abort();

    bool isRunning() const { return m_isRunning; }
    /// The last run's; absent before one.
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

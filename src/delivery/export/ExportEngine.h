#pragma once

#include "delivery/DeliveryEngine.h"
#include "delivery/export/ExportRow.h"
#include "media/ExportSession.h"
#include "platform/Clock.h"
#include "platform/OpenFolder.h"

#include <QCoroTask>

namespace corvane {

struct ExportRunContext;

/// Runs the planned rows of an export one after another and writes the manifest. A failed row does
/// not stop the others, and a run never throws. The output folder is opened once; rows fail while
/// its path leads elsewhere. A first cancel request lets the current output finish, a second one
/// aborts it.
///
/// Main thread; file access runs on executors. The engine must outlive the task of `run`.
class ExportEngine : public DeliveryEngine {
  public:
    explicit ExportEngine(media::ExportSessionFactory &sessions, Clock &clock = Clock::system());

    /// One run at a time. `cancelToken` may be requested before the run.
    QCoro::Task<ExportBatchResult> run(ExportBatchInput input, QList<ExportRowJob> rows,
                                       ExportProgressHandler onProgress,
                                       std::shared_ptr<CancelToken> cancelToken);

  private:
    QCoro::Task<std::shared_ptr<const ExportRunContext>>
    makeContext(ExportBatchInput input, OpenFolder folder, QList<ExportRowJob> rows,
                ExportProgressHandler onProgress);

    media::ExportSessionFactory &m_sessions;
    Clock &m_clock;
};

} // namespace corvane

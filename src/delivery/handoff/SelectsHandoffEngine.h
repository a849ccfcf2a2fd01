#pragma once

#include "delivery/DeliveryEngine.h"
#include "delivery/handoff/CacheFunctions.h"
#include "delivery/handoff/HandoffPlan.h"
#include "media/ExportSession.h"
#include "platform/Clock.h"
#include "trust/MediaSourceAuthorization.h"

#include <QCoroTask>

namespace corvane {

/// Builds one self-contained package from a plan: the media of the selected items, their cached
/// images, and a project file whose paths are relative to the package. Changes neither the source
/// project nor existing files at the destination.
///
/// The package always contains a project file that opens. Its notes say that it is unfinished,
/// until everything else is on disk and the final file replaces it. A failed clip does not stop the
/// others, and a run never throws. However often cancellation is requested, the current output
/// finishes; only `abort` aborts it. In both cases the package is completed with what was made.
///
/// Main thread; file access runs on executors. The engine and the objects passed to it must outlive
/// the task of `run`.
class SelectsHandoffEngine : public DeliveryEngine {
  public:
    SelectsHandoffEngine(MediaSourceAuthorization &authorization,
                         media::ExportSessionFactory &sessions, CacheFunctions cache = {},
                         Clock &clock = Clock::system());

    /// One run at a time. `cancelToken` may be requested before the run.
    QCoro::Task<HandoffResult> run(HandoffPlan plan, HandoffProgressHandler onProgress,
                                   std::shared_ptr<CancelToken> cancelToken);

  private:
    MediaSourceAuthorization &m_authorization;
    media::ExportSessionFactory &m_sessions;
    CacheFunctions m_cache;
    Clock &m_clock;
};

} // namespace corvane

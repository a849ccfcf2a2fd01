#pragma once

#include "delivery/handoff/CacheMaker.h"
#include "delivery/handoff/HandoffPlan.h"
#include "media/ExportSession.h"
#include "platform/Clock.h"
#include "transfer/CancelToken.h"
#include "trust/MediaSourceAuthorization.h"

#include <QCoroTask>

namespace corvane {

struct HandoffRun;

/// Builds one self-contained package from a plan: the media of the chosen items, their derived
/// pictures, and a project file whose paths are relative to the package. The source project isn't
/// touched, and neither is anything that was at the destination.
///
/// At any moment of a run the package holds a project file that opens: first one that says in its
/// notes that it is unfinished, and as the last step of all, when everything else is on the disk,
/// the real one. A bad clip never stops the others, and a run never throws.
///
/// Main thread; it leaves it for everything that touches a file. The engine, and what it is given,
/// must live until the task of `run` is done.
class SelectsHandoffEngine {
  public:
    SelectsHandoffEngine(MediaSourceAuthorization &authorization,
                         media::ExportSessionFactory &sessions, CacheMaker &cacheMaker,
                         Clock &clock = Clock::system());

    /// One run at a time.
    QCoro::Task<HandoffResult> run(HandoffPlan plan, HandoffProgressHandler onProgress);

    /// However often it is called, the output in hand is finished and nothing further is begun.
    /// Nothing before a run.
    void requestCancel();
    /// Aborts the output in hand at once; what was made until then is still completed.
    void abort();

    bool isRunning() const { return m_isRunning; }
    /// The last run's; absent before one.
    const std::shared_ptr<CancelToken> &cancelToken() const { return m_cancelToken; }

  private:
    QCoro::Task<Project> begin(std::shared_ptr<HandoffRun> run);

    MediaSourceAuthorization &m_authorization;
    media::ExportSessionFactory &m_sessions;
    CacheMaker &m_cacheMaker;
    Clock &m_clock;
    std::shared_ptr<CancelToken> m_cancelToken;
    std::stop_source m_abort;
    bool m_isRunning = false;
};

} // namespace corvane

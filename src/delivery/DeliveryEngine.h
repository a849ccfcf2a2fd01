#pragma once

#include "transfer/CancelToken.h"

#include <memory>

namespace corvane {

/// The state that all engines share: whether a run is in progress, and its cancellation. Main
/// thread.
class DeliveryEngine {
  public:
    /// Raises the cancel stage by one step. A no-op before a run.
    void requestCancel() {
        if (m_cancelToken) {
            m_cancelToken->request();
        }
    }
    bool isRunning() const { return m_isRunning; }
    /// Token of the current or last run; nullptr before the first.
    const std::shared_ptr<CancelToken> &cancelToken() const { return m_cancelToken; }

  protected:
    ~DeliveryEngine() = default;

    void startRun(std::shared_ptr<CancelToken> cancelToken) {
        m_cancelToken = std::move(cancelToken);
        m_isRunning = true;
    }
    void endRun() { m_isRunning = false; }

  private:
    std::shared_ptr<CancelToken> m_cancelToken;
    bool m_isRunning = false;
};

} // namespace corvane

#pragma once

#include <QString>

#include <mutex>
#include <stop_token>

namespace corvane {

/// The error text of a cancelled output.
inline const QString kCancelledText = QStringLiteral("Cancelled");

enum class CancelStage {
    none,
    graceful, ///< finish the current output, start no other
    hard,     ///< abort the current output
};

/// The cancellation of one run. Its stage never decreases. Thread-safe.
class CancelToken {
  public:
    CancelStage stage() const;
    bool isRequested() const { return stage() != CancelStage::none; }

    /// Raises the stage by one step and returns it.
    CancelStage request();
    /// Raises the stage to `hard`.
    void abort();

    /// Stops on the first request, for work that makes no output.
    std::stop_token requestToken() const { return m_requested.get_token(); }
    /// Stops when the stage becomes `hard`.
    std::stop_token stopToken() const { return m_stop.get_token(); }
    /// Stops when `abort` is called, but not on a second `request`.
    std::stop_token abortToken() const { return m_abort.get_token(); }

  private:
    mutable std::mutex m_mutex;
    CancelStage m_stage = CancelStage::none;
    std::stop_source m_requested;
    std::stop_source m_stop;
    std::stop_source m_abort;
};

} // namespace corvane

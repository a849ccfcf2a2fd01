#pragma once

#include <QString>

#include <mutex>
#include <stop_token>

namespace corvane {

/// The error text of an output that was cancelled.
inline const QString kCancelledText = QStringLiteral("Cancelled");

enum class CancelStage {
    none,
    graceful, ///< the output in hand is finished, nothing further is begun
    hard,     ///< the output in hand is aborted too
};

/// How far the cancelling of one run has gone. It only ever goes further. Any thread.
class CancelToken {
  public:
    CancelStage stage() const;
    bool isRequested() const { return stage() != CancelStage::none; }

    /// One step further, and gives the stage reached: the second call is `hard`.
    CancelStage request();
    /// `hard` at once.
    void abort();

    /// What a transfer watches; it asks for a stop at `hard`.
    std::stop_token stopToken() const { return m_stop.get_token(); }

  private:
    mutable std::mutex m_mutex;
    CancelStage m_stage = CancelStage::none;
    std::stop_source m_stop;
};

} // namespace corvane

#pragma once

#include <QSocketNotifier>

#include <array>
#include <csignal>
#include <functional>
#include <memory>

namespace corvane {

/// Handles SIGINT, SIGTERM and SIGHUP during its lifetime: instead of ending the process, each
/// calls `onInterrupt` from the event loop. A signal that was ignored at construction stays
/// ignored. Only one object may exist at a time. Main thread.
class InterruptWatcher {
  public:
    explicit InterruptWatcher(std::function<void()> onInterrupt);
    ~InterruptWatcher();
    Q_DISABLE_COPY_MOVE(InterruptWatcher)

    bool wasInterrupted() const { return m_wasInterrupted; }

  private:
    void drain();

    std::function<void()> m_onInterrupt;
    int m_pipe[2] = {-1, -1}; ///< the signal handler writes a byte for each signal
    std::unique_ptr<QSocketNotifier> m_notifier;
    std::array<struct sigaction, 3> m_previous{};
    bool m_wasInterrupted = false;
};

} // namespace corvane

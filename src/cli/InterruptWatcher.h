#pragma once

#include <QSocketNotifier>

#include <csignal>
#include <functional>
#include <memory>

namespace corvane {

/// While it lives, SIGINT doesn't end the process: `onInterrupt` is called from the event loop for
/// each one. At most one lives at a time. Main thread.
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
    struct sigaction m_previous = {};
    bool m_wasInterrupted = false;
};

} // namespace corvane

#include "platform/InterruptWatcher.h"

#include "platform/FileSystem.h"

#include <fcntl.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>

namespace corvane {

namespace {

std::atomic<int> interruptPipe = -1;
static_assert(std::atomic<int>::is_always_lock_free, "a signal handler must not wait for a lock");

constexpr std::array kSignals = {SIGINT, SIGTERM, SIGHUP};

/// The signal handler. A write to a full pipe fails, which is harmless: the bytes in it will wake
/// the event loop anyway.
void noteInterrupt(int) {
    const int saved = errno;
    const char byte = 0;
    [[maybe_unused]] const ssize_t written = ::write(interruptPipe, &byte, 1);
    errno = saved;
}

} // namespace

InterruptWatcher::InterruptWatcher(std::function<void()> onInterrupt)
    : m_onInterrupt(std::move(onInterrupt)) {
    if (::pipe2(m_pipe, O_CLOEXEC | O_NONBLOCK) != 0) {
        throw FileError(QStringLiteral("pipe"), errno);
    }
    m_notifier = std::make_unique<QSocketNotifier>(m_pipe[0], QSocketNotifier::Read);
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(),
                     [this] { drain(); });
    interruptPipe = m_pipe[1];
    struct sigaction action = {};
    action.sa_handler = noteInterrupt;
    action.sa_flags = SA_RESTART;
    ::sigemptyset(&action.sa_mask);
    for (size_t i = 0; i < kSignals.size(); ++i) {
        ::sigaction(kSignals.at(i), nullptr, &m_previous.at(i));
        // A parent process can have a signal ignored: nohup, a background job of a shell.
        if (m_previous.at(i).sa_handler != SIG_IGN) {
            ::sigaction(kSignals.at(i), &action, nullptr);
        }
    }
}

InterruptWatcher::~InterruptWatcher() {
    for (size_t i = 0; i < kSignals.size(); ++i) {
        ::sigaction(kSignals.at(i), &m_previous.at(i), nullptr);
    }
    interruptPipe = -1;
    m_notifier.reset();
    ::close(m_pipe[0]);
    ::close(m_pipe[1]);
}

void InterruptWatcher::drain() {
    char byte = 0;
    while (::read(m_pipe[0], &byte, 1) == 1) {
        m_wasInterrupted = true;
        m_onInterrupt();
    }
}

} // namespace corvane

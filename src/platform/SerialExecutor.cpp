#include "platform/SerialExecutor.h"

#include <pthread.h>
#include <sys/resource.h>
#include <unistd.h>

namespace corvane {

namespace {

/// On Linux the nice value is per thread, and raising it needs no privilege.
void setThreadPriority(SerialExecutor::Priority priority) {
    if (priority == SerialExecutor::Priority::Utility) {
        ::setpriority(PRIO_PROCESS, id_t(::gettid()), 10);
    }
}

} // namespace

SerialExecutor::SerialExecutor(QString name, Priority priority)
    : m_thread([this, name = std::move(name), priority] { runQueue(name, priority); }) {}

SerialExecutor::~SerialExecutor() {
    {
        const std::scoped_lock lock(m_mutex);
        m_isStopping = true;
    }
    m_wake.notify_one();
    m_thread.join();
}

void SerialExecutor::post(std::function<void()> work) {
    {
        const std::scoped_lock lock(m_mutex);
        m_queue.push_back(std::move(work));
    }
    m_wake.notify_one();
}

void SerialExecutor::runQueue(const QString &name, Priority priority) {
    ::pthread_setname_np(::pthread_self(), name.left(15).toLatin1().constData());
    setThreadPriority(priority);
    std::unique_lock lock(m_mutex);
    for (;;) {
        m_wake.wait(lock, [this] { return m_isStopping || !m_queue.empty(); });
        if (m_queue.empty()) {
            return;
        }
        const auto next = std::move(m_queue.front());
        m_queue.pop_front();
        lock.unlock();
        next();
        lock.lock();
    }
}

SerialExecutor &utilityExecutor() {
    static SerialExecutor executor(QStringLiteral("utility"), SerialExecutor::Priority::Utility);
    return executor;
}

SerialExecutor &userInitiatedExecutor() {
    static SerialExecutor executor(QStringLiteral("userInitiated"));
    return executor;
}

} // namespace corvane

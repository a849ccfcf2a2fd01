#include "platform/SerialExecutor.h"

#include "platform/ApplicationEnd.h"

#include <pthread.h>
#include <sys/resource.h>
#include <unistd.h>

#include <map>
#include <memory>
#include <string>

namespace corvane {

namespace {

/// On Linux the nice value is per thread, and raising it needs no privilege.
void setThreadPriority(SerialExecutor::Priority priority) {
    if (priority == SerialExecutor::Priority::Utility) {
        ::setpriority(PRIO_PROCESS, id_t(::gettid()), 10);
    }
}

struct SharedExecutors {
    std::mutex mutex;
    std::map<std::string, std::unique_ptr<SerialExecutor>, std::less<>> byName;
};

SharedExecutors &sharedExecutors() {
    static SharedExecutors executors;
    return executors;
}

/// Called by the destructor of the application object. Results that are posted to that object from
/// now on are dropped with it.
void endSharedExecutors() {
    decltype(SharedExecutors::byName) ended;
    {
        const std::scoped_lock lock(sharedExecutors().mutex);
        ended.swap(sharedExecutors().byName);
    }
    applicationEnd::request();
    for (const auto &[name, executor] : ended) {
        executor->discardQueue();
    }
    ended.clear();
    applicationEnd::reset();
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

void SerialExecutor::discardQueue() {
    std::deque<std::function<void()>> discarded;
    const std::scoped_lock lock(m_mutex);
    discarded.swap(m_queue);
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

SerialExecutor &sharedExecutor(const char *name, SerialExecutor::Priority priority) {
    SharedExecutors &executors = sharedExecutors();
    const std::scoped_lock lock(executors.mutex);
    if (executors.byName.empty()) {
        qAddPostRoutine(endSharedExecutors);
    }
    const auto found = executors.byName.find(name);
    if (found != executors.byName.end()) {
        return *found->second;
    }
    auto executor = std::make_unique<SerialExecutor>(QString::fromLatin1(name), priority);
    return *executors.byName.emplace(name, std::move(executor)).first->second;
}

SerialExecutor &utilityExecutor() {
    return sharedExecutor("utility", SerialExecutor::Priority::Utility);
}

SerialExecutor &userInitiatedExecutor() {
    return sharedExecutor("userInitiated");
}

} // namespace corvane

#pragma once

#include <QCoreApplication>
#include <QCoroTask>

#include <concepts>
#include <condition_variable>
#include <coroutine>
#include <deque>
#include <functional>
#include <mutex>
#include <optional>
#include <thread>

namespace corvane {

/// A thread with a queue of functions, which it runs one after the other. An object that serializes
/// its operations owns one.
///
/// `run` is called and awaited on the main thread; the coroutine resumes on the main thread with
/// the function's result or exception. The application object must outlive all awaited calls.
class SerialExecutor {
  public:
    enum class Priority {
        Normal,
        Utility, ///< lower, for background work
    };

    explicit SerialExecutor(QString name, Priority priority = Priority::Normal);
    /// Blocks until all queued functions have run.
    ~SerialExecutor();
    Q_DISABLE_COPY_MOVE(SerialExecutor)

    /// Queues a function, which must not throw. Thread-safe.
    void post(std::function<void()> work);
    /// Removes the functions that have not started. Tasks that await them never resume.
    /// Thread-safe.
    void discardQueue();

    /// Runs `work` on the executor's thread and returns its result.
    template <std::invocable Work> QCoro::Task<std::invoke_result_t<Work>> run(Work work) {
        co_return co_await Job<Work>{*this, std::move(work)};
    }

  private:
    /// An awaitable call. It lives in the coroutine's frame until the coroutine resumes. `guard`
    /// orders the executor's writes before the main thread's reads.
    template <typename Work> struct Job {
        using Result = std::invoke_result_t<Work>;
        using Stored =
            std::conditional_t<std::is_void_v<Result>, std::monostate, std::optional<Result>>;

        SerialExecutor &executor;
        Work work;
        Stored result{};
        std::exception_ptr error{};
        std::mutex guard{};

        Job(SerialExecutor &owner, Work function) : executor(owner), work(std::move(function)) {}

        bool await_ready() const noexcept { return false; }
        void await_suspend(std::coroutine_handle<> waiting) {
            executor.post([this, waiting] {
                {
                    const std::scoped_lock lock(guard);
                    execute();
                }
                QMetaObject::invokeMethod(
                    QCoreApplication::instance(), [waiting] { waiting.resume(); },
                    Qt::QueuedConnection);
            });
        }
        Result await_resume() {
            const std::scoped_lock lock(guard);
            if (error) {
                std::rethrow_exception(error);
            }
            if constexpr (!std::is_void_v<Result>) {
                return std::move(*result);
            }
        }

        void execute() noexcept {
            try {
                if constexpr (std::is_void_v<Result>) {
                    work();
                } else {
                    result.emplace(work());
                }
            } catch (...) {
                error = std::current_exception();
            }
        }
    };

    void runQueue(const QString &name, Priority priority);

    std::mutex m_mutex;
    std::condition_variable m_wake;
    std::deque<std::function<void()>> m_queue;
    bool m_isStopping = false;
    std::thread m_thread;
};

/// Returns the executor with this name, for work that belongs to no object. Its thread starts on
/// first use, with the priority of that call. It ends before the application object does: then
/// `applicationEnd` is requested, and functions that have not started are discarded. Thread-safe.
SerialExecutor &
sharedExecutor(const char *name,
               SerialExecutor::Priority priority = SerialExecutor::Priority::Normal);

/// Two shared executors for long operations: for hashing in the background, and for scans and
/// copies that the user waits for.
SerialExecutor &utilityExecutor();
SerialExecutor &userInitiatedExecutor();

} // namespace corvane

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

/// One thread with a queue: work handed to it runs in order, one piece at a time.
///
/// An object whose calls are serialised owns one. `run` is called on the main thread and awaited
/// there; the awaiting coroutine goes on on the main thread, with the value or with the exception
/// as it was thrown. The application object must live until all awaited work is done.
class SerialExecutor {
  public:
    enum class Priority {
        Normal,
        UserInitiated, ///< somebody waits for it on the screen
        Utility,       ///< gives way to everything else
    };

    explicit SerialExecutor(QString name, Priority priority = Priority::Normal);
    /// Finishes what is queued, then ends the thread.
    ~SerialExecutor();
    Q_DISABLE_COPY_MOVE(SerialExecutor)

    /// Queues work without an answer. It must not throw. May be called from any thread.
    void post(std::function<void()> work);

    /// Runs `work` on the executor's thread and gives what it returns.
    template <std::invocable Work> QCoro::Task<std::invoke_result_t<Work>> run(Work work) {
        co_return co_await Job<Work>{*this, std::move(work)};
    }

  private:
    /// Lives in the awaiting coroutine's frame until it has been resumed. `m_guard` hands the
    /// result from the executor's thread to the main thread.
    template <typename Work> struct Job {
        using Result = std::invoke_result_t<Work>;
        using Stored =
            std::conditional_t<std::is_void_v<Result>, std::monostate, std::optional<Result>>;

        SerialExecutor &executor;
        Work work;
        Stored result{};
        std::exception_ptr error{};
        std::mutex guard{};

        Job(SerialExecutor &onExecutor, Work toRun)
            : executor(onExecutor), work(std::move(toRun)) {}

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

    void work(const QString &name, Priority priority);

    std::mutex m_mutex;
    std::condition_variable m_wake;
    std::deque<std::function<void()>> m_queue;
    bool m_ending = false;
    std::thread m_thread;
};

/// The process's two executors for long work that belongs to no object: hashing ahead of need, and
/// scans and copies that a user waits for. Made at first use.
SerialExecutor &utilityExecutor();
SerialExecutor &userInitiatedExecutor();

} // namespace corvane

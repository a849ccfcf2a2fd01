#pragma once

#include <QCoroTask>
#include <QEventLoop>

#include <exception>
#include <optional>
#include <variant>

namespace corvane {

/// Runs an event loop until the task is done, and returns its result or throws its exception. For
/// code without a running event loop: the command line program and tests.
template <typename Value> Value waitUntilDone(QCoro::Task<Value> task) {
    using Stored = std::conditional_t<std::is_void_v<Value>, std::monostate, std::optional<Value>>;
    QEventLoop loop;
    Stored value{};
    std::exception_ptr error;
    bool isDone = false;
    auto wait = [&]() -> QCoro::Task<> {
        try {
            if constexpr (std::is_void_v<Value>) {
                co_await task;
            } else {
                value.emplace(co_await std::move(task));
            }
        } catch (...) {
            error = std::current_exception();
        }
        isDone = true;
        loop.quit();
    };
    auto waiting = wait();
    if (!isDone) {
        loop.exec();
    }
    if (error) {
        std::rethrow_exception(error);
    }
    if constexpr (!std::is_void_v<Value>) {
        return std::move(*value);
    }
}

/// Drops a running task, which continues without a waiter. An exception of the task is lost.
inline void detach(QCoro::Task<> task) {
    Q_UNUSED(task)
}

} // namespace corvane

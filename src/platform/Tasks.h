#pragma once

#include <QCoroTask>
#include <QEventLoop>

#include <exception>
#include <optional>
#include <variant>

namespace corvane {

/// Runs the event loop until the task is done, and gives its value or throws what it threw. For the
/// ends of the program that have no loop of their own: the headless front end and the tests.
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

/// Lets a task run on with nobody waiting. The task must handle its own failures.
inline void detach(QCoro::Task<> task) {
    Q_UNUSED(task)
}

} // namespace corvane

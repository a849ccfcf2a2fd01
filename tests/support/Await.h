#pragma once

#include "platform/Tasks.h"

namespace corvane::test {

/// Runs the event loop until the task is done; returns its result or throws its exception.
template <typename Value> Value await(QCoro::Task<Value> task) {
    return waitUntilDone(std::move(task));
}

} // namespace corvane::test

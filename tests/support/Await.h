#pragma once

#include "platform/Tasks.h"

namespace corvane::test {

/// Runs a task to its end and gives its value or throws what it threw.
template <typename Value> Value await(QCoro::Task<Value> task) {
    return waitUntilDone(std::move(task));
}

} // namespace corvane::test

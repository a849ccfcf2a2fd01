#pragma once

#include "platform/Tasks.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QTimer>

#include <functional>

namespace corvane::test {

/// Runs the event loop until the task is done; returns its result or throws its exception.
template <typename Value> Value await(QCoro::Task<Value> task) {
    return waitUntilDone(std::move(task));
}

/// Runs the event loop until the condition holds; fails after 20 s.
inline void waitUntil(const std::function<bool()> &condition) {
    const QDeadlineTimer deadline(20'000);
    QTimer wakes;
    wakes.start(5);
    while (!condition() && !deadline.hasExpired()) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents | QEventLoop::AllEvents);
    }
    EXPECT_TRUE(condition());
}

} // namespace corvane::test

#include "platform/SerialExecutor.h"
#include "platform/InstanceLock.h"
#include "support/Await.h"
#include "support/TestFolder.h"

#include <gmock/gmock.h>

using namespace corvane;
using corvane::test::await;

TEST(SerialExecutor, RunsFunctionsInOrderAndResumesOnTheCallersThread) {
    SerialExecutor executor(QStringLiteral("test"));
    std::vector<int> order;
    const auto main = std::this_thread::get_id();
    const auto task = [&]() -> QCoro::Task<int> {
        auto first = executor.run([&] { order.push_back(1); });
        auto second = executor.run([&] {
            order.push_back(2);
            return std::this_thread::get_id();
        });
        const auto worker = co_await second;
        EXPECT_NE(worker, main);
        EXPECT_EQ(std::this_thread::get_id(), main);
        co_await first;
        co_return 7;
    };
    EXPECT_EQ(await(task()), 7);
    EXPECT_EQ(order, (std::vector{1, 2}));
}

TEST(SerialExecutor, PassesExceptionsToTheCaller) {
    SerialExecutor executor(QStringLiteral("test"));
    const auto fail = []() -> int { throw Failure(QStringLiteral("as it was")); };
    EXPECT_THAT([&] { await(executor.run(fail)); }, testing::ThrowsMessage<Failure>("as it was"));
}

TEST(InstanceLock, NamesTheProcessThatHoldsTheLock) {
    const test::TestFolder folder;
    const InstanceLock first(folder.at("data"));
    const auto pid = std::to_string(QCoreApplication::applicationPid());
    EXPECT_THAT([&] { const InstanceLock second(folder.at("data")); },
                testing::ThrowsMessage<AlreadyRunning>(testing::HasSubstr(pid)));
}

#include "shell/ui/Application.h"
#include "platform/InstanceLock.h"
#include "support/TestFolder.h"

#include <gtest/gtest.h>

#include <QLocalServer>
#include <QLocalSocket>
#include <QQuickWindow>
#include <QThread>
#include <QTimer>

#include <csignal>
#include <latch>

using namespace corvane;
using namespace corvane::test;

namespace {

/// Runs `action` after this many iterations of the event loop.
void afterIterations(int iterations, QObject *context, const std::function<void()> &action) {
    QTimer::singleShot(0, context, [=] {
        if (iterations > 1) {
            afterIterations(iterations - 1, context, action);
        } else {
            action();
        }
    });
}

/// A screen whose run takes a few iterations of the event loop to stop.
class RunningScreen : public OpenProjectScreen {
  public:
    explicit RunningScreen(bool &hasEnded) : m_hasEnded(hasEnded) {}

    bool isRunning() const override { return !m_hasEnded; }
    void cancelRuns() override {
        afterIterations(5, this, [this] {
            m_hasEnded = true;
            Q_EMIT isRunningChanged();
        });
    }

  private:
    bool &m_hasEnded;
};

} // namespace

TEST(Application, WaitsForARunBeforeItQuits) {
    const std::array<std::function<void(QQuickWindow &)>, 2> waysToQuit{
        [](QQuickWindow &window) { window.close(); }, [](QQuickWindow &) { ::raise(SIGTERM); }};
    for (const auto &quit : waysToQuit) {
        const TestFolder folder;
        bool hasEnded = false;
        const auto makeScreen = [&](CorvaneApp &) {
            return std::make_unique<RunningScreen>(hasEnded);
        };
        const auto onWindowCreated = [&](QQuickWindow &window) {
            QTimer::singleShot(0, &window, [&] {
                window.property("app").value<CorvaneApp *>()->projectScreen();
                quit(window);
            });
        };
        EXPECT_EQ(runCorvane({.dataFolder = folder.path(),
                              .makeProjectScreen = makeScreen,
                              .onWindowCreated = onWindowCreated}),
                  0);
        EXPECT_TRUE(hasEnded);
    }
}

TEST(Application, KeepsRunningIfStartedAgainWhileItQuits) {
    const TestFolder folder;
    bool hasEnded = false;
    bool hasStayed = false;
    const auto makeScreen = [&](CorvaneApp &app) {
        auto screen = std::make_unique<RunningScreen>(hasEnded);
        QObject::connect(screen.get(), &OpenProjectScreen::isRunningChanged, &app, [&] {
            afterIterations(5, &app, [&] {
                hasStayed = true;
                app.quit();
            });
        });
        return screen;
    };
    const auto onWindowCreated = [&](QQuickWindow &window) {
        QTimer::singleShot(0, &window, [&] {
            auto *const app = window.property("app").value<CorvaneApp *>();
            app->projectScreen();
            app->quit();
            app->cancelQuit();
        });
    };
    EXPECT_EQ(runCorvane({.dataFolder = folder.path(),
                          .makeProjectScreen = makeScreen,
                          .onWindowCreated = onWindowCreated}),
              0);
    EXPECT_TRUE(hasEnded && hasStayed);
}

TEST(Application, RetriesTheHandoverIfTheRunningInstanceDropsTheConnection) {
    const TestFolder folder;
    const InstanceLock lock(folder.path());
    std::latch isListening(1);
    int connections = 0;
    const std::unique_ptr<QThread> runningInstance(QThread::create([&] {
        QLocalServer server;
        server.listen(folder.at("handover"));
        isListening.count_down();
        for (const bool isReady : {false, true}) {
            if (!server.waitForNewConnection(20'000)) {
                return;
            }
            ++connections;
            const std::unique_ptr<QLocalSocket> peer(server.nextPendingConnection());
            if (isReady && peer->waitForReadyRead(20'000)) {
                peer->write("\1", 1);
                peer->waitForBytesWritten(20'000);
            }
        }
    }));
    runningInstance->start();
    isListening.wait();
    EXPECT_EQ(runCorvane({.dataFolder = folder.path(), .file = QStringLiteral("/a.corvane")}), 0);
    runningInstance->wait();
    EXPECT_EQ(connections, 2);
}

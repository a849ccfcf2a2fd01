#include "shell/ui/Application.h"
#include "platform/InstanceLock.h"
#include "support/TestFolder.h"

#include <gtest/gtest.h>

#include <QLocalServer>
#include <QLocalSocket>
#include <QThread>

#include <latch>

using namespace corvane;
using namespace corvane::test;

TEST(Application, AStartAsksAgainWhereTheFirstHangsUpOnIt) {
    const TestFolder folder;
    const InstanceLock lock(folder.path());
    std::latch isListening(1);
    int asked = 0;
    const std::unique_ptr<QThread> first(QThread::create([&] {
        QLocalServer server;
        server.listen(folder.at(QStringLiteral("handover")));
        isListening.count_down();
        for (const bool isReady : {false, true}) {
            if (!server.waitForNewConnection(20'000)) {
                return;
            }
            ++asked;
            const std::unique_ptr<QLocalSocket> peer(server.nextPendingConnection());
            if (isReady && peer->waitForReadyRead(20'000)) {
                peer->write("\1", 1);
                peer->waitForBytesWritten(20'000);
            }
        }
    }));
    first->start();
    isListening.wait();
    EXPECT_EQ(runCorvane({.dataFolder = folder.path(), .file = QStringLiteral("/a.corvane")}), 0);
    first->wait();
    EXPECT_EQ(asked, 2);
}

#include <gmock/gmock.h>

#include <QCoreApplication>
#include <QStandardPaths>

/// Tests await coroutines, so there is an application object; nothing of the user's is touched,
/// because every standard folder is a test one.
int main(int argc, char **argv) {
    QStandardPaths::setTestModeEnabled(true);
    testing::InitGoogleMock(&argc, argv);
    const QCoreApplication application(argc, argv);
    return RUN_ALL_TESTS();
}

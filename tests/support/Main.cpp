#include <gmock/gmock.h>

#include <QCoreApplication>
#include <QStandardPaths>

/// Coroutines need an application object. Test mode keeps Qt's standard folders apart from the
/// user's.
int main(int argc, char **argv) {
    QStandardPaths::setTestModeEnabled(true);
    testing::InitGoogleMock(&argc, argv);
    const QCoreApplication application(argc, argv);
    return RUN_ALL_TESTS();
}

#include "kit/Look.h"

#include <gmock/gmock.h>

#include <QGuiApplication>
#include <QQuickWindow>
#include <QStandardPaths>

#include <clocale>

/// Screens are drawn in memory by the processor, so they need neither a display nor a graphics
/// card.
int main(int argc, char **argv) {
    QStandardPaths::setTestModeEnabled(true);
    testing::InitGoogleMock(&argc, argv);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_ACCESSIBILITY", "1");
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    QGuiApplication application(argc, argv);
    // Parsers of numbers below the screens are promised the C locale, and Qt has just set the
    // user's.
    std::setlocale(LC_NUMERIC, "C");
    corvane::setUpLook(application);
    return RUN_ALL_TESTS();
}

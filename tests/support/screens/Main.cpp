#include "kit/Fonts.h"

#include <gmock/gmock.h>

#include <QGuiApplication>
#include <QQuickWindow>
#include <QStandardPaths>

#include <clocale>

/// Renders in software to memory, so the tests need no display.
int main(int argc, char **argv) {
    QStandardPaths::setTestModeEnabled(true);
    testing::InitGoogleMock(&argc, argv);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_ACCESSIBILITY", "1");
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    QGuiApplication application(argc, argv);
    // Number parsers require the C locale, and QGuiApplication has set the user's.
    std::setlocale(LC_NUMERIC, "C");
    corvane::setUpFonts(application);
    return RUN_ALL_TESTS();
}

#include "kit/Fonts.h"

#include <QDBusConnection>
#include <QFont>
#include <QFontMetricsF>
#include <QGuiApplication>
#include <QQuickWindow>

namespace corvane {

namespace {

/// Disables FreeType's stem darkening, which makes the weights of CFF fonts such as Inter look
/// alike. Takes effect only before the first font is loaded.
void disableStemDarkening() {
    if (!qEnvironmentVariableIsSet("FREETYPE_PROPERTIES")) {
        qputenv("FREETYPE_PROPERTIES", "cff:darkening-parameters=500,0,1000,0,1667,0,2333,0");
    }
}

} // namespace

void setUpFonts(QGuiApplication &application) {
    disableStemDarkening();
    const QString family = QStringLiteral("Inter");
    QFont::insertSubstitution(family, QStringLiteral("DejaVu Sans"));
    QFont font(family);
    font.setPixelSize(13);
    font.setHintingPreference(QFont::PreferNoHinting);
    application.setFont(font);
    QQuickWindow::setTextRenderType(QQuickWindow::NativeTextRendering);
}

std::jthread preloadFonts() {
    return std::jthread([font = QGuiApplication::font()] {
        QFontMetricsF(font).height();
        QDBusConnection::sessionBus();
    });
}

} // namespace corvane

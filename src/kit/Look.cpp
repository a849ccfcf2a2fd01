#include "kit/Look.h"

#include <QDBusConnection>
#include <QFont>
#include <QFontMetricsF>
#include <QGuiApplication>
#include <QQuickWindow>

namespace corvane {

namespace {

/// Qt thickens the strokes of fonts like Inter, as if they were blended in linear light, and every
/// weight looks like the next. Only this turns it off, and only before the first font is loaded.
void keepWeights() {
    if (!qEnvironmentVariableIsSet("FREETYPE_PROPERTIES")) {
        qputenv("FREETYPE_PROPERTIES", "cff:darkening-parameters=500,0,1000,0,1667,0,2333,0");
    }
}

} // namespace

void setUpLook(QGuiApplication &application) {
    keepWeights();
    const QString family = QStringLiteral("Inter");
    QFont::insertSubstitution(family, QStringLiteral("DejaVu Sans"));
    QFont font(family);
    font.setPixelSize(13);
    font.setHintingPreference(QFont::PreferNoHinting);
    application.setFont(font);
    QQuickWindow::setTextRenderType(QQuickWindow::NativeTextRendering);
}

std::jthread warmUp() {
    return std::jthread([font = QGuiApplication::font()] {
        QFontMetricsF(font).height();
        QDBusConnection::sessionBus();
    });
}

} // namespace corvane

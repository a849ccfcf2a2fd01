#include "kit/Look.h"

#include <QFont>
#include <QFontMetricsF>
#include <QGuiApplication>
#include <QQuickWindow>

namespace corvane {

void setUpLook(QGuiApplication &application) {
    const QString family = QStringLiteral("Inter");
    QFont::insertSubstitution(family, QStringLiteral("DejaVu Sans"));
    QFont font(family);
    font.setPixelSize(13);
    font.setHintingPreference(QFont::PreferNoHinting);
    application.setFont(font);
    QQuickWindow::setTextRenderType(QQuickWindow::NativeTextRendering);
}

std::jthread warmUpFonts() {
    return std::jthread([font = QGuiApplication::font()] { QFontMetricsF(font).height(); });
}

} // namespace corvane

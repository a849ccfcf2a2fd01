#pragma once

#include <QList>
#include <QQmlEngine>
#include <QQuickWindow>
#include <QSize>
#include <QString>
#include <QVariantMap>

#include <functional>
#include <memory>

/// The pictures that corvane-screenshots takes.
namespace corvane {

/// One picture. `make` builds what is looked at: a window (an ApplicationWindow, say) that is shown
/// and drawn at `size`. `arrange`, where given, brings the shown window to what the picture is of,
/// and says whether that came about. What `make` needs to live as long as the window hangs below
/// it.
struct ScreenPicture {
    QString name;
    QSize size;
    std::function<std::unique_ptr<QObject>(QQmlEngine &)> make;
    std::function<bool(QQuickWindow &)> arrange = {};
};

/// A window from QML text.
std::unique_ptr<QObject> windowOf(QQmlEngine &engine, const QByteArray &qml,
                                  const QVariantMap &properties = {});

/// Runs the event loop until the condition holds, and says whether it did in the time that
/// the slowest machine should need.
bool waitUntil(const std::function<bool()> &condition);

QList<ScreenPicture> galleryPictures();
QList<ScreenPicture> shellPictures();
QList<ScreenPicture> reviewPictures();
/// They change the project that the others show, so they are taken last.
QList<ScreenPicture> flowPictures();

} // namespace corvane

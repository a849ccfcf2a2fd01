#pragma once

#include <QList>
#include <QQmlEngine>
#include <QSize>
#include <QString>
#include <QVariantMap>

#include <functional>
#include <memory>

/// The pictures that corvane-screenshots takes.
namespace corvane {

/// One picture. `make` builds what is looked at: a window (an ApplicationWindow, say) that is shown
/// and drawn at `size`. `ready`, where given, is asked again and again until what loads in the
/// background is there. What `make` needs to live as long as the window hangs below it.
struct ScreenPicture {
    QString name;
    QSize size;
    std::function<std::unique_ptr<QObject>(QQmlEngine &)> make;
    std::function<bool(QObject &)> ready = {};
};

/// A window from QML text.
std::unique_ptr<QObject> windowOf(QQmlEngine &engine, const QByteArray &qml,
                                  const QVariantMap &properties = {});

QList<ScreenPicture> galleryPictures();
QList<ScreenPicture> shellPictures();

} // namespace corvane

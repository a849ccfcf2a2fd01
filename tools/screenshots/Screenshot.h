#pragma once

#include <QList>
#include <QQmlEngine>
#include <QQuickWindow>
#include <QSize>
#include <QString>
#include <QVariantMap>

#include <functional>
#include <memory>

namespace corvane {

/// A screenshot to take.
///
/// `create` returns a window, which is shown at `size` and owns everything that it needs. `arrange`
/// then brings the visible window into the wanted state; it returns false on failure.
struct Screenshot {
    QString name;
    QSize size;
    std::function<std::unique_ptr<QObject>(QQmlEngine &)> create;
    std::function<bool(QQuickWindow &)> arrange = {};
};

/// Creates a window from QML source. Reports errors and returns nullptr if the source is invalid.
std::unique_ptr<QObject> createWindow(QQmlEngine &engine, const QByteArray &qml,
                                      const QVariantMap &properties = {});

/// Runs the event loop until the condition holds. Returns false after a generous timeout.
bool waitUntil(const std::function<bool()> &condition);

QList<Screenshot> galleryScreenshots();
QList<Screenshot> shellScreenshots();
QList<Screenshot> reviewScreenshots();
/// Import, export and handoff. They modify the shared project: take them last.
QList<Screenshot> flowScreenshots();

} // namespace corvane

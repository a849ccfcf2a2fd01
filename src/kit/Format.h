#pragma once

#include <QKeySequence>
#include <QObject>
#include <QtQml/qqmlregistration.h>
#include <QVariant>

namespace corvane {

/// Numbers, times and keys as the screens print them, for values that only a screen has. What a
/// view model knows it prints itself, with platform/TextFormat.h. Main thread.
class Format : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

  public:
    using QObject::QObject;

    /// "1 clip", "2 clips".
    Q_INVOKABLE static QString counted(int count, const QString &singular);

    /// "38%" of a fraction; what lies outside 0 to 1 is the nearer end.
    Q_INVOKABLE static QString percent(double fraction);

    /// Whether a text is a day, "2025-06-13".
    Q_INVOKABLE static bool isDay(const QString &date);

    /// An action's shortcut as people read it: "Ctrl+Shift+E". Takes a text or a standard key.
    Q_INVOKABLE static QString keys(const QVariant &shortcut);
};

} // namespace corvane

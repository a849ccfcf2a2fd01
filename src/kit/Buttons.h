#pragma once

#include <QQuickItem>
#include <QtQml/qqmlregistration.h>

namespace corvane {

/// Operations on the buttons of Qt Quick's templates that QML has no access to. Main thread.
class Buttons : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

  public:
    using QObject::QObject;

    /// Clicks a button. No-op if it is disabled.
    Q_INVOKABLE static void click(QQuickItem *button);

    /// Handles a KeyEvent that presses a button: clicks it, except on auto-repeat, and accepts the
    /// event.
    Q_INVOKABLE static void press(QQuickItem *button, QObject *keyEvent);
};

} // namespace corvane

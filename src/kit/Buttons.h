#pragma once

#include <QQuickItem>
#include <QtQml/qqmlregistration.h>

namespace corvane {

/// What the templates' buttons can do and QML can't reach. Main thread.
class Buttons : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

  public:
    using QObject::QObject;

    /// Clicks a button as the pointer would: nothing if it is disabled, its action if it has one.
    Q_INVOKABLE static void click(QQuickItem *button);
};

} // namespace corvane

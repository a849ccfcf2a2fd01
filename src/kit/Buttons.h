#pragma once

#include <QQuickItem>
#include <QtQml/qqmlregistration.h>

namespace corvane {

/// Operations on the templates' buttons that QML has no access to. Main thread.
class Buttons : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

  public:
    using QObject::QObject;

    /// Clicks a button as the pointer would. No-op if the button is disabled.
    Q_INVOKABLE static void click(QQuickItem *button);
};

} // namespace corvane

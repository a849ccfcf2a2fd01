#include "kit/Buttons.h"

#include <QCoreApplication>
#include <QKeyEvent>

namespace corvane {

void Buttons::click(QQuickItem *button) {
    if (!button || !button->isEnabled()) {
        return;
    }
    // AbstractButton has no click() before Qt 6.8.
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        QKeyEvent space(type, Qt::Key_Space, Qt::NoModifier);
        QCoreApplication::sendEvent(button, &space);
    }
}

void Buttons::press(QQuickItem *button, QObject *keyEvent) {
    if (!keyEvent->property("isAutoRepeat").toBool()) {
        click(button);
    }
    // Last, because Keys passes the keys of the click in the same object.
    keyEvent->setProperty("accepted", true);
}

} // namespace corvane

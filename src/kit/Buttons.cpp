#include "kit/Buttons.h"

#include <QCoreApplication>
#include <QKeyEvent>

namespace corvane {

void Buttons::click(QQuickItem *button) {
    if (!button || !button->isEnabled()) {
        return;
    }
    // Qt 6.4's templates offer no other way to click a button from outside.
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        QKeyEvent space(type, Qt::Key_Space, Qt::NoModifier);
        QCoreApplication::sendEvent(button, &space);
    }
}

} // namespace corvane

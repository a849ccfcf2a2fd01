#include "kit/Buttons.h"

#include <QCoreApplication>
#include <QKeyEvent>

namespace corvane {

void Buttons::click(QQuickItem *button) {
    if (!button || !button->isEnabled()) {
        return;
    }
    // The one way to a button's click that the templates of Qt 6.4 leave open from outside.
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        QKeyEvent space(type, Qt::Key_Space, Qt::NoModifier);
        QCoreApplication::sendEvent(button, &space);
    }
}

} // namespace corvane

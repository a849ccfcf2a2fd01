#include "kit/FocusItem.h"

#include <QFocusEvent>

namespace corvane {

FocusItem::FocusItem(QQuickItem *parent) : QQuickItem(parent) {
    setActiveFocusOnTab(true);
}

void FocusItem::focusInEvent(QFocusEvent *event) {
    QQuickItem::focusInEvent(event);
    const Qt::FocusReason reason = event->reason();
    setVisualFocus(reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason ||
                   reason == Qt::ShortcutFocusReason);
}

void FocusItem::focusOutEvent(QFocusEvent *event) {
    QQuickItem::focusOutEvent(event);
    setVisualFocus(false);
}

void FocusItem::setVisualFocus(bool visualFocus) {
    if (m_visualFocus != visualFocus) {
        m_visualFocus = visualFocus;
        Q_EMIT visualFocusChanged();
    }
}

} // namespace corvane

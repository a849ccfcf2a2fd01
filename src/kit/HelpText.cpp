#include "kit/HelpText.h"

#include <QMouseEvent>
#include <QQuickWindow>

#include <algorithm>

namespace corvane {

namespace {

HelpTextAttached *helpOf(QQuickItem *item) {
    return qobject_cast<HelpTextAttached *>(qmlAttachedPropertiesObject<HelpText>(item, false));
}

/// The topmost visible item at a point of the scene, enabled or not. An item that has neither
/// children nor a help text under the point still covers what lies behind it if it takes clicks.
QQuickItem *innermostAt(QQuickItem *item, QPointF scene) {
    const QPointF point = item->mapFromScene(scene);
    if (!item->isVisible() || (item->clip() && !item->contains(point))) {
        return nullptr;
    }
    QList<QQuickItem *> children = item->childItems();
    std::stable_sort(children.begin(), children.end(),
                     [](QQuickItem *a, QQuickItem *b) { return a->z() < b->z(); });
    for (auto child = children.crbegin(); child != children.crend(); ++child) {
        if (QQuickItem *found = innermostAt(*child, scene)) {
            return found;
        }
    }
    const bool counts = item->acceptedMouseButtons() != Qt::NoButton || helpOf(item);
    return counts && item->contains(point) ? item : nullptr;
}

QQuickItem *helpfulAt(QQuickWindow *window, QPointF scene) {
    QQuickItem *item = innermostAt(window->contentItem(), scene);
    while (item) {
        const HelpTextAttached *help = helpOf(item);
        if (help && !help->text().isEmpty()) {
            return item;
        }
        item = item->parentItem();
    }
    return nullptr;
}

} // namespace

HelpTextAttached::HelpTextAttached(QObject *parent) : QObject(parent) {}

void HelpTextAttached::setText(const QString &text) {
    if (m_text != text) {
        m_text = text;
        Q_EMIT textChanged();
    }
}

HelpText::HelpText(QQuickItem *parent) : QQuickItem(parent) {}

QString HelpText::text() const {
    const HelpTextAttached *help = m_due && m_under ? helpOf(m_under) : nullptr;
    return help ? help->text() : QString();
}

QQuickItem *HelpText::subject() const {
    return m_due ? m_under.data() : nullptr;
}

HelpTextAttached *HelpText::qmlAttachedProperties(QObject *object) {
    return new HelpTextAttached(object);
}

bool HelpText::eventFilter(QObject *watched, QEvent *event) {
    switch (event->type()) {
    case QEvent::MouseMove:
        pointerMoved(static_cast<QMouseEvent *>(event)->position());
        break;
    case QEvent::MouseButtonPress:
    case QEvent::KeyPress:
    case QEvent::Wheel:
        m_timer.stop();
        setDue(false);
        break;
    case QEvent::Leave:
    case QEvent::WindowDeactivate:
        rest();
        break;
    default:
        break;
    }
    return QQuickItem::eventFilter(watched, event);
}

void HelpText::itemChange(ItemChange change, const ItemChangeData &data) {
    if (change == ItemSceneChange) {
        rest();
        if (m_window) {
            m_window->removeEventFilter(this);
        }
        m_window = data.window;
        if (m_window) {
            m_window->installEventFilter(this);
        }
    }
    QQuickItem::itemChange(change, data);
}

void HelpText::timerEvent(QTimerEvent *event) {
    if (event->timerId() != m_timer.timerId()) {
        QQuickItem::timerEvent(event);
        return;
    }
    m_timer.stop();
    setDue(m_under && m_under->isVisible());
}

void HelpText::pointerMoved(QPointF position) {
    QQuickItem *under = helpfulAt(m_window, position);
    if (under == m_under) {
        return;
    }
    rest();
    m_under = under;
    if (under) {
        m_timer.start(m_delay, this);
    }
}

void HelpText::rest() {
    m_timer.stop();
    setDue(false);
    m_under = nullptr;
}

void HelpText::setDue(bool due) {
    if (m_due != due) {
        m_due = due;
        Q_EMIT shownChanged();
    }
}

} // namespace corvane

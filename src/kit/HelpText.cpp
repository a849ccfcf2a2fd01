#include "kit/HelpText.h"

#include <QMouseEvent>
#include <QQuickWindow>

#include <algorithm>

namespace corvane {

namespace {

HelpTextAttached *attachedHelp(QQuickItem *item) {
    return qobject_cast<HelpTextAttached *>(qmlAttachedPropertiesObject<HelpText>(item, false));
}

/// The topmost visible item at a scene position that accepts clicks or has a help text. Such an
/// item hides the help texts of the items behind it even if it has none itself.
QQuickItem *innermostItemAt(QQuickItem *item, QPointF scene) {
    const QPointF point = item->mapFromScene(scene);
    if (!item->isVisible() || (item->clip() && !item->contains(point))) {
        return nullptr;
    }
    QList<QQuickItem *> children = item->childItems();
    std::stable_sort(children.begin(), children.end(),
                     [](QQuickItem *a, QQuickItem *b) { return a->z() < b->z(); });
    for (auto child = children.crbegin(); child != children.crend(); ++child) {
        if (QQuickItem *found = innermostItemAt(*child, scene)) {
            return found;
        }
    }
    const bool coversItemsBehind =
        item->acceptedMouseButtons() != Qt::NoButton || attachedHelp(item);
    return coversItemsBehind && item->contains(point) ? item : nullptr;
}

QQuickItem *itemWithHelpAt(QQuickWindow *window, QPointF scene) {
    QQuickItem *item = innermostItemAt(window->contentItem(), scene);
    while (item) {
        const HelpTextAttached *help = attachedHelp(item);
        if (help && !help->text().isEmpty()) {
            return item;
        }
        item = item->parentItem();
    }
    return nullptr;
}

} // namespace

QString HelpText::text() const {
    const HelpTextAttached *help = m_isShown && m_hovered ? attachedHelp(m_hovered) : nullptr;
    return help ? help->text() : QString();
}

QQuickItem *HelpText::subject() const {
    return m_isShown ? m_hovered.data() : nullptr;
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
        setShown(false);
        break;
    case QEvent::Leave:
    case QEvent::WindowDeactivate:
        reset();
        break;
    default:
        break;
    }
    return QQuickItem::eventFilter(watched, event);
}

void HelpText::itemChange(ItemChange change, const ItemChangeData &data) {
    if (change == ItemSceneChange) {
        reset();
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
    setShown(m_hovered && m_hovered->isVisible());
}

void HelpText::pointerMoved(QPointF position) {
    QQuickItem *hovered = itemWithHelpAt(m_window, position);
    if (hovered == m_hovered) {
        return;
    }
    reset();
    m_hovered = hovered;
    if (hovered) {
        m_timer.start(m_delay, this);
    }
}

void HelpText::reset() {
    m_timer.stop();
    setShown(false);
    m_hovered = nullptr;
}

void HelpText::setShown(bool isShown) {
    if (m_isShown != isShown) {
        m_isShown = isShown;
        Q_EMIT shownChanged();
    }
}

} // namespace corvane

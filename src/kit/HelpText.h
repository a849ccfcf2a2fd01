#pragma once

#include <QBasicTimer>
#include <QPointer>
#include <QQuickItem>
#include <QtQml/qqml.h>

namespace corvane {

/// The attached property `HelpText.text`: an item's help text, empty if it has none.
class HelpTextAttached : public QObject {
    Q_OBJECT
    QML_ANONYMOUS
    Q_PROPERTY(QString text MEMBER m_text NOTIFY textChanged)

  public:
    using QObject::QObject;

    [[nodiscard]] const QString &text() const { return m_text; }

  Q_SIGNALS:
    void textChanged();

  private:
    QString m_text;
};

/// Tracks the pointer over its window and selects the help text to show: that of the innermost
/// visible item under the pointer that has one, enabled or not, once the pointer has rested on it
/// for `delay` milliseconds. A press, a key or the wheel hides the text until the pointer leaves
/// the item. One per window; HelpTip.qml displays it. Main thread.
class HelpText : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT
    QML_ATTACHED(corvane::HelpTextAttached)
    Q_PROPERTY(int delay MEMBER m_delay)
    Q_PROPERTY(QString text READ text NOTIFY shownChanged)
    Q_PROPERTY(QQuickItem *subject READ subject NOTIFY shownChanged)

  public:
    using QQuickItem::QQuickItem;

    /// The help text to display, or an empty string.
    [[nodiscard]] QString text() const;

    /// The item that `text` belongs to; null if `text` is empty.
    [[nodiscard]] QQuickItem *subject() const;

    static HelpTextAttached *qmlAttachedProperties(QObject *object);

    bool eventFilter(QObject *watched, QEvent *event) override;

  Q_SIGNALS:
    void shownChanged();

  protected:
    void itemChange(ItemChange change, const ItemChangeData &data) override;
    void timerEvent(QTimerEvent *event) override;

  private:
    void pointerMoved(QPointF position);
    void reset();
    void setShown(bool isShown);

    int m_delay = 0;
    bool m_isShown = false;
    QBasicTimer m_timer;
    QPointer<QQuickWindow> m_window;
    QPointer<QQuickItem> m_hovered;
};

} // namespace corvane

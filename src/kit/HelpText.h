#pragma once

#include <QBasicTimer>
#include <QPointer>
#include <QQuickItem>
#include <QtQml/qqml.h>

/// Help texts: what a control says about itself while the pointer rests on it.
namespace corvane {

/// `HelpText.text` on an item. An empty text is none.
class HelpTextAttached : public QObject {
    Q_OBJECT
    QML_ANONYMOUS
    Q_PROPERTY(QString text READ text WRITE setText NOTIFY textChanged)

  public:
    explicit HelpTextAttached(QObject *parent = nullptr);

    [[nodiscard]] const QString &text() const { return m_text; }
    void setText(const QString &text);

  Q_SIGNALS:
    void textChanged();

  private:
    QString m_text;
};

/// Follows the pointer over the window that holds it and names the item whose help text is due: the
/// innermost visible one under the pointer that has a text, whether it is enabled or not, once the
/// pointer has rested on it for `delay` milliseconds. A press, a key or a wheel takes the text away
/// until the pointer reaches another item. One to a window; HelpTip.qml shows what it says.
class HelpText : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT
    QML_ATTACHED(corvane::HelpTextAttached)
    Q_PROPERTY(int delay MEMBER m_delay)
    Q_PROPERTY(QString text READ text NOTIFY shownChanged)
    Q_PROPERTY(QQuickItem *subject READ subject NOTIFY shownChanged)

  public:
    explicit HelpText(QQuickItem *parent = nullptr);

    /// The text that is due, empty while none is.
    [[nodiscard]] QString text() const;

    /// The item that it belongs to, null while none is due.
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
    void rest();
    void setDue(bool due);

    int m_delay = 0;
    bool m_due = false;
    QBasicTimer m_timer;
    QPointer<QQuickWindow> m_window;
    QPointer<QQuickItem> m_under;
};

} // namespace corvane

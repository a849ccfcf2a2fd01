#pragma once

#include <QQuickItem>
#include <QtQml/qqmlregistration.h>

namespace corvane {

/// An item in the Tab order. `visualFocus` is true while it has the focus because of the keyboard.
/// For controls with an accessible role that no Qt Quick template has: templates overwrite the role
/// that QML sets. Main thread.
class FocusItem : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(bool visualFocus READ visualFocus NOTIFY visualFocusChanged)

  public:
    explicit FocusItem(QQuickItem *parent = nullptr);

    [[nodiscard]] bool visualFocus() const { return m_visualFocus; }

  Q_SIGNALS:
    void visualFocusChanged();

  protected:
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;

  private:
    void setVisualFocus(bool visualFocus);

    bool m_visualFocus = false;
};

} // namespace corvane

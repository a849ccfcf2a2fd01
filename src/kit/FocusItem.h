#pragma once

#include <QQuickItem>
#include <QtQml/qqmlregistration.h>

namespace corvane {

/// An item that takes the keyboard's focus by Tab and knows whether it has it by the keyboard, for
/// controls whose role for a reader of the screen is none of the templates': those overwrite what a
/// screen sets. Main thread.
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

#pragma once

#include <QColor>
#include <QFont>
#include <QQuickPaintedItem>
#include <QtQml/qqmlregistration.h>

namespace corvane {

/// A single line of text in tabular figures: all digits have the same width, so numbers align in
/// columns and a running time stays still. Qt 6.4's Text can't enable a font's own tabular figures.
/// TabularLabel.qml adds the theme's text styles. Main thread, except paint().
class TabularText : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString text READ text WRITE setText NOTIFY changed)
    Q_PROPERTY(QFont font READ font WRITE setFont NOTIFY changed)
    Q_PROPERTY(QColor color READ color WRITE setColor NOTIFY changed)
    /// True aligns the text to the right edge, false to the left.
    Q_PROPERTY(bool rightAligned READ rightAligned WRITE setRightAligned NOTIFY changed)

  public:
    explicit TabularText(QQuickItem *parent = nullptr);

    [[nodiscard]] const QString &text() const { return m_text; }
    void setText(const QString &text);
    [[nodiscard]] const QFont &font() const { return m_font; }
    void setFont(const QFont &font);
    [[nodiscard]] const QColor &color() const { return m_color; }
    void setColor(const QColor &color);
    [[nodiscard]] bool rightAligned() const { return m_rightAligned; }
    void setRightAligned(bool rightAligned);

    void paint(QPainter *painter) override;

  Q_SIGNALS:
    void changed();

  private:
    template <typename Value> void set(Value &field, const Value &value);

    QString m_text;
    QFont m_font;
    QColor m_color;
    bool m_rightAligned = false;
};

} // namespace corvane

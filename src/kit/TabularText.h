#pragma once

#include <QColor>
#include <QFont>
#include <QQuickPaintedItem>
#include <QtQml/qqmlregistration.h>

namespace corvane {

/// One line of text whose digits are all of one width, so that numbers stand in columns and a
/// running time doesn't shake. Text of Qt 6.4 can't ask a font for its tabular figures.
/// TabularLabel.qml gives it the theme's types. Main thread, except for paint.
class TabularText : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString text READ text WRITE setText NOTIFY changed)
    Q_PROPERTY(QFont font READ font WRITE setFont NOTIFY changed)
    Q_PROPERTY(QColor color READ color WRITE setColor NOTIFY changed)
    /// Whether the text ends at the right edge instead of beginning at the left one.
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
    template <typename Value> void change(Value &field, const Value &value);

    QString m_text;
    QFont m_font;
    QColor m_color;
    bool m_rightAligned = false;
};

} // namespace corvane

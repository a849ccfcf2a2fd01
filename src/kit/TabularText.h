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
    Q_PROPERTY(QString text MEMBER m_text NOTIFY changed)
    Q_PROPERTY(QFont font MEMBER m_font NOTIFY changed)
    Q_PROPERTY(QColor color MEMBER m_color NOTIFY changed)
    /// True aligns the text to the right edge, false to the left.
    Q_PROPERTY(bool rightAligned MEMBER m_rightAligned NOTIFY changed)

  public:
    explicit TabularText(QQuickItem *parent = nullptr);

    void paint(QPainter *painter) override;

  Q_SIGNALS:
    void changed();

  private:
    void updateSize();

    QString m_text;
    QFont m_font;
    QColor m_color;
    bool m_rightAligned = false;
};

} // namespace corvane

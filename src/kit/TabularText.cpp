#include "kit/TabularText.h"

#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace corvane {

namespace {

/// A piece of a text that is drawn at one place: a digit in its cell, or what stands between
/// digits.
struct Piece {
    QString text;
    qreal x = 0;
};

struct Line {
    QList<Piece> pieces;
    qreal width = 0;
};

qreal widestDigit(const QFontMetricsF &metrics) {
    qreal widest = 0;
    for (char digit = '0'; digit <= '9'; ++digit) {
        widest = std::max(widest, metrics.horizontalAdvance(QLatin1Char(digit)));
    }
    return widest;
}

bool isFigure(QChar letter) {
    return letter >= QLatin1Char('0') && letter <= QLatin1Char('9');
}

Line laidOut(const QString &text, const QFontMetricsF &metrics) {
    const qreal cell = widestDigit(metrics);
    Line line;
    for (qsizetype i = 0; i < text.size();) {
        qsizetype end = i + 1;
        if (isFigure(text[i])) {
            const qreal inset = (cell - metrics.horizontalAdvance(text[i])) / 2;
            line.pieces.append({QString(text[i]), line.width + inset});
            line.width += cell;
        } else {
            while (end < text.size() && !isFigure(text[end])) {
                ++end;
            }
            const QString words = text.mid(i, end - i);
            line.pieces.append({words, line.width});
            line.width += metrics.horizontalAdvance(words);
        }
        i = end;
    }
    return line;
}

} // namespace

TabularText::TabularText(QQuickItem *parent) : QQuickPaintedItem(parent) {
    setAntialiasing(true);
}

void TabularText::setText(const QString &text) {
    change(m_text, text);
}

void TabularText::setFont(const QFont &font) {
    change(m_font, font);
}

void TabularText::setColor(const QColor &color) {
    change(m_color, color);
}

void TabularText::setRightAligned(bool rightAligned) {
    change(m_rightAligned, rightAligned);
}

void TabularText::paint(QPainter *painter) {
    const QFontMetricsF metrics(m_font);
    const Line line = laidOut(m_text, metrics);
    const qreal left = m_rightAligned ? width() - line.width : 0;
    const qreal baseline = (height() - metrics.height()) / 2 + metrics.ascent();
    painter->setFont(m_font);
    painter->setPen(m_color);
    for (const Piece &piece : line.pieces) {
        painter->drawText(QPointF(left + piece.x, baseline), piece.text);
    }
}

template <typename Value> void TabularText::change(Value &field, const Value &value) {
    if (field == value) {
        return;
    }
    field = value;
    const QFontMetricsF metrics(m_font);
    setImplicitSize(std::ceil(laidOut(m_text, metrics).width), std::ceil(metrics.height()));
    update();
    Q_EMIT changed();
}

} // namespace corvane

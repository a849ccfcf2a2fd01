#include "kit/TabularText.h"

#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace corvane {

namespace {

/// Text that is drawn in one call: a single digit, or the characters between two digits.
struct TextRun {
    QString text;
    qreal x = 0;
};

struct Line {
    QList<TextRun> runs;
    qreal width = 0;
};

qreal widestDigit(const QFontMetricsF &metrics) {
    qreal widest = 0;
    for (char digit = '0'; digit <= '9'; ++digit) {
        widest = std::max(widest, metrics.horizontalAdvance(QLatin1Char(digit)));
    }
    return widest;
}

bool isDigit(QChar character) {
    return character >= QLatin1Char('0') && character <= QLatin1Char('9');
}

Line layOut(const QString &text, const QFontMetricsF &metrics) {
    const qreal digitWidth = widestDigit(metrics);
    Line line;
    for (qsizetype i = 0; i < text.size();) {
        qsizetype end = i + 1;
        if (isDigit(text[i])) {
            const qreal inset = (digitWidth - metrics.horizontalAdvance(text[i])) / 2;
            line.runs.append({QString(text[i]), line.width + inset});
            line.width += digitWidth;
        } else {
            while (end < text.size() && !isDigit(text[end])) {
                ++end;
            }
            const QString words = text.mid(i, end - i);
            line.runs.append({words, line.width});
            line.width += metrics.horizontalAdvance(words);
        }
        i = end;
    }
    return line;
}

} // namespace

TabularText::TabularText(QQuickItem *parent) : QQuickPaintedItem(parent) {
    setAntialiasing(true);
    connect(this, &TabularText::changed, this, &TabularText::updateSize);
}

void TabularText::paint(QPainter *painter) {
    const QFontMetricsF metrics(m_font);
    const Line line = layOut(m_text, metrics);
    const qreal left = m_rightAligned ? width() - line.width : 0;
    const qreal baseline = (height() - metrics.height()) / 2 + metrics.ascent();
    painter->setFont(m_font);
    painter->setPen(m_color);
    for (const TextRun &run : line.runs) {
        painter->drawText(QPointF(left + run.x, baseline), run.text);
    }
}

void TabularText::updateSize() {
    const QFontMetricsF metrics(m_font);
    setImplicitSize(std::ceil(layOut(m_text, metrics).width), std::ceil(metrics.height()));
    update();
}

} // namespace corvane

#include "kit/Format.h"

#include "platform/TextFormat.h"

#include <QDate>
#include <QKeySequence>

#include <algorithm>
#include <cmath>

namespace corvane {

QString Format::counted(int count, const QString &singular) {
    return corvane::counted(count, singular);
}

QString Format::percent(double fraction) {
    const double clamped = std::isfinite(fraction) ? std::clamp(fraction, 0.0, 1.0) : 0.0;
    return QString::number(int(clamped * 100)) + QLatin1Char('%');
}

bool Format::isDay(const QString &date) {
    return date.size() == 10 && QDate::fromString(date, Qt::ISODate).isValid();
}

QString Format::underlined(const QString &text, int index) {
    if (index < 0 || index >= text.size()) {
        return text.toHtmlEscaped();
    }
    return QStringLiteral("%1<u>%2</u>%3")
        .arg(text.left(index).toHtmlEscaped(), text.mid(index, 1).toHtmlEscaped(),
             text.mid(index + 1).toHtmlEscaped());
}

QString Format::keys(const QString &shortcut) {
    return QKeySequence::fromString(shortcut).toString(QKeySequence::NativeText);
}

} // namespace corvane

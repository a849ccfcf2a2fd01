#include "platform/TextFormat.h"

#include <QLocale>

#include <cmath>
#include <optional>

namespace corvane {

namespace {

/// A time in units of 1/`unitsPerSecond` seconds, truncated; nullopt if it is negative, non-finite
/// or too large.
std::optional<qint64> wholeUnits(double seconds, double unitsPerSecond) {
    constexpr double latest = 1e15;
    const bool isTime = seconds >= 0 && seconds < latest; // false for NaN
    return isTime ? std::optional(qint64(std::floor(seconds * unitsPerSecond))) : std::nullopt;
}

QString padded(qint64 value) {
    return QStringLiteral("%1").arg(value, 2, 10, QLatin1Char('0'));
}

} // namespace

QString formattedByteCount(quint64 bytes) {
    return QLocale::c().formattedDataSize(qint64(bytes), 1, QLocale::DataSizeSIFormat);
}

QString shortestText(double value) {
    const QString text = QString::number(value, 'g', QLocale::FloatingPointShortest);
    const bool isPlain = text.contains(QLatin1Char('.')) || text.contains(QLatin1Char('e')) ||
                         text.contains(QLatin1Char('n'));
    return isPlain ? text : text + QStringLiteral(".0");
}

QString counted(qsizetype count, const QString &singular) {
    const QString noun = count == 1 ? singular : singular + QLatin1Char('s');
    return QString::number(count) + QLatin1Char(' ') + noun;
}

QString formattedDuration(double seconds) {
    const std::optional<qint64> whole = wholeUnits(seconds, 1);
    if (!whole) {
        return QStringLiteral("\u2014");
    }
    const qint64 hours = *whole / 3600;
    const qint64 minutes = *whole / 60 % 60;
    const QString tail = QLatin1Char(':') + padded(*whole % 60);
    return hours > 0 ? QString::number(hours) + QLatin1Char(':') + padded(minutes) + tail
                     : QString::number(minutes) + tail;
}

QString formattedSubclipTime(double seconds) {
    const std::optional<qint64> hundredths = wholeUnits(seconds, 100);
    if (!hundredths) {
        return QStringLiteral("00:00");
    }
    return padded(*hundredths / 6000) + QLatin1Char(':') + padded(*hundredths / 100 % 60) +
           QLatin1Char('.') + padded(*hundredths % 100);
}

QString formattedTransportTime(double seconds) {
    const qint64 whole = wholeUnits(seconds, 1).value_or(0);
    return padded(whole / 3600) + QLatin1Char(':') + padded(whole / 60 % 60) + QLatin1Char(':') +
           padded(whole % 60);
}

QString inOneLine(QString text) {
    for (QChar &letter : text) {
        if (letter.category() == QChar::Other_Control || letter == QChar::LineSeparator ||
            letter == QChar::ParagraphSeparator) {
            letter = QLatin1Char(' ');
        }
    }
    return text;
}

QCollator fileNameCollator() {
    // The C locale's collation supports neither numeric mode nor case insensitivity.
    const QLocale user;
    QCollator collator(user.language() == QLocale::C ? QLocale(QLocale::English) : user);
    collator.setNumericMode(true);
    collator.setCaseSensitivity(Qt::CaseInsensitive);
    return collator;
}

} // namespace corvane

#include "platform/TextFormat.h"

#include <QLocale>

namespace corvane {

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

QCollator fileNameCollator() {
    // The C locale knows no collation at all, neither digits nor case.
    const QLocale user;
    QCollator collator(user.language() == QLocale::C ? QLocale(QLocale::English) : user);
    collator.setNumericMode(true);
    collator.setCaseSensitivity(Qt::CaseInsensitive);
    return collator;
}

} // namespace corvane

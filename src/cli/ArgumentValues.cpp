#include "cli/ArgumentValues.h"

#include <algorithm>
#include <cmath>

namespace corvane::argumentValues {

namespace {

bool isDigitOrPoint(QChar character) {
    return (character >= QLatin1Char('0') && character <= QLatin1Char('9')) ||
           character == QLatin1Char('.');
}

} // namespace

double seconds(const QString &text, const QString &name) {
    bool isNumber = false;
    const double value = text.toDouble(&isNumber);
    if (!isNumber || !std::isfinite(value) || !std::ranges::all_of(text, isDigitOrPoint)) {
        throw UsageError(QStringLiteral("%1 takes seconds from 0 as a decimal number, not \"%2\".")
                             .arg(name, text));
    }
    return value;
}

int rating(const QString &text, const QString &name) {
    if (text.size() != 1 || text.front() < QLatin1Char('0') || text.front() > QLatin1Char('5')) {
        throw UsageError(
            QStringLiteral("%1 takes a whole number from 0 to 5, not \"%2\".").arg(name, text));
    }
    return text.front().digitValue();
}

bool onOrOff(const QString &text, const QString &name) {
    if (text != QStringLiteral("on") && text != QStringLiteral("off")) {
        failUnknown(text, name, {QStringLiteral("on"), QStringLiteral("off")});
    }
    return text == QStringLiteral("on");
}

void failUnknown(const QString &text, const QString &name, const QStringList &known) {
    throw UsageError(QStringLiteral("%1 takes %2, not \"%3\".")
                         .arg(name, known.join(QStringLiteral(" or ")), text));
}

} // namespace corvane::argumentValues

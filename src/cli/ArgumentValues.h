#pragma once

#include "cli/Command.h"

/// The values of arguments and options. Each throws `UsageError` for a text that isn't one; `what`
/// names the argument in the message ("--rating", "IN").
namespace corvane::argumentValues {

/// Seconds from 0, as digits with a decimal point.
double seconds(const QString &text, const QString &what);
/// A whole number from 0 to 5.
int rating(const QString &text, const QString &what);
/// "on" or "off".
bool onOrOff(const QString &text, const QString &what);

[[noreturn]] void failUnknown(const QString &text, const QString &what, const QStringList &known);

/// One of the raw values of an enumeration.
template <RawRepresentable Enumeration>
Enumeration choice(const QString &text, const QString &what) {
    QStringList known;
    for (const auto &[value, raw] : RawValues<Enumeration>::table) {
        known.append(rawValue(value));
        if (known.last() == text) {
            return value;
        }
    }
    failUnknown(text, what, known);
}

} // namespace corvane::argumentValues

#pragma once

#include "cli/Command.h"

/// Parses arguments and option values. Throws `UsageError` for invalid text; `what` names the
/// argument in the message ("--rating", "IN").
namespace corvane::argumentValues {

/// Non-negative decimal seconds.
double seconds(const QString &text, const QString &what);
/// An integer from 0 to 5.
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

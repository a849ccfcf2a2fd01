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

/// A raw value of an enumeration.
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

/// Parses the value of an option with one of these functions; nullopt if the option is not set.
template <typename Parse>
auto option(const CommandCall &call, const char *name, Parse parse)
    -> std::optional<decltype(parse(QString(), QString()))> {
    if (const auto text = call.value(name)) {
        return parse(*text, QStringLiteral("--") + QLatin1String(name));
    }
    return std::nullopt;
}

} // namespace corvane::argumentValues

#pragma once

#include "cli/Command.h"

/// Parses arguments and option values. Throws `UsageError` for invalid text; `name` is how
/// the message calls the argument ("--rating", "IN").
namespace corvane::argumentValues {

/// Non-negative decimal seconds.
double seconds(const QString &text, const QString &name);
/// An integer from 0 to 5.
int rating(const QString &text, const QString &name);
/// "on" or "off".
bool onOrOff(const QString &text, const QString &name);

[[noreturn]] void failUnknown(const QString &text, const QString &name, const QStringList &known);

/// A raw value of an enumeration.
template <RawRepresentable Enumeration>
Enumeration choice(const QString &text, const QString &name) {
    QStringList known;
    for (const auto &[value, raw] : rawValues<Enumeration>) {
        known.append(rawValue(value));
        if (known.last() == text) {
            return value;
        }
    }
    failUnknown(text, name, known);
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

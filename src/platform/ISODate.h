#pragma once

#include <QByteArrayView>
#include <QDateTime>

#include <optional>

/// Dates as all JSON files hold them: ISO 8601 in UTC with milliseconds, 2026-03-01T09:30:12.345Z.
namespace corvane::isoDate {

QString toText(const QDateTime &date);

/// Writes the same text into a buffer of `kTextSize` characters without allocating memory.
constexpr qsizetype kTextSize = 24;
void write(const QDateTime &date, char *into);

/// Parses a date with or without fractional seconds, in UTC ("Z") or with an offset ("+02:00" or
/// "+0200"). Truncates to milliseconds. Returns nullopt for any other text.
std::optional<QDateTime> fromText(QByteArrayView text);

} // namespace corvane::isoDate

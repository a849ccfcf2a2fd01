#pragma once

#include <QByteArrayView>
#include <QDateTime>

#include <optional>

/// The one text form of a date in every JSON file: ISO 8601 in UTC with milliseconds,
/// 2026-03-01T09:30:12.345Z.
namespace corvane::isoDate {

QString toText(const QDateTime &date);

/// Writes the same text, 24 characters, into a buffer; for the encoder, which writes very many.
constexpr qsizetype kTextSize = 24;
void write(const QDateTime &date, char *into);

/// Reads the form with fractional seconds, then the one without; the zone is "Z" or an offset such
/// as "+02:00". Digits beyond the milliseconds are cut off. Nothing for any other text.
std::optional<QDateTime> fromText(QByteArrayView text);

} // namespace corvane::isoDate

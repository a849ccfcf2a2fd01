#pragma once

#include <QCollator>
#include <QString>

/// Numbers, times and names as the user reads them.
namespace corvane {

/// "1.2 GB", in powers of 1000.
QString formattedByteCount(quint64 bytes);

/// The shortest decimal text that parses to the same double; "3.0" for an integer.
QString shortestText(double value);

/// "1 clip", "2 clips".
QString counted(qsizetype count, const QString &singular);

/// A clip's duration, truncated to seconds: "1:54", from one hour "1:02:05". An em dash for a
/// negative or non-finite value.
QString formattedDuration(double seconds);

/// A time in a clip, truncated to hundredths: "00:41.20", "100:00.00". "00:00" for a negative or
/// non-finite value.
QString formattedSubclipTime(double seconds);

/// The player's time, truncated to seconds: "01:01:01". "00:00:00" for a negative or non-finite
/// value.
QString formattedTransportTime(double seconds);

/// Replaces control characters and line separators by spaces, for a text shown in one line.
QString inOneLine(QString text);

/// Compares file names as a file browser does: runs of digits by their value, ignoring case.
/// Constructing one is expensive; create one per sort.
QCollator fileNameCollator();

} // namespace corvane

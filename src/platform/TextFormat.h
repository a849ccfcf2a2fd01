#pragma once

#include <QCollator>
#include <QString>

/// Numbers and names as people read them.
namespace corvane {

/// "1.2 GB", in powers of 1000 as file browsers count.
QString formattedByteCount(quint64 bytes);

/// The shortest decimal text that reads back as the same double; a whole number keeps a ".0".
QString shortestText(double value);

/// "1 clip", "2 clips".
QString counted(qsizetype count, const QString &singular);

/// A clip's duration: "1:54", "1:02:05" from one hour up, in whole seconds cut off. A negative or
/// non-finite one is an em dash.
QString formattedDuration(double seconds);

/// A time in a clip, to the hundredth, cut off: "00:41.20". Minutes aren't carried into hours. A
/// negative or non-finite one is "00:00".
QString formattedSubclipTime(double seconds);

/// The transport's time, in whole seconds cut off: "01:01:01". A negative or non-finite one is
/// "00:00:00".
QString formattedTransportTime(double seconds);

/// A name or a path for a place with one line: what would break it or can't be seen is a blank.
QString inOneLine(QString text);

/// File names as a file browser orders them: digit runs by their number, case ignored. Making one
/// costs, so a sort makes one and uses it throughout.
QCollator fileNameCollator();

} // namespace corvane

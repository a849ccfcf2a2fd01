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

/// File names as a file browser orders them: digit runs by their number, case ignored. Making one
/// costs, so a sort makes one and uses it throughout.
QCollator fileNameCollator();

} // namespace corvane

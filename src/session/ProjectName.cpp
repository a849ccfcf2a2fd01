#include "session/ProjectName.h"

namespace corvane::projectName {

bool isValid(const QString &text) {
    const QString name = text.trimmed();
    return !name.isEmpty() && !name.contains(QLatin1Char('/')) &&
           !name.startsWith(QLatin1Char('.'));
}

QString fileName(const QString &name) {
    return name + QStringLiteral(".corvane");
}

QString withExtension(const QString &path) {
    return path.endsWith(QStringLiteral(".corvane"), Qt::CaseInsensitive) ? path : fileName(path);
}

} // namespace corvane::projectName

#include "platform/Paths.h"

#include "platform/FileSystem.h"

#include <QDir>

namespace corvane::paths {

QString standardized(const QString &path) {
    return QDir::cleanPath(QDir::isAbsolutePath(path) ? path : QDir::current().filePath(path));
}

QString resolvingLinks(const QString &path) {
    QString existing = QDir::isAbsolutePath(path) ? path : QDir::current().filePath(path);
    QString missing;
    while (!existing.isEmpty()) {
        try {
            const QString real = fileSystem().realPath(existing);
            return standardized(missing.isEmpty() ? real : real + QLatin1Char('/') + missing);
        } catch (const FileError &) {
            const qsizetype slash = existing.lastIndexOf(QLatin1Char('/'));
            const QString component = existing.mid(slash + 1);
            missing = missing.isEmpty() ? component : component + QLatin1Char('/') + missing;
            existing = slash > 0 ? existing.left(slash) : QString();
        }
    }
    return standardized(path);
}

QString lastComponent(const QString &path) {
    QStringView rest(path);
    while (rest.size() > 1 && rest.endsWith(QLatin1Char('/'))) {
        rest.chop(1);
    }
    return rest.size() == 1 ? rest.toString()
                            : rest.mid(rest.lastIndexOf(QLatin1Char('/')) + 1).toString();
}

QString parentFolder(const QString &path) {
    const qsizetype slash = path.lastIndexOf(QLatin1Char('/'));
    return slash <= 0 ? QStringLiteral("/") : path.left(slash);
}

QString joined(const QString &folder, const QString &name) {
    return folder.endsWith(QLatin1Char('/')) ? folder + name : folder + QLatin1Char('/') + name;
}

bool isBelow(const QString &path, const QString &folder) {
    if (folder.endsWith(QLatin1Char('/'))) {
        return path.size() > folder.size() && path.startsWith(folder);
    }
    return path.size() > folder.size() + 1 && path.startsWith(folder) &&
           path.at(folder.size()) == QLatin1Char('/');
}

StemAndExtension split(const QString &name) {
    const qsizetype point = name.lastIndexOf(QLatin1Char('.'));
    return point < 0 ? StemAndExtension{name, {}}
                     : StemAndExtension{name.left(point), name.mid(point)};
}

QString extension(const QString &path) {
    const QString last = lastComponent(path);
    const qsizetype point = last.lastIndexOf(QLatin1Char('.'));
    return point <= 0 ? QString() : last.mid(point + 1);
}

} // namespace corvane::paths

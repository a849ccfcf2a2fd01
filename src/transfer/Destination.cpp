#include "transfer/Destination.h"

#include "platform/Paths.h"

#include <QStringList>

#include <cerrno>

namespace corvane {

DestinationLost::DestinationLost(const QString &folder)
    : Failure(QStringLiteral("The folder %1 was replaced, moved or disconnected during the run, so "
                             "nothing more is written to it. Everything written before was kept. "
                             "Reconnect it or pick another folder, then try again.")
                  .arg(folder)) {}

void assertInPlace(const OpenFolder &folder) {
    if (!folder.isAtItsPath()) {
        throw DestinationLost(folder.path());
    }
}

QString Destination::path() const {
    return paths::joined(folder.path(), name);
}

Destination Destination::below(const OpenFolder &root, const QString &path, Placing placing) {
    const QString rootPath = paths::standardized(root.path());
    const QString target = paths::standardized(path);
    if (!paths::isBelow(target, rootPath)) {
        throw FileError(target, EINVAL);
    }
    QStringList names = target.mid(rootPath.size()).split(QLatin1Char('/'), Qt::SkipEmptyParts);
    Destination destination{.folder = root, .name = names.takeLast(), .placing = placing};
    for (const QString &name : std::as_const(names)) {
        destination.folder = destination.folder.subfolder(name);
    }
    return destination;
}

} // namespace corvane

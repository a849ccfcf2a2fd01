#include "delivery/handoff/SelectsHandoff.h"

#include "platform/Paths.h"

#include <cerrno>

namespace corvane::SelectsHandoff {

namespace {

constexpr int kLargestNumber = 999;

QString numbered(const QString &name, qint64 number) {
    return QStringLiteral("%1 (%2)").arg(name, QString::number(number));
}

/// Returns false if the name is taken.
bool createIfFree(const QString &name, const OpenFolder &destination) {
    assertContained(paths::joined(destination.path(), name), destination.path());
    try {
        fileSystem().createFolderAt(destination.descriptor(), name);
        return true;
    } catch (const FileError &error) {
        if (error.code() != EEXIST) {
            throw;
        }
        return false;
    }
}

} // namespace

ContainmentError ContainmentError::escapesDestination(const QString &child, const QString &parent) {
    return {Kind::escapesDestination,
            QStringLiteral("Refusing to write outside destination folder: child=%1 parent=%2")
                .arg(child, parent)};
}

ContainmentError ContainmentError::couldNotReserveFolder(const QString &name) {
    return {
        Kind::couldNotReserveFolder,
        QStringLiteral("Could not reserve a unique subfolder for \"%1\" after exhausting suffixes.")
            .arg(name)};
}

void assertContained(const QString &child, const QString &parent) {
    const QString childPath = paths::standardized(child);
    const QString parentPath = paths::standardized(parent);
    if (!paths::isBelow(childPath, parentPath)) {
        throw ContainmentError::escapesDestination(childPath, parentPath);
    }
}

OpenFolder reserveUniqueSubfolder(const QString &name, const OpenFolder &destination,
                                  const Seconds &now) {
    QString folder = name;
    for (int number = 2; !createIfFree(folder, destination); ++number) {
        if (number > kLargestNumber) {
            folder = numbered(name, now());
            if (!createIfFree(folder, destination)) {
                throw ContainmentError::couldNotReserveFolder(name);
            }
            break;
        }
        folder = numbered(name, number);
    }
    return destination.subfolder(folder);
}

} // namespace corvane::SelectsHandoff

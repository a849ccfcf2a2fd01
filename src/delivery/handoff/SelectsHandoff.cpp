#include "delivery/handoff/SelectsHandoff.h"

#include "platform/FileSystem.h"
#include "platform/Paths.h"

#include <cerrno>

namespace corvane::SelectsHandoff {

namespace {

constexpr int kLargestNumber = 999;

QString numbered(const QString &name, qint64 number) {
    return QStringLiteral("%1 (%2)").arg(name, QString::number(number));
}

/// Returns false if the name is taken.
bool createIfFree(const QString &folder, const QString &destination) {
    assertContained(folder, destination);
    try {
        fileSystem().createFolder(folder);
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

QString reserveUniqueSubfolder(const QString &name, const QString &destination,
                               const Seconds &now) {
    const QString parent = paths::standardized(destination);
    const auto candidate = [&](const QString &text) { return paths::joined(parent, text); };
    QString folder = candidate(name);
    for (int number = 2; !createIfFree(folder, parent); ++number) {
        if (number > kLargestNumber) {
            folder = candidate(numbered(name, now()));
            if (!createIfFree(folder, parent)) {
                throw ContainmentError::couldNotReserveFolder(name);
            }
            break;
        }
        folder = candidate(numbered(name, number));
    }
    return folder;
}

} // namespace corvane::SelectsHandoff

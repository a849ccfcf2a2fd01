#include "mediacache/CacheFolder.h"

#include "platform/FileSystem.h"
#include "platform/Paths.h"

#include <cerrno>

namespace corvane::cacheFolder {

namespace {

void checkFolder(const QString &path) {
    const auto existing = fileSystem().linkStatus(path);
    if (existing && existing->type != FileType::Directory) {
        throw FileError(path, existing->type == FileType::SymbolicLink ? ELOOP : ENOTDIR);
    }
}

} // namespace

void checkName(const QString &name) {
    const bool isInvalid = name.isEmpty() || name == QStringLiteral(".") ||
                           name == QStringLiteral("..") || name.contains(QLatin1Char('/'));
    if (isInvalid) {
        throw FileError(name, EINVAL);
    }
}

QString ensure(const QString &cacheRoot, const QStringList &names) {
    QString folder = cacheRoot;
    checkFolder(folder);
    for (const QString &name : names) {
        checkName(name);
        folder = paths::joined(folder, name);
        checkFolder(folder);
    }
    fileSystem().createFolders(folder);
    return folder;
}

} // namespace corvane::cacheFolder

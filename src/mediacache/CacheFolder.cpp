#include "mediacache/CacheFolder.h"

#include <cerrno>

namespace corvane::cacheFolder {

void checkName(const QString &name) {
    const bool isInvalid = name.isEmpty() || name == QStringLiteral(".") ||
                           name == QStringLiteral("..") || name.contains(QLatin1Char('/'));
    if (isInvalid) {
        throw FileError(name, EINVAL);
    }
}

OpenFolder ensure(const QString &cacheRoot, const QStringList &names) {
    const auto existing = fileSystem().linkStatus(cacheRoot);
    if (existing && existing->type != FileType::Directory) {
        throw FileError(cacheRoot, existing->type == FileType::SymbolicLink ? ELOOP : ENOTDIR);
    }
    fileSystem().createFolders(cacheRoot);
    OpenFolder folder = OpenFolder::at(cacheRoot);
    for (const QString &name : names) {
        checkName(name);
        folder = folder.subfolder(name);
    }
    return folder;
}

} // namespace corvane::cacheFolder

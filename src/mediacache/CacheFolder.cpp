#include "mediacache/CacheFolder.h"

#include "platform/FileSystem.h"
#include "platform/Paths.h"

#include <cerrno>

namespace corvane::cacheFolder {

namespace {

/// Clips' ids are names here, and a document can say anything.
void testName(const QString &name) {
    const bool leadsElsewhere = name.isEmpty() || name == QStringLiteral(".") ||
                                name == QStringLiteral("..") || name.contains(QLatin1Char('/'));
    if (leadsElsewhere) {
        throw FileError(name, EINVAL);
    }
}

void testFolder(const QString &path) {
    const auto existing = fileSystem().linkStatus(path);
    if (existing && existing->type != FileType::Directory) {
        throw FileError(path, existing->type == FileType::SymbolicLink ? ELOOP : ENOTDIR);
    }
}

} // namespace

QString ensure(const QString &cacheRoot, const QStringList &names) {
    QString folder = cacheRoot;
    testFolder(folder);
    for (const QString &name : names) {
        testName(name);
        folder = paths::joined(folder, name);
        testFolder(folder);
    }
    fileSystem().createFolders(folder);
    return folder;
}

} // namespace corvane::cacheFolder

#pragma once

#include "platform/OpenFolder.h"

#include <QStringList>

/// Folders inside a project's cache, which contains only files that can be recreated.
namespace corvane::cacheFolder {

/// Throws `FileError` if a name is not a single path component. The ids of clips are used as names,
/// and a document can contain any id.
void checkName(const QString &name);

/// Opens the folder at `cacheRoot`/`names` and creates it with its parents if it is missing. Throws
/// `FileError` if a component, the cache root included, is a link or a file, and like `checkName`.
/// Any thread.
OpenFolder ensure(const QString &cacheRoot, const QStringList &names);

} // namespace corvane::cacheFolder

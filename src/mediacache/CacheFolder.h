#pragma once

#include <QString>
#include <QStringList>

/// The folders of a project's cache, which holds what can be made again.
namespace corvane::cacheFolder {

/// The folder below `cacheRoot` that the names lead to, created with what is missing on the way.
/// What is a link or a file, the cache root included, is neither followed nor replaced, and a name
/// that would lead elsewhere is refused: throws `FileError`. Any thread.
QString ensure(const QString &cacheRoot, const QStringList &names);

} // namespace corvane::cacheFolder

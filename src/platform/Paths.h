#pragma once

#include <QString>
#include <QStringView>

/// Functions on path texts. Only `resolvingLinks` accesses the disk.
namespace corvane::paths {

/// Makes a path absolute and removes ".", ".." and repeated slashes. Links aren't resolved.
QString standardized(const QString &path);

/// Resolves the links in the longest part of the path that exists, and standardizes the result.
QString resolvingLinks(const QString &path);

/// The last component, without trailing slashes; "/" for the root.
QString lastComponent(const QString &path);
/// The path up to its last slash; "/" if that slash is the first character or missing.
QString parentFolder(const QString &path);
QString joined(const QString &folder, const QString &name);

/// True if `path` is inside the folder at any depth, and isn't the folder itself. Both must be
/// standardized.
bool isBelow(const QString &path, const QString &folder);

struct StemAndExtension {
    QString stem;
    QString extension; ///< with its dot, or empty
};
/// Splits a file name at its last dot: "a.b.mov" into "a.b" and ".mov", "take" into "take" and "",
/// ".hidden" into "" and ".hidden".
StemAndExtension split(const QString &name);

/// The extension without its dot; empty for a name without a dot and for ".hidden".
QString extension(const QString &path);

} // namespace corvane::paths

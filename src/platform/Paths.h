#pragma once

#include <QString>
#include <QStringView>

/// Path texts. Nothing here but `resolvingLinks` looks at the disk.
namespace corvane::paths {

/// Absolute, with dots and doubled slashes resolved and no link resolved.
QString standardized(const QString &path);

/// Links resolved as far down as the path exists, the missing rest appended as it stands, the whole
/// standardized.
QString resolvingLinks(const QString &path);

/// The path's last component ("/" for the root).
QString lastComponent(const QString &path);
QString parentFolder(const QString &path);
QString joined(const QString &folder, const QString &name);

/// True if the path begins with the folder's path and a slash, so that it lies strictly below it.
/// Both must be standardized.
bool isBelow(const QString &path, const QString &folder);

/// A name cut at its last point: "a.b.mov" is "a.b" and ".mov", "take" is "take" and "", ".hidden"
/// is "" and ".hidden".
struct StemAndExtension {
    QString stem;
    QString extension; ///< with its point, or empty
};
StemAndExtension split(const QString &name);

/// The extension without its point, as it stands; empty for a name whose only point leads it.
QString extension(const QString &path);

/// The extension without its point, in lower case; empty for a name whose only point leads it.
QString lowerCaseExtension(const QString &name);

} // namespace corvane::paths

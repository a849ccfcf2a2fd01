#include "transfer/DestinationSafety.h"

#include "platform/Paths.h"
#include "trust/PathSafety.h"

#include <QHash>

namespace corvane::DestinationSafety {

void assertContained(const QString &child, const QString &parent, const QString &label) {
    const QString childPath = paths::standardized(child);
    const QString parentPath = paths::standardized(parent);
    if (!paths::isBelow(childPath, parentPath)) {
        throw ExportEngineError(ExportEngineError::Code::outsideFolder,
                                QStringLiteral("%1 escapes containing folder: child=%2 parent=%3")
                                    .arg(label, childPath, parentPath));
    }
}

void assertNoLinkedFolder(const QString &output, const QString &outputFolder,
                          const QString &label) {
    const QString folder = paths::parentFolder(paths::standardized(output));
    const QString root = paths::standardized(outputFolder);
    if (folder != root && PathSafety::reachesOutsideOrThroughSymlink(folder, root)) {
        throw PathSafety::Violation(PathSafety::Violation::Kind::symlinkedPathComponent, output,
                                    label);
    }
}

FileLocations FileLocations::of(const QStringList &files) {
    QHash<QString, QString> resolvedFolders; // many files share few folders
    FileLocations locations;
    for (const QString &file : files) {
        const QString standardized = paths::standardized(file);
        const QString folder = paths::parentFolder(standardized);
        auto resolved = resolvedFolders.constFind(folder);
        if (resolved == resolvedFolders.constEnd()) {
            resolved = resolvedFolders.insert(folder, paths::resolvingLinks(folder));
        }
        locations.paths.insert(paths::joined(*resolved, paths::lastComponent(standardized)));
        if (const auto status = fileSystem().linkStatus(standardized)) {
            locations.identities.insert({status->device, status->inode});
        }
    }
    return locations;
}

void assertReplacesNoMedia(const Destination &output, const FileLocations &media) {
    FileLocations location;
    location.paths.insert(
        paths::joined(fileSystem().realPath(output.folder.anchoredPath()), output.name));
    if (const auto status = fileSystem().linkStatusAt(output.folder.descriptor(), output.name)) {
        location.identities.insert({status->device, status->inode});
    }
    if (media.intersects(location)) {
        throw ExportEngineError(
            ExportEngineError::Code::destinationIsProjectMedia,
            QStringLiteral("%1 belongs to the media of this project, refusing to replace it: %2. "
                           "Pick another export folder, then run the export again.")
                .arg(output.name, output.path()));
    }
}

} // namespace corvane::DestinationSafety

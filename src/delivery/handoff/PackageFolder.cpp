#include "delivery/handoff/PackageFolder.h"

#include "delivery/handoff/HandoffPlanning.h"
#include "platform/FileSystem.h"
#include "platform/Paths.h"
#include "platform/TextFormat.h"

namespace corvane::PackageFolder {

namespace {

template <typename Work> auto withPrefix(const QString &prefix, Work work) {
    try {
        return work();
    } catch (const std::exception &error) {
        throw RunError(prefix + describe(error));
    }
}

/// Adds file sizes that the document does not have.
QList<HandoffClip> withSizes(QList<HandoffClip> clips) {
    for (HandoffClip &clip : clips) {
        const auto status = clip.video->fileSizeBytes
                                ? std::nullopt
                                : fileSystem().linkStatus(clip.video->sourcePath);
        if (status && status->type == FileType::Regular) {
            clip.video.edit().fileSizeBytes = status->size;
        }
    }
    return clips;
}

/// nullopt if the volume does not report it.
std::optional<quint64> freeSpaceAt(const QString &folder) {
    try {
        return quint64(std::max(fileSystem().availableBytes(folder), qint64(0)));
    } catch (const FileError &) {
        return std::nullopt;
    }
}

} // namespace

void assertFreeSpace(const HandoffPlan &plan) {
    const quint64 needed = estimatedBytes(withSizes(plan.clips));
    const auto available = freeSpaceAt(plan.destinationFolder);
    if (available && *available < needed) {
        throw RunError(
            QStringLiteral("There isn't enough room in %1: the package needs about %2, and %3 are "
                           "free. Nothing was written. Make room or pick another destination "
                           "folder, then run the handoff again.")
                .arg(plan.destinationFolder, formattedByteCount(needed),
                     formattedByteCount(*available)));
    }
}

PackageProject::Paths reserve(const HandoffPlan &plan, const SelectsHandoff::Seconds &now) {
    return withPrefix(QStringLiteral("Could not reserve package folder: "), [&] {
        const QString folder =
            SelectsHandoff::reserveUniqueSubfolder(plan.projectName, plan.destinationFolder, now);
        fileSystem().syncFolder(paths::parentFolder(folder));
        return PackageProject::Paths::of(folder, plan.projectName);
    });
}

void createSkeleton(const PackageProject::Paths &paths, HandoffOutputMode outputMode) {
    withPrefix(QStringLiteral("Could not create package skeleton: "), [&] {
        fileSystem().createFolders(paths.media);
        fileSystem().createFolders(paths::joined(paths.cacheRoot, QStringLiteral("thumbnails")));
        fileSystem().createFolders(
            paths::joined(paths.cacheRoot, QStringLiteral("subclip-thumbs")));
        if (outputMode == HandoffOutputMode::primaryAndHd) {
            fileSystem().createFolders(paths.hd);
        }
    });
}

} // namespace corvane::PackageFolder

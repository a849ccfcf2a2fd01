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

/// The document doesn't know every file's size; the disk does.
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

/// Nothing where the volume doesn't say.
std::optional<quint64> roomAt(const QString &folder) {
    try {
        return quint64(std::max(fileSystem().availableBytes(folder), qint64(0)));
    } catch (const FileError &) {
        return std::nullopt;
    }
}

} // namespace

void assertRoom(const HandoffPlan &plan) {
    const quint64 needed = estimatedBytes(withSizes(plan.clips));
    const auto room = roomAt(plan.destinationFolder);
    if (room && *room < needed) {
        throw RunError(
            QStringLiteral("There isn't enough room in %1: the package needs about %2, and %3 are "
                           "free. Nothing was written. Make room or pick another destination "
                           "folder, then run the handoff again.")
                .arg(plan.destinationFolder, formattedByteCount(needed),
                     formattedByteCount(*room)));
    }
}

PackageProject::Places reserve(const HandoffPlan &plan, const SelectsHandoff::Seconds &now) {
    return withPrefix(QStringLiteral("Could not reserve package folder: "), [&] {
        const QString folder =
            SelectsHandoff::reserveUniqueSubfolder(plan.projectName, plan.destinationFolder, now);
        fileSystem().syncFolder(paths::parentFolder(folder));
        return PackageProject::Places::of(folder, plan.projectName);
    });
}

void createSkeleton(const PackageProject::Places &places, HandoffOutputMode outputMode) {
    withPrefix(QStringLiteral("Could not create package skeleton: "), [&] {
        fileSystem().createFolders(places.media);
        fileSystem().createFolders(paths::joined(places.cacheRoot, QStringLiteral("thumbnails")));
        fileSystem().createFolders(
            paths::joined(places.cacheRoot, QStringLiteral("subclip-thumbs")));
        if (outputMode == HandoffOutputMode::primaryAndHd) {
            fileSystem().createFolders(places.hd);
        }
    });
}

} // namespace corvane::PackageFolder

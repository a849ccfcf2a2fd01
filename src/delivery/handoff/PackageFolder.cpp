#include "delivery/handoff/PackageFolder.h"

#include "delivery/handoff/HandoffPlanning.h"
#include "document/ProjectFileIO.h"
#include "platform/AtomicWrite.h"
#include "platform/Paths.h"
#include "platform/TextFormat.h"
#include "transfer/Destination.h"

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

QByteArray contentsOf(const OpenFolder &folder, const QString &name) {
    return readAll(fileSystem().openFileAt(folder.descriptor(), name), ProjectFileIO::kFileLimit);
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

void assertSizes(const HandoffPlan &plan) {
    const VolumeLimits &limits = plan.volumeLimits;
    if (plan.mode != ExportBatch::Mode::fastCopy || !limits.maxFileSize) {
        return;
    }
    for (const HandoffClip &clip : withSizes(plan.clips)) {
        const qint64 bytes = clip.video->fileSizeBytes.value_or(0);
        if (clip.isWholeClipSelected && !limits.allowsSize(bytes)) {
            throw RunError(tooLargeText(clip.video->fileName, bytes, *limits.maxFileSize));
        }
    }
}

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

OpenFolder reserve(const HandoffPlan &plan, const SelectsHandoff::Seconds &now) {
    return withPrefix(QStringLiteral("Could not reserve package folder: "), [&] {
        const OpenFolder destination = OpenFolder::at(paths::standardized(plan.destinationFolder));
        OpenFolder package =
            SelectsHandoff::reserveUniqueSubfolder(plan.projectName, destination, now);
        fileSystem().syncFolder(destination.descriptor());
        return package;
    });
}

void Folders::assertAllInPlace() const {
    assertInPlace(package);
    assertInPlace(media);
    if (hd) {
        assertInPlace(*hd);
    }
}

Folders createSkeleton(const OpenFolder &package, HandoffOutputMode outputMode) {
    return withPrefix(QStringLiteral("Could not create package skeleton: "), [&] {
        const OpenFolder media = package.subfolder(QStringLiteral("media"));
        const OpenFolder cache = package.subfolder(QStringLiteral(".corvane-cache"));
        (void)cache.subfolder(QStringLiteral("thumbnails"));
        (void)cache.subfolder(QStringLiteral("subclip-thumbs"));
        Folders folders{.package = package, .media = media, .hd = {}, .cache = cache};
        if (outputMode == HandoffOutputMode::primaryAndHd) {
            folders.hd = media.subfolder(QStringLiteral("HD"));
        }
        return folders;
    });
}

QByteArray writeDocument(const OpenFolder &package, Project document,
                         const std::optional<QByteArray> &replaced) {
    assertInPlace(package);
    document.schemaVersion = kCurrentSchemaVersion;
    const QString name = paths::lastComponent(document.filePath);
    const auto fail = [&](const QString &error) {
        return ProjectFileIO::SaveError::writeFailed(document.filePath, error);
    };
    return withPrefix(QStringLiteral("Could not write project file: "), [&] {
        const QByteArray bytes = encodeJSON(document);
        if (bytes.size() > ProjectFileIO::kFileLimit) {
            throw fail(QStringLiteral("The document would be too large to be opened again."));
        }
        try {
            if (replaced && contentsOf(package, name) != *replaced) {
                throw fail(QStringLiteral("Another program changed it during the handoff."));
            }
            writeAtomically(package, name, bytes,
                            replaced ? Placing::mayReplaceRegular : Placing::mustBeFree);
        } catch (const FileError &error) {
            throw fail(error.description());
        }
        return bytes;
    });
}

} // namespace corvane::PackageFolder

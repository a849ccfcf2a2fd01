#include "import/RowImport.h"

#include "platform/Paths.h"
#include "platform/VolumeLimits.h"

namespace corvane::RowImport {

namespace {

/// Returns the name, or the next free one if a regular file has it. Any other kind of entry keeps
/// its name: the copier refuses to replace it.
QString freeName(const OpenFolder &folder, const QString &name) {
    const auto statusOf = [&](const QString &entry) {
        return fileSystem().linkStatusAt(folder.descriptor(), entry);
    };
    const auto existing = statusOf(name);
    if (!existing || existing->type != FileType::Regular) {
        return name;
    }
    QSet<QString> taken;
    for (;;) {
        const QString candidate = uniqueName(name, taken);
        if (!statusOf(candidate)) {
            return candidate;
        }
        taken.insert(candidate);
    }
}

/// Gives the copy the name, or the next free one, and returns it. Names can be taken meanwhile.
QString placeFreely(ImportCopier::UnplacedCopy &copy, const OpenFolder &folder,
                    const QString &name) {
    using CopyError = ImportCopier::CopyError;
    constexpr int kAttempts = 100;
    for (int attempt = 1;; ++attempt) {
        const QString free = freeName(folder, name);
        try {
            copy.place(free, Placing::mustBeFree);
            return free;
        } catch (const CopyError &error) {
            if (error.kind() != CopyError::Kind::destinationTaken || attempt == kAttempts) {
                throw;
            }
        }
    }
}

void removeCopy(const OpenFolder &folder, const QString &name) {
    try {
        fileSystem().removeAt(folder.descriptor(), name);
    } catch (const FileError &) {
        // The copy is complete and under a name of its own, so the user can remove it.
    }
}

/// Throws unless the bytes copied are those of the scanned video. A file that was being written has
/// another size or time, another one in its place has other contents too.
void refuseIfChanged(const ScannedVideo &scanned, const ImportCopier::UnplacedCopy &copy) {
    const bool isSame = quint64(copy.source().size) == scanned.fileSizeBytes &&
                        copy.source().modified == scanned.modified &&
                        copy.duplicateKey == scanned.contentHash.value_or(copy.duplicateKey);
    if (!isSame) {
        throw ImportCopier::CopyError::sourceContentChanged(scanned.url);
    }
}

void refuseTooLarge(const ScannedVideo &scanned, const OpenFolder &destination) {
    const VolumeLimits limits = VolumeLimits::of(destination.path());
    const auto size = qint64(scanned.fileSizeBytes);
    if (!limits.allowsSize(size)) {
        throw Failure(tooLargeText(paths::lastComponent(scanned.url), size, *limits.maxFileSize));
    }
}

} // namespace

Outcome useInPlace(const ImportPreviewRow &row) {
    return {.sourcePath = row.source.url, .sidecarPath = row.source.sidecarURL};
}

Outcome copyFiles(const ImportPreviewRow &row, const OpenFolder &destination,
                  const ImportCopier::Progress &progress, std::stop_token stop) {
    const ScannedVideo &scanned = row.source;
    const ImportCopier::SourceRoot root{scanned.scanRoot.url, scanned.scanRoot.identity};
    QString videoName;
    Outcome outcome;
    try {
        assertInPlace(destination);
        refuseTooLarge(scanned, destination);
        auto copy = ImportCopier::copyUnplaced(scanned.url, {destination, row.proposedName}, root,
                                               progress, stop, {.isIdentified = true});
        refuseIfChanged(scanned, copy);
        videoName = placeFreely(copy, destination, row.proposedName);
        assertInPlace(destination);
        outcome.sourcePath = paths::joined(destination.path(), videoName);
        outcome.anchor = copy.anchor;
    } catch (const Cancelled &) {
        throw;
    } catch (const std::exception &error) {
        return {.failures = {{paths::lastComponent(scanned.url), describe(error)}}};
    }
    if (!scanned.sidecarURL || !row.proposedSidecarName) {
        return outcome;
    }
    try {
        const QString name =
            sidecarName(*row.proposedSidecarName, paths::split(row.proposedName).stem,
                        paths::split(videoName).stem);
        auto copy =
            ImportCopier::copyUnplaced(*scanned.sidecarURL, {destination, name}, root, {}, stop);
        if (scanned.sidecarModified && copy.source().modified != *scanned.sidecarModified) {
            throw ImportCopier::CopyError::sourceContentChanged(*scanned.sidecarURL);
        }
        outcome.sidecarPath =
            paths::joined(destination.path(), placeFreely(copy, destination, name));
    } catch (const Cancelled &) {
        removeCopy(destination, videoName);
        throw;
    } catch (const std::exception &error) {
        const QString name = paths::lastComponent(*scanned.sidecarURL);
        outcome.failures.append({QStringLiteral("sidecar: ") + name, describe(error)});
    }
    return outcome;
}

OpenFolder openDestination(const QString &path) {
    using ImportCopier::CopyError;
    const auto existing = fileSystem().linkStatus(path);
    if (existing && existing->type != FileType::Directory) {
        throw CopyError::destinationUnwritable(
            path, QStringLiteral("something that isn't a folder is already there"));
    }
    try {
        // The folder may be replaced by a link from here on, which opening it by its parent
        // refuses.
        fileSystem().createFolders(path);
        const QString folder = paths::standardized(path);
        const QString name = paths::lastComponent(folder);
        return name == QLatin1String("/")
                   ? OpenFolder::at(folder)
                   : OpenFolder::at(paths::parentFolder(folder)).subfolder(name);
    } catch (const FileError &error) {
        throw CopyError::destinationUnwritable(path, error.description());
    }
}

VideoItem makeVideoItem(const ImportPreviewRow &row, SourceImportMode mode, const Outcome &outcome,
                        const QDateTime &now) {
    VideoRecord video{.id = newIdentifier(),
                      .sourcePath = *outcome.sourcePath,
                      .sourceImportMode = mode,
                      .fileName = paths::lastComponent(*outcome.sourcePath),
                      .parentFolder = paths::parentFolder(*outcome.sourcePath),
                      .fileSizeBytes = qint64(row.source.fileSizeBytes),
                      .sidecarPath = outcome.sidecarPath,
                      .sidecarType = row.source.sidecarType,
                      .contentHash = row.source.contentHash,
                      .createdAt = now,
                      .updatedAt = now};
    if (mode == SourceImportMode::copied) {
        video.originalSourcePath = row.source.url;
    }
    return video;
}

} // namespace corvane::RowImport

#include "import/RowImport.h"

#include "platform/Paths.h"

namespace corvane::RowImport {

namespace {

/// Returns the name, or the next free one if a regular file has it. Any other kind of entry keeps
/// its name: the copier refuses to replace it.
QString freeName(const QString &folder, const QString &name) {
    const auto existing = fileSystem().linkStatus(paths::joined(folder, name));
    if (!existing || existing->type != FileType::Regular) {
        return name;
    }
    QSet<QString> taken;
    for (;;) {
        const QString candidate = uniqueName(name, taken);
        if (!fileSystem().linkStatus(paths::joined(folder, candidate))) {
            return candidate;
        }
        taken.insert(candidate);
    }
}

void removeCopy(const QString &path) {
    try {
        fileSystem().remove(path);
    } catch (const FileError &) {
        // The copy is complete and under a name of its own, so the user can remove it.
    }
}

/// A file whose size differs from the scan was being written, so its copy may be inconsistent.
void refuseIfChanged(const ImportPreviewRow &row, const QString &copy) {
    const auto status = fileSystem().linkStatus(copy);
    if (status && quint64(status->size) != row.source.fileSizeBytes) {
        removeCopy(copy);
        throw ImportCopier::CopyError::sourceContentChanged(row.source.url);
    }
}

} // namespace

Outcome useInPlace(const ImportPreviewRow &row) {
    return {.sourcePath = row.source.url, .sidecarPath = row.source.sidecarURL};
}

Outcome copyFiles(const ImportPreviewRow &row, const QString &destinationFolder,
                  const ImportCopier::Progress &progress, std::stop_token stop) {
    const ImportCopier::SourceRoot root{row.source.scanRoot.url, row.source.scanRoot.identity};
    const QString videoName = freeName(destinationFolder, row.proposedName);
    const QString video = paths::joined(destinationFolder, videoName);
    try {
        ImportCopier::copy(row.source.url, video, root, progress, stop);
        refuseIfChanged(row, video);
    } catch (const Cancelled &) {
        throw;
    } catch (const std::exception &error) {
        return {.failures = {{paths::lastComponent(row.source.url), describe(error)}}};
    }
    Outcome outcome{.sourcePath = video};
    if (!row.source.sidecarURL || !row.proposedSidecarName) {
        return outcome;
    }
    try {
        const QString name =
            sidecarName(*row.proposedSidecarName, paths::split(row.proposedName).stem,
                        paths::split(videoName).stem);
        const QString sidecar = paths::joined(destinationFolder, freeName(destinationFolder, name));
        ImportCopier::copy(*row.source.sidecarURL, sidecar, root, {}, stop);
        outcome.sidecarPath = sidecar;
    } catch (const Cancelled &) {
        removeCopy(video);
        throw;
    } catch (const std::exception &error) {
        const QString name = paths::lastComponent(*row.source.sidecarURL);
        outcome.failures.append({QStringLiteral("sidecar: ") + name, describe(error)});
    }
    return outcome;
}

void ensureDestination(const QString &folder) {
    const auto existing = fileSystem().linkStatus(folder);
    if (existing && existing->type != FileType::Directory) {
        throw ImportCopier::CopyError::destinationUnwritable(
            folder, QStringLiteral("something that isn't a folder is already there"));
    }
    try {
        fileSystem().createFolders(folder);
    } catch (const FileError &error) {
        throw ImportCopier::CopyError::destinationUnwritable(folder, error.description());
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

#include "transfer/SidecarCopier.h"

#include "platform/Paths.h"
#include "transfer/DestinationSafety.h"
#include "trust/PathSafety.h"

namespace corvane::SidecarCopier {

namespace {

using Code = ExportEngineError::Code;

void assertNoLink(const QString &path, const QString &root, const QString &label) {
    if (PathSafety::reachesOutsideOrThroughSymlink(path, root)) {
        throw PathSafety::Violation(PathSafety::Violation::Kind::symlinkedPathComponent, path,
                                    label);
    }
}

/// Checks the file types again, because a file may have been replaced by a link since the last
/// check.
void assertFileTypes(const QString &source, const QString &destination) {
    const auto sourceType = PathSafety::fileType(source);
    const auto destinationType = PathSafety::fileType(destination);
    if (sourceType == FileType::SymbolicLink) {
        throw ExportEngineError(
            Code::sidecarSourceIsLink,
            QStringLiteral("sidecar source is a symbolic link, refusing to copy: ") + source);
    }
    if (destinationType == FileType::SymbolicLink) {
        throw ExportEngineError(
            Code::sidecarDestinationIsLink,
            QStringLiteral(
                "sidecar destination is an existing symbolic link, refusing to overwrite: ") +
                destination);
    }
    if (sourceType != FileType::Regular) {
        throw ExportEngineError(
            Code::sidecarSourceIsNotAFile,
            QStringLiteral(
                "The sidecar source isn't a file, so nothing was copied: %1. Nothing was deleted.")
                .arg(source));
    }
    if (destinationType && destinationType != FileType::Regular) {
        throw ExportEngineError(
            Code::destinationIsNotAFile,
            QStringLiteral(
                "Something that isn't a file is already at %1. Rename it or pick another "
                "export folder. Nothing was deleted.")
                .arg(paths::lastComponent(destination)));
    }
}

} // namespace

void copySidecar(const QString &sidecarSource, const QString &sidecarDestination,
                 ImportCopier::SourceRoot clipFolder, const OpenFolder &outputFolder,
                 Placing placing, std::stop_token stop) {
    const QString sourceLabel = QStringLiteral("sidecar source");
    const QString destinationLabel = QStringLiteral("sidecar destination");
    const QString source = paths::standardized(sidecarSource);
    const QString destination = paths::standardized(sidecarDestination);
    const QString folder = paths::standardized(outputFolder.path());
    DestinationSafety::assertContained(source, clipFolder.path, sourceLabel);
    DestinationSafety::assertContained(destination, folder, destinationLabel);
    assertNoLink(source, paths::parentFolder(clipFolder.path), sourceLabel);
    assertNoLink(destination, folder, destinationLabel);
    assertFileTypes(source, destination);
    if (source == destination) {
        return;
    }
    if (clipFolder.identity) {
        clipFolder.identity->contentHash.reset(); // of the clip
    }
    ImportCopier::copy(source, Destination::below(outputFolder, destination, placing), clipFolder,
                       {}, std::move(stop));
}

} // namespace corvane::SidecarCopier

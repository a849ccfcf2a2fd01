#pragma once

#include "transfer/ImportCopier.h"

/// Copies a clip's sidecar file.
namespace corvane::SidecarCopier {

/// Copies a sidecar to a path in the output folder. No-op if source and destination are the same
/// path. The source must be inside the clip's folder, whose `contentHash` is ignored. Neither that
/// folder nor any component below it or below the output folder may be a symbolic link.
///
/// Blocks; any thread. Throws `ExportEngineError`, `PathSafety::Violation`, `FileError`, or what
/// `ImportCopier::copy` throws, which also states when the destination is unchanged.
void copySidecar(const QString &sidecarSource, const QString &sidecarDestination,
                 ImportCopier::SourceRoot clipFolder, const OpenFolder &outputFolder,
                 Placing placing, std::stop_token stop);

} // namespace corvane::SidecarCopier

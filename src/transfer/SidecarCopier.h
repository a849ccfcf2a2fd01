#pragma once

#include <QString>

#include <stop_token>

/// Copies a clip's sidecar file.
namespace corvane::SidecarCopier {

/// Copies a sidecar into the output folder and atomically replaces a regular file of that name.
/// No-op if source and destination are the same path. The source must be inside the clip's folder.
/// Neither that folder nor any component below it or below the output folder may be a symbolic
/// link.
///
/// Blocks; any thread. Throws `ExportEngineError`, `PathSafety::Violation`, or what
/// `ImportCopier::copy` throws, which also states when the destination is unchanged.
void copySidecar(const QString &sidecarSource, const QString &sidecarDestination,
                 const QString &clipSource, const QString &outputFolder, std::stop_token stop);

} // namespace corvane::SidecarCopier

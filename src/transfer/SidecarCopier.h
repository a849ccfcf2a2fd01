#pragma once

#include <QString>

#include <stop_token>

/// Delivers the sidecar file that lies beside a clip.
namespace corvane::SidecarCopier {

/// Copies the sidecar into the output folder, in one step over whatever regular file has the name.
/// It must lie in the clip's own folder, and neither end may be a link or be reached through one.
/// On the calling thread, which belongs to an executor. Throws `ExportEngineError`,
/// `PathSafety::Violation`, `ImportCopier::CopyError` or `Cancelled`; the destination is then as it
/// was.
void copySidecar(const QString &sidecarSource, const QString &sidecarDestination,
                 const QString &clipSource, const QString &outputFolder, std::stop_token stop);

} // namespace corvane::SidecarCopier

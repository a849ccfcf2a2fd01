#pragma once

#include "import/ImportPreview.h"
#include "transfer/ImportCopier.h"

#include <QDateTime>

namespace corvane {

/// A file that could not be imported, in the words shown to the user.
struct ImportFailure {
    QString filename; ///< a sidecar's is prefixed with "sidecar: "
    QString message;

    bool operator==(const ImportFailure &) const = default;
};

} // namespace corvane

/// Imports the files of one preview row.
namespace corvane::RowImport {

struct Outcome {
    std::optional<QString> sourcePath;  ///< of the imported video; nullopt if the copy failed
    std::optional<QString> anchor;      ///< of the copy; nullopt if the video is used in place
    std::optional<QString> sidecarPath; ///< of the imported sidecar
    QList<ImportFailure> failures;
};

/// Refers to the row's files at their current paths.
Outcome useInPlace(const ImportPreviewRow &row);

/// Copies the video and its sidecar to the folder under their proposed names, or under the next
/// free names if files with these names appeared since the preview. Refuses files that are not the
/// scanned ones. The video is kept if its sidecar fails. Blocks; any thread. Throws only
/// `Cancelled`, after removing copies of this row.
Outcome copyFiles(const ImportPreviewRow &row, const OpenFolder &destination,
                  const ImportCopier::Progress &progress, std::stop_token stop);

/// Opens the folder for copies and creates it if it is missing. Throws `CopyError` on failure or if
/// the path is anything but a folder; a link to a folder is refused too. Any thread.
OpenFolder openDestination(const QString &path);

/// The clip of a row whose video was imported.
VideoItem makeVideoItem(const ImportPreviewRow &row, SourceImportMode mode, const Outcome &outcome,
                        const QDateTime &now);

} // namespace corvane::RowImport

#pragma once

#include "import/ImportPreview.h"
#include "transfer/ImportCopier.h"

#include <QDateTime>

namespace corvane {

/// A file that could not be imported, as the user reads it.
struct ImportFailure {
    QString filename; ///< "sidecar: " in front of a sidecar's
    QString message;

    bool operator==(const ImportFailure &) const = default;
};

} // namespace corvane

/// One row of an import: its files, and the clip made of it.
namespace corvane::RowImport {

/// Where a row's files stand after it.
struct Outcome {
    std::optional<QString> sourcePath; ///< absent where the video could not be copied
    std::optional<QString> sidecarPath;
    QList<ImportFailure> failures;
};

/// The files left where they are.
Outcome inPlace(const ImportPreviewRow &row);

/// Copies the video and its sidecar into the folder under their proposed names. Where a file has
/// taken such a name since the preview, the copy gets the next free one and the file stays. A
/// sidecar that fails leaves the video imported. Blocks, on an executor's thread. Throws
/// `Cancelled` only; nothing of the row is left then.
Outcome copied(const ImportPreviewRow &row, const QString &destinationFolder,
               const ImportCopier::Progress &progress, std::stop_token stop);

/// Creates the folder that copies go to. An existing folder is fine; throws `CopyError` where it
/// can't be created or something else, a link included, has its place.
void ensureDestination(const QString &folder);

/// The clip of a row whose video arrived.
VideoItem makeVideoItem(const ImportPreviewRow &row, SourceImportMode mode, const Outcome &outcome,
                        const QDateTime &now);

} // namespace corvane::RowImport

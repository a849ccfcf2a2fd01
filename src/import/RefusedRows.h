#pragma once

#include "import/ImportPreview.h"
#include "trust/PathSafety.h"

#include <QStringList>

namespace corvane {

/// The files of rows that the project holds already, under their very paths, and may not read.
struct RefusedRows {
    QStringList neverGranted; ///< without a grant, or with one whose identity was never established
    QStringList changed;      ///< in another folder than the granted one
    /// In their granted folder, but written to since they were imported. Only a reading of the
    /// whole file tells whether it still is the granted one; see `hasOtherContents`.
    QStringList written;
};

/// What such a row holds has the clip's duplicate key, and that is taken for proof enough here:
/// files aren't read whole for a preview. Looks at the disk, on an executor's thread.
RefusedRows refusedRows(const QList<ImportPreviewRow> &rows, const Project &project,
                        PathSafety::SourceGrants grants);

/// True if the file isn't the granted one any more. Reads it whole, on an executor's thread.
bool hasOtherContents(const QString &path, const PathSafety::SourceGrants &grants);

} // namespace corvane

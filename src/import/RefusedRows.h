#pragma once

#include "import/ImportPreview.h"
#include "trust/PathSafety.h"

#include <QStringList>

namespace corvane {

/// The files of rows that the project holds already, under their very paths, and may not read.
struct RefusedRows {
    QStringList neverGranted; ///< without a grant, or with one whose identity was never established
    QStringList changed;      ///< in another folder than the granted one
};

/// What such a row holds has the clip's duplicate key, and that is taken for proof enough here:
/// files aren't read whole for a preview. Looks at the disk, on an executor's thread.
RefusedRows refusedRows(const QList<ImportPreviewRow> &rows, const Project &project,
                        PathSafety::SourceGrants grants);

} // namespace corvane

#pragma once

#include "import/ImportPreview.h"
#include "trust/PathSafety.h"

#include <QStringList>

namespace corvane {

/// The files of rows that the project holds already, under their very paths, and may not read.
struct RefusedRows {
    QStringList neverGranted; ///< without a grant, or with one whose identity was never established
    QStringList changed;      ///< the folder or the contents aren't those of the grant
};

/// Only a file whose duplicate key is no longer the clip's is read. Looks at the disk, on an
/// executor's thread.
RefusedRows refusedRows(const QList<ImportPreviewRow> &rows, const Project &project,
                        PathSafety::SourceGrants grants);

} // namespace corvane

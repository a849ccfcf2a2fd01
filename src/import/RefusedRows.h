#pragma once

#include "import/ImportPreview.h"
#include "trust/PathSafety.h"

#include <QStringList>

namespace corvane {

/// Files of preview rows that are clips of the project at their recorded paths but may not be read
/// for it.
struct RefusedRows {
    QStringList neverGranted; ///< without a grant, or with one whose identity is not established
    QStringList changed;      ///< in a folder that is not the granted one
    /// In the granted folder but modified after the import. `isContentChanged` decides whether they
    /// are still the granted files.
    QStringList modified;
};

/// Trusts the duplicate key, which the rows share with their clips, instead of reading entire
/// files. Accesses the disk; blocks, any thread.
RefusedRows refusedRows(const QList<ImportPreviewRow> &rows, const Project &project,
                        PathSafety::SourceGrants grants);

/// True if the file is no longer the granted one. Reads the entire file; blocks, any thread.
bool isContentChanged(const QString &path, const PathSafety::SourceGrants &grants);

} // namespace corvane

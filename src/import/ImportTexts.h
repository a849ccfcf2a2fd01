#pragma once

#include "import/ImportPreview.h"
#include "import/RowImport.h"
#include "import/SourceScan.h"

/// Sentences about an import, for the sheet and the command line.
namespace corvane {

/// "Found 3 videos".
QString foundText(const QList<ImportPreviewRow> &rows);

/// " · 1 already imported.", which follows `foundText`. Empty if no row is.
QString alreadyImportedText(const QList<ImportPreviewRow> &rows);

/// "Left out: 2 symbolic links". Empty if the scan left out no entry.
QString leftOutText(const LeftOut &leftOut);

/// One failure per entry that the scan could not read: whatever it contains was not imported.
QList<ImportFailure> unreadableFailures(const QList<UnreadableEntry> &entries);

/// Explains that `count` of the scanned files cannot be read until the user confirms. Empty for
/// zero.
QString refusedText(int count);

/// Shown while the imported clips are recorded, which takes the place of a file name.
QString recordingText();

/// "Reading metadata: a.mov"
QString metadataText(const QString &fileName);

/// Describes a cancelled run by the number of included files that were not imported, and of
/// imported clips that await confirmation. Zero of both means that only reading metadata was
/// cancelled.
QString cancelledText(int notImported, int pending);

/// Says that an imported clip is not authorized because its contents can't be read.
QString unreadableClipText();

} // namespace corvane

#pragma once

#include "delivery/DeliveryChoices.h"
#include "delivery/export/ExportRow.h"

/// Plans the rows of an export, for the preview and for the run.
namespace corvane {

struct ExportChoices : DeliveryChoices {
    std::optional<QString> outputFolder; ///< absolute
    OutputMode outputMode = OutputMode::primaryOnly;
    bool includeWholeVideoSelects = true;
    bool includeSubclipSelects = true;
    bool exportNewOnly = true; ///< skip items exported before

    bool operator==(const ExportChoices &) const = default;
};

/// The choices when the sheet opens.
ExportChoices defaultExportChoices(const Project &project);

/// Returns the rows in the order of the run: by clip id, the whole clip before its subclips. Empty
/// if there is no output folder.
///
/// With `includeFolderContents`, lists the output folder, which blocks, and avoids the names of its
/// folders. Files in it may be replaced. A folder that cannot be listed counts as empty.
QList<ExportRowJob> planRows(const Project &project, const ExportChoices &choices,
                             bool includeFolderContents);

/// Number of selected clips and subclips that the include switches admit, exported before or not.
int countSelects(const Project &project, const ExportChoices &choices);

} // namespace corvane

#pragma once

#include "delivery/ExportRow.h"

/// Which rows an export has, under which names. The same planning serves the preview and the run.
namespace corvane {

/// The choices of the export screen that rows depend on.
struct ExportChoices {
    std::optional<QString> outputFolder; ///< absolute
    ExportBatch::Mode mode = ExportBatch::Mode::fastCopy;
    OutputMode outputMode = OutputMode::primaryOnly;
    bool includeWholeVideoSelects = true;
    bool includeSubclipSelects = true;
    double subclipHandleSeconds = 0;
    NamingPreset namingPreset = NamingPreset::keepOriginal;
    ExportNamingOptions naming;
    bool exportNewOnly = true; ///< leave out what was exported before

    bool operator==(const ExportChoices &) const = default;
};

/// What the screen offers when it opens.
ExportChoices defaultExportChoices(const Project &project);

/// The rows in the order of the run: by clip id, the whole clip before its subclips. None without
/// an output folder.
///
/// With `includeFolderContents` the output folder is listed, and names of folders in it are
/// avoided; files in it are not, since a run over an earlier one replaces them. A folder that can't
/// be listed counts as empty. Main thread.
QList<ExportRowJob> planRows(const Project &project, const ExportChoices &choices,
                             bool includeFolderContents);

/// How many selected clips and subclips the include switches admit, exported before or not.
int countSelects(const Project &project, const ExportChoices &choices);

/// The range of a subclip widened by the handles: not below 0, and not beyond the clip's end if
/// its duration is known (`clipDuration` is above 0).
ClipRange widenedRange(const Subclip &subclip, double handleSeconds, double clipDuration);

} // namespace corvane

#pragma once

#include "cli/Command.h"
#include "delivery/export/ExportRow.h"

/// Prints the plan and the result of the export command.
namespace corvane {

void writeExportPreview(JSONWriter &writer, const QList<ExportRowJob> &rows);
void printExportPreview(const CommandCall &call, const QList<ExportRowJob> &rows);

/// Writes the manifest's fields and its path. `input` is nullopt if there was nothing to export;
/// there is no manifest then.
void writeExportResult(JSONWriter &writer, const std::optional<ExportBatchInput> &input,
                       const ExportBatchResult &result);
void printExportResult(const CommandCall &call, const ExportBatchResult &result);
/// Prints the failed rows on standard error.
void printExportFailures(const CommandCall &call, const ExportBatchResult &result);

/// True if every requested output and the manifest were written.
bool isCompletelyDone(const ExportBatchResult &result);

} // namespace corvane

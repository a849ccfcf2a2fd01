#pragma once

#include "cli/Command.h"
#include "delivery/ExportRow.h"

/// How the export command tells what it plans and what it did.
namespace corvane {

void writeExportPreview(JSONWriter &writer, const QList<ExportRowJob> &rows);
void printExportPreview(const CommandCall &call, const QList<ExportRowJob> &rows);

/// The manifest's object, and where the manifest is. `input` is absent where nothing was to be run;
/// there is no manifest then.
void writeExportResult(JSONWriter &writer, const std::optional<ExportBatchInput> &input,
                       const ExportBatchResult &result);
void printExportResult(const CommandCall &call, const ExportBatchResult &result);
/// The failed rows, on the error stream.
void printExportFailures(const CommandCall &call, const ExportBatchResult &result);

/// True if every output that was asked for is there, and the manifest too.
bool isCompletelyDone(const ExportBatchResult &result);

} // namespace corvane

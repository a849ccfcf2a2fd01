#include "cli/ExportOutput.h"

#include "cli/JSONMembers.h"
#include "cli/TextTable.h"
#include "delivery/export/ExportTexts.h"
#include "delivery/export/ManifestWriter.h"
#include "platform/Paths.h"
#include "platform/TextFormat.h"

#include <algorithm>

namespace corvane {

namespace {

/// The fields of a manifest for a run without rows.
JSONValue::Object emptyManifest() {
    return {{QStringLiteral("succeededCount"), 0},
            {QStringLiteral("failedCount"), 0},
            {QStringLiteral("cancelledCount"), 0},
            {QStringLiteral("cancelled"), false},
            {QStringLiteral("rows"), JSONValue::Array()}};
}

} // namespace

void writeExportPreview(JSONWriter &writer, const QList<ExportRowJob> &rows) {
    writer.beginObject();
    writer.key("rows");
    writer.beginArray();
    for (const ExportRowJob &row : rows) {
        writer.beginObject();
        writeMember(writer, "id", row.id);
        writeMember(writer, "kind", row.kind);
        writeMember(writer, "proposedName", row.proposedName);
        writeMember(writer, "sourcePath", row.sourcePath);
        writeMember(writer, "destinationPath", row.destinationPath);
        writer.endObject();
    }
    writer.endArray();
    writer.endObject();
}

void printExportPreview(const CommandCall &call, const QList<ExportRowJob> &rows) {
    TextTable table(
        {QStringLiteral("KIND"), QStringLiteral("SOURCE"), QStringLiteral("DESTINATION")});
    for (const ExportRowJob &row : rows) {
        table.addRow({rawValue(row.kind), row.sourcePath, row.destinationPath});
    }
    table.print(call);
    call.printLine(counted(rows.size(), QStringLiteral("row")));
}

void writeExportResult(JSONWriter &writer, const std::optional<ExportBatchInput> &input,
                       const ExportBatchResult &result) {
    JSONValue::Object object =
        input ? ManifestWriter::manifest(*input, result.succeeded, result.failed) : emptyManifest();
    object.insert(QStringLiteral("manifestPath"), JSONValue::orNull(result.manifestSidecarPath));
    object.insert(QStringLiteral("manifestError"), JSONValue::orNull(result.manifestError));
    writer.value(object);
}

void printExportResult(const CommandCall &call, const ExportBatchResult &result) {
    if (result.succeeded.isEmpty() && result.failed.isEmpty()) {
        call.printLine(QStringLiteral("Nothing to export."));
        return;
    }
    for (const ExportRowOutcome &row : result.succeeded) {
        call.printLine(QStringLiteral("Delivered ") + row.destinationPath);
        if (row.hdOutputPath && *row.hdOutputPath != row.destinationPath) {
            call.printLine(QStringLiteral("Delivered ") + *row.hdOutputPath);
        }
    }
    call.printLine(ExportTexts::headline(result));
    call.printLine(QStringLiteral("Succeeded %1, failed %2, cancelled %3")
                       .arg(result.succeeded.size())
                       .arg(result.failedCount())
                       .arg(result.cancelledCount));
    if (result.manifestSidecarPath) {
        call.printLine(QStringLiteral("Manifest: ") + *result.manifestSidecarPath);
    }
}

void printExportFailures(const CommandCall &call, const ExportBatchResult &result) {
    for (const ExportRowFailure &row : result.failed) {
        call.printNotice(ExportTexts::row(row));
    }
    for (const ExportRowOutcome &row : result.succeeded) {
        if (row.hdError) {
            call.printNotice(
                paths::lastComponent(row.hdDestinationPath.value_or(row.destinationPath)) +
                QStringLiteral(": ") + *row.hdError);
        }
    }
    if (result.manifestError) {
        call.printNotice(*result.manifestError);
    }
}

bool isCompletelyDone(const ExportBatchResult &result) {
    return result.failed.isEmpty() && !result.manifestError &&
           std::ranges::none_of(result.succeeded, [](const ExportRowOutcome &row) {
               return row.hdError.has_value();
           });
}

} // namespace corvane

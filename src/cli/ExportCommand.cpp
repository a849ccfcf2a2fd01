#include "cli/DeliveryArguments.h"
#include "cli/JSONMembers.h"
#include "cli/TextTable.h"
#include "delivery/export/ExportTexts.h"
#include "delivery/export/ExportViewModel.h"
#include "delivery/export/ManifestWriter.h"
#include "media/ExportSession.h"
#include "platform/InterruptWatcher.h"
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

void writeExportPreview(JSONWriter &writer, const QList<ExportRowJob> &rows) {
    writeRows(writer, "rows", rows, [&](const ExportRowJob &row) {
        writeMember(writer, "id", row.id);
        writeMember(writer, "kind", row.kind);
        writeMember(writer, "proposedName", row.proposedName);
        writeMember(writer, "sourcePath", row.sourcePath);
        writeMember(writer, "destinationPath", row.destinationPath);
    });
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

/// Writes the manifest's fields and its path. `input` is nullopt if there was nothing to export;
/// there is no manifest then.
void writeExportResult(JSONWriter &writer, const std::optional<ExportBatchInput> &input,
                       const ExportBatchResult &result) {
    JSONValue::Object object =
        input ? ManifestWriter::manifest(*input, result.succeeded, result.failed) : emptyManifest();
    object.insert(QStringLiteral("manifestPath"), JSONValue::orNull(result.manifestSidecarPath));
    object.insert(QStringLiteral("manifestError"), JSONValue::orNull(result.manifestError));
    for (const auto &[key, value] : object.asKeyValueRange()) {
        writer.key(key);
        writer.value(value);
    }
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
    call.printLine(deliveryCounts(result));
    if (result.manifestSidecarPath) {
        call.printLine(QStringLiteral("Manifest: ") + *result.manifestSidecarPath);
    }
}

/// Prints the failed rows on standard error.
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

/// True if every requested output and the manifest were written.
bool isCompletelyDone(const ExportBatchResult &result) {
    return result.failed.isEmpty() && !result.manifestError &&
           std::ranges::none_of(result.succeeded, [](const ExportRowOutcome &row) {
               return row.hdError.has_value();
           });
}

int runPlanned(ExportViewModel &flow, CliSession &session, const CommandCall &call) {
    const InterruptWatcher watcher([&flow] { flow.requestCancel(); });
    runDelivery(flow, session, call, QStringLiteral("Verifying sources…"));
    const ExportBatchResult result = flow.result().value_or(ExportBatchResult());
    printExportFailures(call, result);
    session.printNotices(call);
    call.printResult(
        [&](JSONWriter &writer) { writeExportResult(writer, flow.runInput(), result); },
        [&] { printExportResult(call, result); });
    return isCompletelyDone(result) && !watcher.wasInterrupted() ? kAllDone : kRefused;
}

int runExport(const CommandCall &call) {
    const auto outputFolder = call.pathValue("to");
    const DeliveryArguments<OutputMode> arguments(call);
    CliSession session(call);
    ExportViewModel flow(&session.store(), media::ffmpegExportSessions());
    flow.reset(session.project());
    if (outputFolder) {
        flow.setFolder(outputFolder);
    }
    flow.setIncludeWholeVideoSelects(!call.isSet("no-clips"));
    flow.setIncludeSubclipSelects(!call.isSet("no-subclips"));
    flow.setExportNewOnly(!call.isSet("all"));
    arguments.apply(flow);
    if (!call.isSet("preview")) {
        return runPlanned(flow, session, call);
    }
    waitUntilDone(flow.readVolumeLimits());
    const QList<ExportRowJob> rows = flow.planRows(session.project(), false);
    call.printResult([&](JSONWriter &writer) { writeExportPreview(writer, rows); },
                     [&] { printExportPreview(call, rows); });
    return kAllDone;
}

} // namespace

CliCommand exportCommand() {
    return {
        .name = QStringLiteral("export"),
        .synopsis = QStringLiteral("PROJECT"),
        .summary = QStringLiteral("Delivers the selected clips and subclips to a folder."),
        .options =
            NamingArguments::options() +
            QList<QCommandLineOption>{
                valueOption("to", "FOLDER",
                            "The output folder; \"selects\" beside the project unless said."),
                valueOption("mode", "MODE", "fast-copy or accurate-transcode."),
                valueOption("output", "OUTPUT", "primary-only, primary-and-hd or hd-only."),
                valueOption("handles", "S", "Seconds to add at both ends of subclips."),
                flagOption("all", "What was exported before, too."),
                flagOption("no-clips", "No whole clips."),
                flagOption("no-subclips", "No subclips."),
                flagOption("preview", "Only show what would be exported, and under which names.")},
        .run = runExport};
}

} // namespace corvane

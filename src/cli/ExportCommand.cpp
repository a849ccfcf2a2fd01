#include "cli/ArgumentValues.h"
#include "cli/CliSession.h"
#include "cli/ExportOutput.h"
#include "cli/NamingArguments.h"
#include "cli/ProgressLine.h"
#include "delivery/export/ExportViewModel.h"
#include "delivery/ExportTexts.h"
#include "media/FFmpegExportSessions.h"
#include "platform/InterruptWatcher.h"
#include "platform/Tasks.h"

namespace corvane {

namespace {

/// The choices that the command line makes; the others stay as the flow has them.
struct ExportRequest {
    std::optional<QString> outputFolder;
    NamingArguments naming;
    std::optional<ExportBatch::Mode> mode;
    std::optional<OutputMode> outputMode;
    std::optional<double> handleSeconds;
};

ExportRequest exportRequestOf(const CommandCall &call) {
    using namespace argumentValues;
    return {.outputFolder = call.pathValue("to"),
            .naming = NamingArguments(call),
            .mode = option(call, "mode", choice<ExportBatch::Mode>),
            .outputMode = option(call, "output", choice<OutputMode>),
            .handleSeconds = option(call, "handles", seconds)};
}

void applyRequest(ExportViewModel &flow, const ExportRequest &request, const CommandCall &call) {
    if (request.outputFolder) {
        flow.setOutputFolder(request.outputFolder);
    }
    flow.setMode(request.mode.value_or(flow.choices().mode));
    flow.setOutputMode(request.outputMode.value_or(flow.choices().outputMode));
    flow.setSubclipHandleSeconds(
        request.handleSeconds.value_or(flow.choices().subclipHandleSeconds));
    flow.setIncludeWholeVideoSelects(!call.isSet("no-clips"));
    flow.setIncludeSubclipSelects(!call.isSet("no-subclips"));
    flow.setExportNewOnly(!call.isSet("all"));
    request.naming.apply(flow);
}

void exportRows(ExportViewModel &flow, const Project &project, const CommandCall &call) {
    ProgressLine line(call.console());
    line.show(QStringLiteral("Verifying sources…"));
    const QObject context;
    QObject::connect(&flow, &ExportViewModel::progressChanged, &context, [&] {
        if (const auto &progress = flow.progress()) {
            line.show(flow.overallFraction(), progress->currentFilename);
        }
    });
    waitUntilDone(flow.start(project));
}

/// Runs what was planned and tells what became of it.
int exportPlanned(ExportViewModel &flow, CliSession &session, const CommandCall &call) {
    const InterruptWatcher watcher([&flow] { flow.requestCancel(); });
    exportRows(flow, session.project(), call);
    session.save(); // what was delivered is on record before anything is said of it
    if (flow.backupError()) {
        call.printNotice(ExportTexts::backupLine(flow.backupError()));
    }
    const ExportBatchResult result = flow.result().value_or(ExportBatchResult());
    printExportFailures(call, result);
    if (!call.isJSON()) {
        printExportResult(call, result);
    }
    if (call.isJSON()) {
        call.printJSON(
            [&](JSONWriter &writer) { writeExportResult(writer, flow.runInput(), result); });
    }
    return isCompletelyDone(result) && !watcher.wasInterrupted() ? kAllDone : kRefused;
}

int runExport(const CommandCall &call) {
    const ExportRequest request = exportRequestOf(call);
    CliSession session(call.console());
    session.open(call.path(0));
    ExportViewModel flow(&session.store(), media::ffmpegExportSessions());
    flow.reset(session.project());
    applyRequest(flow, request, call);
    const bool isPreview = call.isSet("preview");
    const QList<ExportRowJob> rows = flow.planRows(session.project(), !isPreview);
    if (!isPreview) {
        return exportPlanned(flow, session, call);
    }
    if (call.isJSON()) {
        call.printJSON([&](JSONWriter &writer) { writeExportPreview(writer, rows); });
    } else {
        printExportPreview(call, rows);
    }
    return kAllDone;
}

} // namespace

Command exportCommand() {
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
        .fewestArguments = 1,
        .mostArguments = 1,
        .run = runExport};
}

} // namespace corvane

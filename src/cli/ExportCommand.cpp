#include "cli/DeliveryArguments.h"
#include "cli/ExportOutput.h"
#include "delivery/export/ExportViewModel.h"
#include "media/ExportSession.h"
#include "platform/InterruptWatcher.h"

namespace corvane {

namespace {

int runPlanned(ExportViewModel &flow, CliSession &session, const CommandCall &call) {
    const InterruptWatcher watcher([&flow] { flow.requestCancel(); });
    runDelivery(flow, session, call, QStringLiteral("Verifying sources…"));
    const ExportBatchResult result = flow.result().value_or(ExportBatchResult());
    printExportFailures(call, result);
    if (call.isJSON()) {
        call.printJSON(
            [&](JSONWriter &writer) { writeExportResult(writer, flow.runInput(), result); });
    } else {
        printExportResult(call, result);
    }
    return isCompletelyDone(result) && !watcher.wasInterrupted() ? kAllDone : kRefused;
}

int runExport(const CommandCall &call) {
    const auto outputFolder = call.pathValue("to");
    const DeliveryArguments<OutputMode> arguments(call);
    CliSession session(call.console());
    session.open(call.path(0));
    ExportViewModel flow(&session.store(), media::ffmpegExportSessions());
    flow.reset(session.project());
    if (outputFolder) {
        flow.setOutputFolder(outputFolder);
    }
    flow.setIncludeWholeVideoSelects(!call.isSet("no-clips"));
    flow.setIncludeSubclipSelects(!call.isSet("no-subclips"));
    flow.setExportNewOnly(!call.isSet("all"));
    arguments.apply(flow);
    if (!call.isSet("preview")) {
        return runPlanned(flow, session, call);
    }
    const QList<ExportRowJob> rows = flow.planRows(session.project(), false);
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

#include "cli/ArgumentValues.h"
#include "cli/CliSession.h"
#include "cli/HandoffOutput.h"
#include "cli/NamingArguments.h"
#include "cli/ProgressLine.h"
#include "delivery/handoff/HandoffTexts.h"
#include "delivery/handoff/MediaCacheMaker.h"
#include "delivery/handoff/SelectsHandoffViewModel.h"
#include "media/FFmpegExportSessions.h"
#include "platform/InterruptWatcher.h"
#include "platform/Tasks.h"

namespace corvane {

namespace {

/// The choices that the command line makes; the others stay as the flow has them.
struct HandoffRequest {
    QString destination;
    std::optional<QString> name;
    NamingArguments naming;
    std::optional<ExportBatch::Mode> mode;
    std::optional<HandoffOutputMode> outputMode;
    std::optional<double> handleSeconds;
};

HandoffRequest handoffRequestOf(const CommandCall &call) {
    const auto destination = call.pathValue("to");
    if (!destination) {
        throw UsageError(QStringLiteral("--to is missing."));
    }
    using namespace argumentValues;
    return {.destination = *destination,
            .name = call.value("name"),
            .naming = NamingArguments(call),
            .mode = option(call, "mode", choice<ExportBatch::Mode>),
            .outputMode = option(call, "output", choice<HandoffOutputMode>),
            .handleSeconds = option(call, "handles", seconds)};
}

void applyRequest(SelectsHandoffViewModel &flow, const HandoffRequest &request) {
    flow.setDestinationFolder(request.destination);
    flow.setProjectName(request.name.value_or(flow.choices().projectName));
    flow.setMode(request.mode.value_or(flow.choices().mode));
    flow.setOutputMode(request.outputMode.value_or(flow.choices().outputMode));
    flow.setSubclipHandleSeconds(
        request.handleSeconds.value_or(flow.choices().subclipHandleSeconds));
    request.naming.apply(flow);
}

void handOver(SelectsHandoffViewModel &flow, const Project &project, const CommandCall &call) {
    ProgressLine line(call.console());
    const QObject context;
    QObject::connect(&flow, &SelectsHandoffViewModel::progressChanged, &context, [&] {
        if (const auto &progress = flow.progress()) {
            line.show(flow.overallFraction(), progress->currentFilename);
        }
    });
    waitUntilDone(flow.start(project));
}

int runHandoff(const CommandCall &call) {
    const HandoffRequest request = handoffRequestOf(call);
    MediaCacheMaker cacheMaker;
    CliSession session(call.console());
    session.open(call.path(0));
    SelectsHandoffViewModel flow(&session.store(), media::ffmpegExportSessions(), cacheMaker,
                                 call.console().userDefaults());
    flow.reset(session.project());
    applyRequest(flow, request);
    const InterruptWatcher watcher([&flow] { flow.requestCancel(); });
    handOver(flow, session.project(), call);
    session.save(); // what opening the project changed in it
    if (flow.backupError()) {
        call.printNotice(HandoffTexts::backupLine(flow.backupError()));
    }
    const HandoffResult result = flow.result().value_or(HandoffResult());
    bool isDone = printHandoffFailures(call, result, flow.choices().outputMode);
    if (const auto &notice = session.store().authorization().unsavedNotice()) {
        call.printNotice(*notice);
        isDone = false;
    }
    if (call.isJSON()) {
        call.printJSON([&](JSONWriter &writer) { writeHandoffResult(writer, result); });
    } else {
        printHandoffResult(call, result);
    }
    return isDone && !watcher.wasInterrupted() ? kAllDone : kRefused;
}

} // namespace

Command handoffCommand() {
    return {
        .name = QStringLiteral("handoff"),
        .synopsis = QStringLiteral("PROJECT"),
        .summary = QStringLiteral("Bundles the selected clips and subclips, with their media, "
                                  "as a project of their own."),
        .options =
            QList<QCommandLineOption>{
                valueOption("to", "FOLDER", "The folder to make the package in."),
                valueOption("name", "NAME",
                            "The package's name; the project's with \" - Selects\" "
                            "unless said."),
                valueOption("mode", "MODE", "fast-copy or accurate-transcode."),
                valueOption("output", "OUTPUT", "primary-only or primary-and-hd."),
                valueOption("handles", "S", "Seconds to add at both ends of extracted subclips.")} +
            NamingArguments::options(),
        .fewestArguments = 1,
        .mostArguments = 1,
        .run = runHandoff};
}

} // namespace corvane

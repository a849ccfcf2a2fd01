#include "cli/DeliveryArguments.h"
#include "cli/HandoffOutput.h"
#include "delivery/handoff/SelectsHandoffViewModel.h"
#include "media/ExportSession.h"
#include "platform/InterruptWatcher.h"

namespace corvane {

namespace {

int runHandoff(const CommandCall &call) {
    const auto destination = call.pathValue("to");
    if (!destination) {
        throw UsageError(QStringLiteral("--to is missing."));
    }
    const DeliveryArguments<HandoffOutputMode> arguments(call);
    CliSession session(call.console());
    session.open(call.path(0));
    SelectsHandoffViewModel flow(&session.store(), media::ffmpegExportSessions(), {},
                                 call.console().userDefaults());
    flow.reset(session.project());
    flow.setDestinationFolder(destination);
    flow.setProjectName(call.value("name").value_or(flow.choices().projectName));
    arguments.apply(flow);
    const InterruptWatcher watcher([&flow] { flow.requestCancel(); });
    runDelivery(flow, session, call);
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

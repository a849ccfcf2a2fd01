#include "cli/DeliveryArguments.h"
#include "cli/JSONMembers.h"
#include "delivery/handoff/HandoffTexts.h"
#include "delivery/handoff/SelectsHandoffViewModel.h"
#include "media/ExportSession.h"
#include "platform/InterruptWatcher.h"
#include "platform/Paths.h"

namespace corvane {

CORVANE_JSON_FIELDS(HandoffRowFailure, videoId, videoFileName, error, cancelled);

namespace {

void writeHandoffResult(JSONWriter &writer, const HandoffResult &result) {
    writeMember(writer, "packageFolder", result.packageFolder);
    writeMember(writer, "projectFile", result.projectFileURL);
    writeMember(writer, "succeeded", int(result.succeeded.size()));
    writeMember(writer, "failed", result.failedCount());
    writeMember(writer, "cancelledCount", result.cancelledCount);
    writeMember(writer, "cancelled", result.cancelled);
    writeMember(writer, "generalError", result.generalError);
    writeMember(writer, "failures", result.failed);
}

void printHandoffResult(const CommandCall &call, const HandoffResult &result) {
    const bool isEmpty =
        result.succeeded.isEmpty() && result.failed.isEmpty() && !result.generalError;
    if (isEmpty) {
        call.printLine(QStringLiteral("Nothing to hand off."));
        return;
    }
    for (const HandoffRowOutcome &row : result.succeeded) {
        call.printLine(QStringLiteral("Handed over ") + row.destinationPath);
        if (row.hdPath) {
            call.printLine(QStringLiteral("Handed over ") + *row.hdPath);
        }
    }
    call.printLine(HandoffTexts::headline(result));
    call.printLine(deliveryCounts(result));
    if (result.projectFileURL) {
        call.printLine(QStringLiteral("Package: ") + *result.projectFileURL);
    }
}

/// Prints failures on standard error. Returns true if there are none: every requested output was
/// written.
bool printHandoffFailures(const CommandCall &call, const HandoffResult &result,
                          HandoffOutputMode outputMode) {
    for (const HandoffRowFailure &failure : result.failed) {
        call.printNotice(HandoffTexts::row(failure));
    }
    bool isDone = result.failed.isEmpty();
    for (const HandoffRowOutcome &row : result.succeeded) {
        if (outputMode == HandoffOutputMode::primaryAndHd && !row.hdPath) {
            isDone = false;
            call.printNotice(paths::lastComponent(row.destinationPath) +
                             QStringLiteral(": There is no HD copy of it."));
        }
    }
    if (result.generalError) {
        isDone = false;
        call.printNotice(*result.generalError);
    }
    return isDone;
}

int runHandoff(const CommandCall &call) {
    const auto destination = call.pathValue("to");
    if (!destination) {
        throw UsageError(QStringLiteral("--to is missing."));
    }
    const DeliveryArguments<HandoffOutputMode> arguments(call);
    CliSession session(call);
    SelectsHandoffViewModel flow(&session.store(), media::ffmpegExportSessions(), {},
                                 call.console().userDefaults());
    flow.reset(session.project());
    flow.setFolder(destination);
    flow.setProjectName(call.value("name").value_or(flow.choices().projectName));
    arguments.apply(flow);
    const InterruptWatcher watcher([&flow] { flow.requestCancel(); });
    runDelivery(flow, session, call);
    const HandoffResult result = flow.result().value_or(HandoffResult());
    bool isDone = printHandoffFailures(call, result, flow.choices().outputMode);
    isDone = session.printNotices(call) && isDone;
    call.printResult([&](JSONWriter &writer) { writeHandoffResult(writer, result); },
                     [&] { printHandoffResult(call, result); });
    return isDone && !watcher.wasInterrupted() ? kAllDone : kRefused;
}

} // namespace

CliCommand handoffCommand() {
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
        .run = runHandoff};
}

} // namespace corvane

#include "cli/ArgumentValues.h"
#include "cli/CliSession.h"
#include "cli/ExportOutput.h"
#include "cli/InterruptWatcher.h"
#include "cli/ProgressLine.h"
#include "export/ExportTexts.h"
#include "export/ExportViewModel.h"
#include "media/FFmpegExportSessions.h"
#include "platform/Tasks.h"

namespace corvane {

namespace {

struct NamingChoice {
    QString key;
    QString value;
};

/// The choices that the command line makes; the others stay as the flow has them.
struct ExportRequest {
    std::optional<QString> outputFolder;
    std::optional<ExportBatch::Mode> mode;
    std::optional<OutputMode> outputMode;
    std::optional<double> handleSeconds;
    NamingPreset naming = NamingPreset::keepOriginal;
    QList<NamingChoice> custom;
};

NamingPreset namingPresetOf(const QString &text) {
    const QHash<QString, NamingPreset> presets{
        {QStringLiteral("keep-original"), NamingPreset::keepOriginal},
        {QStringLiteral("project-name-number"), NamingPreset::projectNameNumber},
        {QStringLiteral("custom"), NamingPreset::custom}};
    const auto found = presets.constFind(text);
    if (found == presets.cend()) {
        argumentValues::failUnknown(text, QStringLiteral("--naming"),
                                    {QStringLiteral("keep-original"),
                                     QStringLiteral("project-name-number"),
                                     QStringLiteral("custom")});
    }
    return *found;
}

void choose(ExportNamingOptions &options, const QList<NamingChoice> &choices) {
    for (const NamingChoice &choice : choices) {
        setNamingOption(options, choice.key, choice.value);
    }
}

QList<NamingChoice> customNamingOf(const Invocation &call) {
    QList<NamingChoice> choices;
    const QStringList texts = call.values("custom");
    for (const QString &text : texts) {
        const qsizetype sign = text.indexOf(QLatin1Char('='));
        if (sign < 0) {
            throw UsageError(QStringLiteral("--custom takes KEY=VALUE, not \"%1\".").arg(text));
        }
        choices.append({text.left(sign), text.mid(sign + 1)});
    }
    try {
        ExportNamingOptions unused;
        choose(unused, choices);
    } catch (const NamingOptionError &error) {
        throw UsageError(QStringLiteral("--custom: ") + error.description());
    }
    return choices;
}

ExportRequest exportRequestOf(const Invocation &call) {
    ExportRequest request{.outputFolder = call.pathValue("to"), .custom = customNamingOf(call)};
    if (const auto mode = call.value("mode")) {
        request.mode = argumentValues::choice<ExportBatch::Mode>(*mode, QStringLiteral("--mode"));
    }
    if (const auto output = call.value("output")) {
        request.outputMode =
            argumentValues::choice<OutputMode>(*output, QStringLiteral("--output"));
    }
    if (const auto handles = call.value("handles")) {
        request.handleSeconds = argumentValues::seconds(*handles, QStringLiteral("--handles"));
    }
    if (const auto naming = call.value("naming")) {
        request.naming = namingPresetOf(*naming);
    }
    if (!request.custom.isEmpty() && request.naming != NamingPreset::custom) {
        throw UsageError(QStringLiteral("--custom needs --naming custom."));
    }
    return request;
}

void applyRequest(ExportViewModel &flow, const ExportRequest &request, const Invocation &call) {
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
    flow.setNamingPreset(request.naming);
    ExportNamingOptions naming = flow.choices().naming;
    choose(naming, request.custom);
    flow.setNaming(naming);
}

void exportRows(ExportViewModel &flow, const Project &project, const Invocation &call) {
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
int exportPlanned(ExportViewModel &flow, CliSession &session, const Invocation &call) {
    const InterruptWatcher watcher([&flow] { flow.requestCancel(); });
    exportRows(flow, session.project(), call);
    session.save(); // what was delivered is on record before anything is said of it
    if (flow.backupError()) {
        call.printNotice(ExportTexts::backupLine(flow.backupError()));
    }
    const ExportBatchResult result = flow.result().value_or(ExportBatchResult());
    printExportFailures(call, result);
    if (!call.wantsJSON()) {
        printExportResult(call, result);
    }
    if (call.wantsJSON()) {
        call.printJSON(
            [&](JSONWriter &writer) { writeExportResult(writer, flow.runInput(), result); });
    }
    return isCompletelyDone(result) && !watcher.wasInterrupted() ? kAllDone : kRefused;
}

int runExport(const Invocation &call) {
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
    if (call.wantsJSON()) {
        call.printJSON([&](JSONWriter &writer) { writeExportPreview(writer, rows); });
    } else {
        printExportPreview(call, rows);
    }
    return kAllDone;
}

} // namespace

Command exportCommand() {
    return {.name = QStringLiteral("export"),
            .synopsis = QStringLiteral("PROJECT"),
            .summary = QStringLiteral("Delivers the selected clips and subclips to a folder."),
            .options =
                {valueOption("to", "FOLDER",
                             "The output folder; \"selects\" beside the project unless said."),
                 valueOption("mode", "MODE", "fast-copy or accurate-transcode."),
                 valueOption("output", "OUTPUT", "primary-only, primary-and-hd or hd-only."),
                 valueOption("handles", "S", "Seconds to add at both ends of subclips."),
                 valueOption("naming", "PRESET", "keep-original, project-name-number or custom."),
                 valueOption("custom", "KEY=VALUE",
                             "One choice of the naming \"custom\". May be given "
                             "more than once."),
                 flagOption("all", "What was exported before, too."),
                 flagOption("no-clips", "No whole clips."),
                 flagOption("no-subclips", "No subclips."),
                 flagOption("preview", "Only show what would be exported, and under which names.")},
            .fewestArguments = 1,
            .mostArguments = 1,
            .run = runExport};
}

} // namespace corvane

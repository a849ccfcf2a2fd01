#include "cli/CliSession.h"
#include "cli/JSONMembers.h"
#include "cli/ProgressLine.h"
#include "cli/TextTable.h"
#include "import/ImportTexts.h"
#include "import/ImportViewModel.h"
#include "platform/InterruptWatcher.h"
#include "platform/Paths.h"
#include "platform/Tasks.h"
#include "platform/TextFormat.h"

namespace corvane {

template <> struct JSONFields<ImportFailure> {
    static constexpr auto table = std::tuple(jsonField("filename", &ImportFailure::filename),
                                             jsonField("message", &ImportFailure::message));
};

namespace {

/// A scan passes over a source that isn't there; somebody who typed it wants to know.
QStringList sourcesFrom(const CommandCall &call, int index) {
    const QStringList sources = call.pathsFrom(index);
    for (const QString &source : sources) {
        try {
            (void)fileSystem().status(source);
        } catch (const FileError &error) {
            throw Failure(QStringLiteral("Cannot read %1: %2. Nothing was changed.")
                              .arg(source, error.description()));
        }
    }
    return sources;
}

void scanSources(ImportViewModel &flow, const QStringList &sources, const CommandCall &call) {
    flow.setSources(sources);
    flow.setRecursive(call.isSet("recursive"));
    ProgressLine line(call.console());
    line.show(QStringLiteral("Scanning sources…"));
    waitUntilDone(flow.startScan());
    if (flow.scanError()) {
        throw Failure(*flow.scanError());
    }
    if (flow.stage() != ImportViewModel::Stage::results) {
        throw Failure(QStringLiteral("Cancelled"));
    }
}

/// Standard output is the JSON object's alone, so with one it goes to standard error.
void printLeftOut(const CommandCall &call, const LeftOut &leftOut) {
    const QString text = leftOutText(leftOut);
    if (!text.isEmpty() && call.isJSON()) {
        call.printNotice(text);
    } else if (!text.isEmpty()) {
        call.printLine(text);
    }
}

void writeScan(JSONWriter &writer, const QList<ScannedVideo> &videos) {
    writer.beginObject();
    writer.key("videos");
    writer.beginArray();
    for (const ScannedVideo &video : videos) {
        writer.beginObject();
        writeMember(writer, "path", video.url);
        writeMember(writer, "fileSizeBytes", video.fileSizeBytes);
        writeMember(writer, "sidecarPath", video.sidecarURL);
        writeMember(writer, "sidecarType", video.sidecarType);
        writeMember(writer, "contentHash", video.contentHash);
        writer.endObject();
    }
    writer.endArray();
    writer.endObject();
}

void printScan(const CommandCall &call, const ImportViewModel &flow) {
    TextTable table({QStringLiteral("SIZE"), QStringLiteral("SIDECAR"), QStringLiteral("PATH")});
    for (const ScannedVideo &video : flow.scannedVideos()) {
        const QString sidecar =
            video.sidecarURL ? paths::lastComponent(*video.sidecarURL) : QStringLiteral("-");
        table.addRow({formattedByteCount(video.fileSizeBytes), sidecar, video.url});
    }
    table.print(call);
    call.printLine(flow.foundText());
    printLeftOut(call, flow.leftOut());
}

int runScan(const CommandCall &call) {
    const QStringList sources = sourcesFrom(call, 0);
    ImportViewModel flow(nullptr);
    const InterruptWatcher watcher([&flow] { flow.cancelScan(); });
    scanSources(flow, sources, call);
    if (call.isJSON()) {
        call.printJSON([&](JSONWriter &writer) { writeScan(writer, flow.scannedVideos()); });
        printLeftOut(call, flow.leftOut());
    } else {
        printScan(call, flow);
    }
    return kAllDone;
}

void showImportProgress(ProgressLine &line, const ImportViewModel &flow) {
    if (const auto &progress = flow.progress()) {
        const double row = progress->bytesTotal > 0
                               ? double(progress->bytesDone) / double(progress->bytesTotal)
                               : 0.0;
        line.show((progress->index - 1 + row) / std::max(progress->total, 1),
                  progress->currentFilename);
    }
}

void importRows(ImportViewModel &flow, const CommandCall &call) {
    ProgressLine line(call.console());
    const QObject context;
    QObject::connect(&flow, &ImportViewModel::progressChanged, &context,
                     [&] { showImportProgress(line, flow); });
    QObject::connect(&flow, &ImportViewModel::importedVideoIdsChanged, &context,
                     [&] { line.show(QStringLiteral("Recording what was imported…")); });
    waitUntilDone(flow.beginImport());
}

/// What one import came to. Where nothing was to be imported there was no run, and the flow counts
/// nothing.
struct ImportAnswer {
    const ImportViewModel &flow;
    qsizetype skipped;

    void write(JSONWriter &writer) const {
        writer.beginObject();
        writeMember(writer, "succeeded", flow.succeededCount());
        writeMember(writer, "skipped", skipped);
        writeMember(writer, "failed", flow.failedCount());
        writeMember(writer, "sidecarsImported", flow.sidecarsImportedCount());
        writeMember(writer, "failures", flow.failures());
        writeMember(writer, "videos", flow.importedVideoIds());
        writer.endObject();
    }

    void print(const CommandCall &call) const {
        call.printLine(QStringLiteral("Imported %1, %2 with a sidecar file.")
                           .arg(counted(flow.succeededCount(), QStringLiteral("clip")))
                           .arg(flow.sidecarsImportedCount()));
        if (skipped > 0) {
            call.printLine(QStringLiteral("Skipped %1, imported already.")
                               .arg(counted(skipped, QStringLiteral("file"))));
        }
        if (flow.failedCount() > 0) {
            call.printLine(QStringLiteral("Failed: %1.")
                               .arg(counted(flow.failedCount(), QStringLiteral("file"))));
        }
        printLeftOut(call, flow.leftOut());
    }
};

/// A file that is skipped gets no grant by this import. Where it needs one, the user is asked.
void printPending(const ImportViewModel &flow, const CommandCall &call) {
    if (flow.refusedCount() > 0) {
        call.printNotice(QStringLiteral("%1 of the skipped can't be read for this project until "
                                        "you confirm. See \"corvane-cli media\".")
                             .arg(counted(flow.refusedCount(), QStringLiteral("file"))));
    }
}

int runImport(const CommandCall &call) {
    const auto destination = call.pathValue("to");
    if (destination && !call.isSet("copy")) {
        throw UsageError(QStringLiteral("--to names the folder for copies, so it needs --copy."));
    }
    const QStringList sources = sourcesFrom(call, 1);
    CliSession session(call.console());
    session.open(call.path(0));
    ImportViewModel flow(&session.store());
    const InterruptWatcher watcher([&flow] {
        flow.cancelScan();
        flow.cancelImport();
    });
    scanSources(flow, sources, call);
    flow.setMode(call.isSet("copy") ? SourceImportMode::copied : SourceImportMode::inPlace);
    if (destination) {
        flow.setDestinationFolder(*destination);
    }
    const ImportAnswer answer{flow, flow.previewRows().size() - flow.includedCount()};
    importRows(flow, call);
    session.save(); // what was imported is on record before anything is said of it
    for (const ImportFailure &failure : flow.failures()) {
        call.printNotice(failure.filename + QStringLiteral(": ") + failure.message);
    }
    if (!call.isJSON()) {
        answer.print(call);
    }
    if (call.isJSON()) {
        call.printJSON([&](JSONWriter &writer) { answer.write(writer); });
        printLeftOut(call, flow.leftOut());
    }
    if (watcher.wasInterrupted()) {
        call.printNotice(QStringLiteral("Cancelled"));
    }
    const auto &unsaved = session.store().authorization().unsavedNotice();
    if (unsaved) {
        call.printNotice(*unsaved);
    }
    printPending(flow, call);
    const bool isDone = flow.failures().isEmpty() && !unsaved && !watcher.wasInterrupted();
    return isDone ? kAllDone : kRefused;
}

const char kRecursiveHelp[] = "Look into folders below the sources too.";

} // namespace

Command scanCommand() {
    return {.name = QStringLiteral("scan"),
            .synopsis = QStringLiteral("SOURCE..."),
            .summary = QStringLiteral("Lists the media files in folders and their sidecar files."),
            .options = {flagOption("recursive", kRecursiveHelp)},
            .fewestArguments = 1,
            .mostArguments = -1,
            .run = runScan};
}

Command importCommand() {
    return {.name = QStringLiteral("import"),
            .synopsis = QStringLiteral("PROJECT SOURCE..."),
            .summary = QStringLiteral("Adds the media files of folders to a project."),
            .options = {flagOption("recursive", kRecursiveHelp),
                        flagOption("copy", "Copy the files into the project's media folder."),
                        valueOption("to", "FOLDER", "Copy them into this folder instead.")},
            .fewestArguments = 2,
            .mostArguments = -1,
            .run = runImport};
}

} // namespace corvane

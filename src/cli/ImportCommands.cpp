#include "cli/CliSession.h"
#include "cli/JSONMembers.h"
#include "cli/ProgressLine.h"
#include "cli/TextTable.h"
#include "import/ImportTexts.h"
#include "import/ImportViewModel.h"
#include "platform/InterruptWatcher.h"
#include "platform/Paths.h"
#include "platform/RemainingTime.h"
#include "platform/Tasks.h"
#include "platform/TextFormat.h"
#include "session/MediaConfirmationBanner.h"
#include "session/SessionTexts.h"

namespace corvane {

CORVANE_JSON_FIELDS(ImportFailure, filename, message);

namespace {

/// Throws if a source cannot be read; a scan would only count it.
QStringList sourcesFrom(const CommandCall &call, int index) {
    const QStringList sources = call.pathsFrom(index);
    for (const QString &source : sources) {
        try {
            (void)fileSystem().status(source); // throws unless the source exists and can be reached
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

void printFailures(const CommandCall &call, const QList<ImportFailure> &failures) {
    for (const ImportFailure &failure : failures) {
        call.printNotice(failure.filename + QStringLiteral(": ") + failure.message);
    }
}

/// Prints to standard error if standard output is reserved for JSON.
void printLeftOut(const CommandCall &call, const LeftOut &leftOut) {
    const QString text = leftOutText(leftOut);
    if (!text.isEmpty() && call.isJSON()) {
        call.printNotice(text);
    } else if (!text.isEmpty()) {
        call.printLine(text);
    }
}

void writeScan(JSONWriter &writer, const QList<ScannedVideo> &videos) {
    writeRows(writer, "videos", videos, [&](const ScannedVideo &video) {
        writeMember(writer, "path", video.url);
        writeMember(writer, "fileSizeBytes", video.fileSizeBytes);
        writeMember(writer, "sidecarPath", video.sidecarURL);
        writeMember(writer, "sidecarType", video.sidecarType);
        writeMember(writer, "contentHash", video.contentHash);
    });
}

void printScan(const CommandCall &call, const ImportViewModel &flow) {
    TextTable table({QStringLiteral("SIZE"), QStringLiteral("SIDECAR"), QStringLiteral("PATH")});
    for (const ScannedVideo &video : flow.scannedVideos()) {
        const QString sidecar =
            video.sidecarURL ? paths::lastComponent(*video.sidecarURL) : QStringLiteral("-");
        table.addRow({formattedByteCount(video.fileSizeBytes), sidecar, video.url});
    }
    table.print(call);
    call.printLine(foundText(flow.previewRows()) + alreadyImportedText(flow.previewRows()));
}

int runScan(const CommandCall &call) {
    const QStringList sources = sourcesFrom(call, 0);
    ImportViewModel flow(nullptr);
    const InterruptWatcher watcher([&flow] { flow.cancelScan(); });
    scanSources(flow, sources, call);
    printFailures(call, flow.failures());
    call.printResult([&](JSONWriter &writer) { writeScan(writer, flow.scannedVideos()); },
                     [&] { printScan(call, flow); });
    printLeftOut(call, flow.leftOut());
    return flow.failures().isEmpty() ? kAllDone : kRefused;
}

/// Shows the progress of an import.
class ImportLine {
  public:
    explicit ImportLine(Console &console) : m_line(console) {}

    void show(const ImportProgress &progress) {
        const double part =
            progress.bytesTotal > 0 ? double(progress.bytesDone) / double(progress.bytesTotal) : 0;
        if (progress.phase == ImportProgress::Phase::recording) {
            showRecording(progress, part);
        } else {
            m_line.show((progress.index - 1 + part) / progress.total, progress.currentFilename);
        }
    }

  private:
    void showRecording(const ImportProgress &progress, double part) {
        const auto now = Clock::system().monotonic();
        if (!m_recordingTime) {
            m_recordingTime.emplace(now);
        }
        const HashingProgress hashing{.bytesDone = qint64(progress.bytesDone),
                                      .bytesTotal = qint64(progress.bytesTotal)};
        m_line.show(part, hashingText(hashing, m_recordingTime->text(part, now)));
    }

    ProgressLine m_line;
    std::optional<RemainingTime> m_recordingTime; ///< nullopt before the phase
};

void importRows(ImportViewModel &flow, const CommandCall &call) {
    ImportLine line(call.console());
    const QObject context;
    QObject::connect(&flow, &ImportViewModel::progressChanged, &context, [&] {
        if (const auto progress = flow.progress()) {
            line.show(*progress);
        }
    });
    waitUntilDone(flow.beginImport());
}

void writeResult(JSONWriter &writer, const ImportResult &result) {
    writeMember(writer, "succeeded", result.succeededCount);
    writeMember(writer, "skipped", result.skippedCount);
    writeMember(writer, "failed", result.failedCount);
    writeMember(writer, "sidecarsImported", result.sidecarsImportedCount);
    writeMember(writer, "failures", result.failures);
    writeMember(writer, "videos", result.importedVideoIds);
}

void printResult(const CommandCall &call, const ImportResult &result) {
    call.printLine(QStringLiteral("Imported %1, %2 with a sidecar file.")
                       .arg(counted(result.succeededCount, QStringLiteral("clip")))
                       .arg(result.sidecarsImportedCount));
    if (result.skippedCount > 0) {
        call.printLine(QStringLiteral("Skipped %1, imported already.")
                           .arg(counted(result.skippedCount, QStringLiteral("file"))));
    }
    if (result.failedCount > 0) {
        call.printLine(
            QStringLiteral("Failed: %1.").arg(counted(result.failedCount, QStringLiteral("file"))));
    }
}

/// An import grants no access to files that it skips; some need the user's confirmation.
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
    CliSession session(call);
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
    const qsizetype excludedCount = flow.previewRows().size() - flow.includedCount();
    importRows(flow, call);
    session.save(); // before the result is printed
    ImportResult result = flow.result();
    result.skippedCount = int(excludedCount); // also if there was no row to import and so no run
    if (result.backupError) {
        call.printNotice(SessionTexts::backupLine(result.backupError));
    }
    result.failures = flow.failures();
    printFailures(call, result.failures);
    call.printResult([&](JSONWriter &writer) { writeResult(writer, result); },
                     [&] { printResult(call, result); });
    printLeftOut(call, flow.leftOut());
    if (watcher.wasInterrupted()) {
        call.printNotice(QStringLiteral("Cancelled"));
    }
    if (result.pendingCount > 0) {
        call.printNotice(QStringLiteral("%1 not read to the end and can't be delivered until you "
                                        "confirm. See \"corvane-cli media\".")
                             .arg(counted(result.pendingCount, QStringLiteral("imported clip")) +
                                  QLatin1String(result.pendingCount == 1 ? " was" : " were")));
    }
    const bool isRegistrySaved = session.printNotices(call);
    printPending(flow, call);
    const bool isDone = result.failures.isEmpty() && isRegistrySaved && !watcher.wasInterrupted();
    return isDone ? kAllDone : kRefused;
}

const char kRecursiveHelp[] = "Look into folders below the sources too.";

} // namespace

CliCommand scanCommand() {
    return {.name = QStringLiteral("scan"),
            .synopsis = QStringLiteral("SOURCE..."),
            .summary = QStringLiteral("Lists the media files in folders and their sidecar files."),
            .options = {flagOption("recursive", kRecursiveHelp)},
            .run = runScan};
}

CliCommand importCommand() {
    return {.name = QStringLiteral("import"),
            .synopsis = QStringLiteral("PROJECT SOURCE..."),
            .summary = QStringLiteral("Adds the media files of folders to a project."),
            .options = {flagOption("recursive", kRecursiveHelp),
                        flagOption("copy", "Copy the files into the project's media folder."),
                        valueOption("to", "FOLDER", "Copy them into this folder instead.")},
            .run = runImport};
}

} // namespace corvane

#include "delivery/ExportTexts.h"

#include "platform/Paths.h"
#include "platform/TextFormat.h"

#include <algorithm>

namespace corvane::ExportTexts {

QString outputFolder(const ExportChoices &choices) {
    return choices.outputFolder.value_or(QStringLiteral("(none chosen)"));
}

QString label(ExportBatch::Mode mode) {
    return mode == ExportBatch::Mode::fastCopy ? QStringLiteral("Fast copy")
                                               : QStringLiteral("Accurate transcode");
}

QString help(ExportBatch::Mode mode) {
    if (mode == ExportBatch::Mode::fastCopy) {
        return QStringLiteral("Whole-clips: byte-level copy (no re-encode). Subclips: stream "
                              "pass-through (GOP-snapped, may extend trim ~1–2s).");
    }
    return QStringLiteral(
        "H.264/AAC re-encode at HighestQuality preset. Frame-accurate trims; output "
        "is .mp4 always.");
}

QString label(OutputMode mode) {
    switch (mode) {
    case OutputMode::primaryOnly:
        return QStringLiteral("Primary only");
    case OutputMode::primaryAndHd:
        return QStringLiteral("Primary + HD");
    case OutputMode::hdOnly:
        break;
    }
    return QStringLiteral("HD only");
}

QString help(OutputMode mode) {
    switch (mode) {
    case OutputMode::primaryOnly:
        return QStringLiteral("Source-quality export only.");
    case OutputMode::primaryAndHd:
        return QStringLiteral(
            "Primary export plus a 1080p H.264 deliverable in /HD/. HD copies are "
            "deliverables, NOT proxies.");
    case OutputMode::hdOnly:
        break;
    }
    return QStringLiteral("1080p H.264 deliverable only — no source-quality export.");
}

QString label(NamingPreset preset) {
    switch (preset) {
    case NamingPreset::keepOriginal:
        return QStringLiteral("Keep original");
    case NamingPreset::projectNameNumber:
        return QStringLiteral("Project name and number");
    case NamingPreset::custom:
        break;
    }
    return QStringLiteral("Custom");
}

QString label(ExportNamingOptions::NumberingMode mode) {
    switch (mode) {
    case ExportNamingOptions::NumberingMode::off:
        return QStringLiteral("Off");
    case ExportNamingOptions::NumberingMode::originalFileNumber:
        return QStringLiteral("Original file number");
    case ExportNamingOptions::NumberingMode::sequential:
        break;
    }
    return QStringLiteral("Sequential (001…)");
}

const QList<double> &handleChoices() {
    static const QList<double> seconds{0, 0.5, 1, 2, 4};
    return seconds;
}

QString handleLabel(double seconds) {
    return seconds == 0 ? QStringLiteral("None") : QString::number(seconds) + QLatin1Char('s');
}

QString handlesHelp() {
    return QStringLiteral("Extra time before in-point and after out-point. Useful for room tone or "
                          "NLE re-trim. Skipped for whole-clip rows.");
}

QString countLine(qsizetype selected, qsizetype planned) {
    if (selected == 0) {
        return QStringLiteral("No selects");
    }
    const QString all = counted(selected, QStringLiteral("row"));
    return planned == selected ? all
                               : QStringLiteral("%1 of %2").arg(QString::number(planned), all);
}

QString symbol(ExportRowKind kind) {
    return kind == ExportRowKind::wholeClip ? QStringLiteral("film") : QStringLiteral("scissors");
}

QString nothingToExport() {
    return QStringLiteral("Nothing to export. Mark clips with the S flag in Review (or set up "
                          "subclips), then come back here.");
}

QString checkingLine() {
    return QStringLiteral("Checking the files…");
}

QString progressLine(const ExportProgress &progress) {
    return QStringLiteral("%1 of %2: %3")
        .arg(QString::number(progress.index + 1), QString::number(progress.total),
             progress.currentFilename);
}

QString rowLine(const ExportProgress &progress) {
    QString text = QStringLiteral("Copying / encoding…");
    if (progress.phase == ExportProgress::Phase::done) {
        text = QStringLiteral("Row done");
    } else if (progress.rowProgress > 0) {
        text = percent(progress.rowProgress) + QStringLiteral(" this row");
    }
    if (progress.phase != ExportProgress::Phase::done && progress.bytesTotal > 0) {
        text += QStringLiteral(" · %1 / %2")
                    .arg(formattedByteCount(progress.bytesDone),
                         formattedByteCount(progress.bytesTotal));
    }
    const bool isHD = progress.currentMode == QLatin1String("hd");
    return isHD ? QStringLiteral("%1 (%2)").arg(text, progress.currentMode) : text;
}

double overallFraction(const ExportProgress &progress, OutputMode outputMode) {
    // Where a row is made twice, each of the two counts half of it.
    double row = progress.rowProgress;
    if (outputMode == OutputMode::primaryAndHd && progress.phase != ExportProgress::Phase::done) {
        row = row / 2 + (progress.phase == ExportProgress::Phase::hdEncoding ? 0.5 : 0.0);
    }
    return progress.total > 0 ? (progress.index + row) / progress.total : 0;
}

QString percent(double fraction) {
    // The tiny addend keeps 0.29 * 100, which is a little less than 29, at 29.
    const int whole = int(std::clamp(fraction, 0.0, 1.0) * 100 + 1e-9);
    return QString::number(whole) + QLatin1Char('%');
}

QString cancelButton(CancelStage stage) {
    switch (stage) {
    case CancelStage::none:
        return QStringLiteral("Cancel");
    case CancelStage::graceful:
        return QStringLiteral("Force Cancel");
    case CancelStage::hard:
        break;
    }
    return QStringLiteral("Cancelling…");
}

QString headline(const ExportBatchResult &result) {
    if (result.cancelled) {
        return QStringLiteral("Export cancelled");
    }
    const qsizetype issues = result.failed.size() + (result.manifestError ? 1 : 0);
    return issues > 0
               ? QStringLiteral("Export finished with ") + counted(issues, QStringLiteral("issue"))
               : QStringLiteral("Export complete");
}

QString manifestLine(const ExportBatchResult &result) {
    return result.manifestSidecarPath
               ? QStringLiteral("Manifest: ") + paths::lastComponent(*result.manifestSidecarPath)
               : result.manifestError.value_or(QString());
}

QString backupLine(const std::optional<QString> &backupError) {
    return backupError ? QStringLiteral("Backup warning: ") + *backupError : QString();
}

QString succeededTitle(const ExportBatchResult &result) {
    return QStringLiteral("Succeeded (%1)").arg(result.succeeded.size());
}

QString failedTitle(const ExportBatchResult &result) {
    return QStringLiteral("Failed / Cancelled (%1)").arg(result.failed.size());
}

QString note(const ExportRowOutcome &outcome) {
    if (outcome.hdOutputPath) {
        return QStringLiteral("(+ HD)");
    }
    return outcome.hdError ? QStringLiteral("(HD skipped)") : QString();
}

QString row(const ExportRowFailure &failure) {
    return paths::lastComponent(failure.destinationPath) + QStringLiteral(": ") + failure.error;
}

QString succeededSymbol() {
    return QStringLiteral("checkmark.circle.fill");
}

QString failedSymbol(bool cancelled) {
    return cancelled ? QStringLiteral("xmark.circle")
                     : QStringLiteral("exclamationmark.triangle.fill");
}

} // namespace corvane::ExportTexts

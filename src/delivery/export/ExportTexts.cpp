#include "delivery/export/ExportTexts.h"

#include "delivery/DeliveryTexts.h"
#include "platform/Paths.h"
#include "platform/TextFormat.h"

namespace corvane::ExportTexts {

QString help(ExportBatch::Mode mode) {
    if (mode == ExportBatch::Mode::fastCopy) {
        return DeliveryTexts::fastCopyHelp();
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

QString nothingToExport() {
    return QStringLiteral("Nothing to export. Mark clips with the S flag in Review (or set up "
                          "subclips), then come back here.");
}

QString rowLine(const ExportProgress &progress) {
    QStringList parts{QStringLiteral("Copying / encoding…")};
    if (progress.phase == ExportProgress::Phase::done) {
        parts = {QStringLiteral("Row done")};
    } else {
        if (progress.rowProgress > 0) {
            parts = {DeliveryTexts::percent(progress.rowProgress) + QStringLiteral(" this row")};
        }
        if (progress.bytesTotal > 0) {
            parts.append(DeliveryTexts::byteCounts(progress.bytesDone, progress.bytesTotal));
        }
    }
    const QString text = parts.join(QStringLiteral(" · "));
    const bool isHD = progress.currentMode == QLatin1String("hd");
    return isHD ? QStringLiteral("%1 (%2)").arg(text, progress.currentMode) : text;
}

QString headline(const ExportBatchResult &result) {
    return DeliveryTexts::headline(QStringLiteral("Export"), result.cancelled,
                                   result.failed.size() + (result.manifestError ? 1 : 0));
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

} // namespace corvane::ExportTexts

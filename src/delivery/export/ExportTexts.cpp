#include "delivery/export/ExportTexts.h"

#include "delivery/DeliveryTexts.h"
#include "platform/Paths.h"
#include "platform/TextFormat.h"

namespace corvane::ExportTexts {

QString countLine(qsizetype selected, qsizetype planned) {
    if (selected == 0) {
        return QStringLiteral("No selects");
    }
    const QString all = counted(selected, QStringLiteral("row"));
    return planned == selected ? all
                               : QStringLiteral("%1 of %2").arg(QString::number(planned), all);
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

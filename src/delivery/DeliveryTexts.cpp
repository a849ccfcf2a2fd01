#include "delivery/DeliveryTexts.h"

#include "platform/TextFormat.h"

#include <algorithm>

namespace corvane::DeliveryTexts {

QString symbol(ExportRowKind kind) {
    return kind == ExportRowKind::wholeClip ? QStringLiteral("film") : QStringLiteral("scissors");
}

QString checkingLine() {
    return QStringLiteral("Checking the files…");
}

QString progressLine(int index, int total, const QString &fileName) {
    return QStringLiteral("%1 of %2: %3")
        .arg(QString::number(std::min(index + 1, total)), QString::number(total), fileName);
}

QString byteCounts(quint64 done, quint64 total) {
    return total > 0
               ? QStringLiteral("%1 / %2").arg(formattedByteCount(done), formattedByteCount(total))
               : QString();
}

QString percent(double fraction) {
    // The small addend compensates for rounding: 0.29 * 100 is slightly below 29.
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

QString headline(const QString &subject, bool isCancelled, qsizetype issueCount) {
    if (isCancelled) {
        return subject + QStringLiteral(" cancelled");
    }
    return subject + (issueCount > 0 ? QStringLiteral(" finished with ") +
                                           counted(issueCount, QStringLiteral("issue"))
                                     : QStringLiteral(" complete"));
}

QString succeededTitle(qsizetype count) {
    return QStringLiteral("Succeeded (%1)").arg(count);
}

QString failedTitle(qsizetype count) {
    return QStringLiteral("Failed / Cancelled (%1)").arg(count);
}

} // namespace corvane::DeliveryTexts

#pragma once

#include "delivery/ExportNaming.h"
#include "transfer/CancelToken.h"

/// Texts that all kinds of delivery share.
namespace corvane::DeliveryTexts {

/// Icon of a row in the preview.
QString symbol(ExportRowKind kind);

// Running.
/// Shown until the first row starts.
QString checkingLine();
/// "2 of 15: a.mov". `index` starts at 0.
QString progressLine(int index, int total, const QString &fileName);
/// "1.2 MB / 3.4 MB"; empty if `total` is 0.
QString byteCounts(quint64 done, quint64 total);
/// "38%", rounded down, so that 100% means complete.
QString percent(double fraction);
QString cancelButton(CancelStage stage);

// Done.
/// `subject` is "Export" or "Handoff".
QString headline(const QString &subject, bool isCancelled, qsizetype issueCount);
QString succeededTitle(qsizetype count);
QString failedTitle(qsizetype count);

} // namespace corvane::DeliveryTexts

#pragma once

#include "delivery/ExportPlanning.h"
#include "transfer/CancelToken.h"

#include <QStringList>

/// What the export screens say, apart from their titles and buttons that never change.
namespace corvane::ExportTexts {

// Configure.
QString outputFolder(const ExportChoices &choices);
QString label(ExportBatch::Mode mode);
QString help(ExportBatch::Mode mode);
QString label(OutputMode mode);
QString help(OutputMode mode);
QString label(NamingPreset preset);
QString label(ExportNamingOptions::NumberingMode mode);
/// The handles that are offered, in seconds, and what they are called: "None", "0.5s", "1s".
const QList<double> &handleChoices();
QString handleLabel(double seconds);
QString handlesHelp();

/// "<planned> of <selected> rows". `selected` is `countSelects`, `planned` the number of rows.
QString countLine(qsizetype selected, qsizetype planned);
/// The symbol of a row in the preview.
QString symbol(ExportRowKind kind);
/// In the place of a preview without rows.
QString nothingToExport();

// Running.
/// Before the first row: what is to be delivered is read and compared with what was granted.
QString checkingLine();
QString progressLine(const ExportProgress &progress);
/// Of the row's output in hand; it says so where that is the HD copy, and counts the bytes of one
/// that is copied.
QString rowLine(const ExportProgress &progress);
/// How much of the run the progress stands for, from 0 to 1.
double overallFraction(const ExportProgress &progress,
                       OutputMode outputMode = OutputMode::primaryOnly);
/// "38%", cut off so that 100% is said only when all is done.
QString percent(double fraction);
QString cancelButton(CancelStage stage);

// Done.
QString headline(const ExportBatchResult &result);
/// Where the manifest is, or why there is none.
QString manifestLine(const ExportBatchResult &result);
/// Empty where the backup was made.
QString backupLine(const std::optional<QString> &backupError);
QString succeededTitle(const ExportBatchResult &result);
QString failedTitle(const ExportBatchResult &result);
/// What became of the HD copy; empty where none was wanted.
QString note(const ExportRowOutcome &outcome);
QString row(const ExportRowFailure &failure);
/// The symbol of a row that was delivered.
QString succeededSymbol();
/// The symbol of a row that wasn't.
QString failedSymbol(bool cancelled);

} // namespace corvane::ExportTexts

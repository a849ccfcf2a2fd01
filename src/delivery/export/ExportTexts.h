#pragma once

#include "delivery/export/ExportRow.h"

/// Texts of the export sheet and command. Those shared with other deliveries are in
/// `DeliveryTexts`.
namespace corvane::ExportTexts {

/// "12 of 15 rows"; "15 rows" if all are planned.
QString countLine(qsizetype selected, qsizetype planned);
/// State of the current output, with byte counts for a byte copy, and "(hd)" for an HD copy.
QString rowLine(const ExportProgress &progress);
QString headline(const ExportBatchResult &result);
/// "(+ HD)" or "(HD skipped)"; empty if no HD copy was wanted.
QString note(const ExportRowOutcome &outcome);
QString row(const ExportRowFailure &failure);

} // namespace corvane::ExportTexts

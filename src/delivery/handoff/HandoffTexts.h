#pragma once

#include "delivery/handoff/HandoffPlanning.h"

/// What the handoff screens say, apart from their titles and buttons that never change. What they
/// share with the export screens is in `ExportTexts`.
namespace corvane::HandoffTexts {

// Configure.
QString destination(const HandoffChoices &choices);
/// Where the package is going to be, with placeholders for what isn't chosen yet.
QString packageLocation(const HandoffChoices &choices);
QString projectNamePlaceholder();
QString projectNameHelp();
QString help(ExportBatch::Mode mode);
QString label(HandoffOutputMode mode);
QString help(HandoffOutputMode mode);
QString handlesHelp();
/// "2 clips, 1 subclip, 3 outputs, ~1.2 GB"
QString contentsSummary(const QList<HandoffClip> &clips);
/// Of a row of the list of included clips.
QString symbol(const HandoffClip &clip);
QString contents(const HandoffClip &clip);
QString nothingToHandOff();

// Running.
QString progressLine(const HandoffProgress &progress);
QString phase(HandoffProgress::Phase phase);
/// "<done> / <total>"; empty where no bytes are counted.
QString bytes(const HandoffProgress &progress);
/// The phase, and the bytes behind it where any are counted.
QString rowLine(const HandoffProgress &progress);
/// How much of the run the progress stands for, from 0 to 1.
double overallFraction(const HandoffProgress &progress);

// Done.
QString headline(const HandoffResult &result);
/// Empty where the backup was made.
QString backupLine(const std::optional<QString> &backupError);
QString succeededTitle(const HandoffResult &result);
QString failedTitle(const HandoffResult &result);
/// That there is an HD copy; empty where there is none.
QString note(const HandoffRowOutcome &outcome);
QString row(const HandoffRowFailure &failure);

} // namespace corvane::HandoffTexts

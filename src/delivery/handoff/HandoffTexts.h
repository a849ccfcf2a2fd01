#pragma once

#include "delivery/handoff/HandoffPlanning.h"

/// Texts of the handoff sheet and command. Those shared with other deliveries are in
/// `DeliveryTexts`.
namespace corvane::HandoffTexts {

/// The package's path, with placeholders for missing choices.
QString packageLocation(const HandoffChoices &choices);
/// "2 clips, 1 subclip, 3 outputs, ~1.2 GB"
QString contentsSummary(const QList<HandoffClip> &clips);
/// Icon of a row in the preview.
QString symbol(const HandoffClip &clip);
/// "clip + 2 subclips"
QString contents(const HandoffClip &clip);
/// "Copying media · 1.2 MB / 3.4 MB"
QString rowLine(const HandoffProgress &progress);
QString headline(const HandoffResult &result);
QString row(const HandoffRowFailure &failure);

} // namespace corvane::HandoffTexts

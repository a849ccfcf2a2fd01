#pragma once

#include "delivery/ExportNaming.h"
#include "delivery/handoff/HandoffPlan.h"

/// What a handoff takes over from a project. Pure work on the document; main thread.
namespace corvane {

/// The choices of the handoff screen.
struct HandoffChoices {
    std::optional<QString> destinationFolder; ///< absolute
    QString projectName;
    ExportBatch::Mode mode = ExportBatch::Mode::fastCopy;
    HandoffOutputMode outputMode = HandoffOutputMode::primaryOnly;
    double subclipHandleSeconds = 0;
    NamingPreset namingPreset = NamingPreset::keepOriginal;
    ExportNamingOptions naming;

    bool operator==(const HandoffChoices &) const = default;
};

/// What the screen offers when it opens, but for the destination.
HandoffChoices defaultHandoffChoices(const Project &project);

/// The clips with anything selected, in the order of the document. A subclip is taken whatever its
/// clip's own flag says.
QList<HandoffClip> planClips(const Project &project);

/// The plan of a run, without grants. There must be a destination.
HandoffPlan makePlan(const Project &project, const HandoffChoices &choices);

/// The text as the package's name; never empty.
QString packageName(const QString &projectName);

/// How many bytes the primary outputs will have, as far as the document tells.
quint64 estimatedBytes(const QList<HandoffClip> &clips);

/// True if an output of the plan, or an HD copy, is made by an export session.
bool needsExportSession(const HandoffPlan &plan);

} // namespace corvane

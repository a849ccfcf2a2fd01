#pragma once

#include "delivery/DeliveryChoices.h"
#include "delivery/handoff/HandoffPlan.h"

/// Plans what a handoff takes from a project. Pure functions of the document.
namespace corvane {

struct HandoffChoices : DeliveryChoices {
    std::optional<QString> destinationFolder; ///< absolute
    QString projectName;
    HandoffOutputMode outputMode = HandoffOutputMode::primaryOnly;

    bool operator==(const HandoffChoices &) const = default;
};

/// The choices when the sheet opens, without a destination.
HandoffChoices defaultHandoffChoices(const Project &project);

/// Returns the clips of which anything is selected, in document order. Subclips count whether or
/// not their clip is selected.
QList<HandoffClip> planClips(const Project &project);

/// Returns the plan of a run, without grants. `destinationFolder` must be set.
HandoffPlan makePlan(const Project &project, const HandoffChoices &choices);

/// Returns the text as a valid name of a package; never empty.
QString packageName(const QString &projectName, const VolumeLimits &limits = {});

/// Estimated size of the primary outputs. Clips of unknown size count as 0.
quint64 estimatedBytes(const QList<HandoffClip> &clips);

} // namespace corvane

#pragma once

#include "delivery/handoff/PackageProject.h"
#include "delivery/handoff/SelectsHandoff.h"

/// The folders of a package on the disk. On an executor's thread.
namespace corvane::PackageFolder {

/// A failure of the run as a whole, with its finished text.
class RunError : public Failure {
  public:
    using Failure::Failure;
};

/// Throws `RunError` where the destination's volume has less room than the plan's outputs are
/// estimated to need, so that no disk is filled in vain.
void assertRoom(const HandoffPlan &plan);

/// Makes the package's own folder, which is on the disk when this returns. Throws `RunError`.
PackageProject::Places reserve(const HandoffPlan &plan, const SelectsHandoff::Seconds &now);

/// Makes the folders in the package. Throws `RunError`.
void createSkeleton(const PackageProject::Places &places, HandoffOutputMode outputMode);

} // namespace corvane::PackageFolder

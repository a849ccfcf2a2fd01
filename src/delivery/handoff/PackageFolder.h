#pragma once

#include "delivery/handoff/PackageProject.h"
#include "delivery/handoff/SelectsHandoff.h"

/// Creates the folders of a package. On an executor's thread.
namespace corvane::PackageFolder {

/// A failure of the entire run. The description is the text for the user.
class RunError : public Failure {
  public:
    using Failure::Failure;
};

/// Throws `RunError` if the destination's volume has less free space than the estimated size of the
/// package.
void assertFreeSpace(const HandoffPlan &plan);

/// Creates the package's own folder and syncs it to disk. Throws `RunError`.
PackageProject::Paths reserve(const HandoffPlan &plan, const SelectsHandoff::Seconds &now);

/// Creates the folders inside the package. Throws `RunError`.
void createSkeleton(const PackageProject::Paths &paths, HandoffOutputMode outputMode);

} // namespace corvane::PackageFolder

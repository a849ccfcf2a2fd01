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

/// Throws `RunError` if a file to copy is larger than the destination's volume allows.
void assertSizes(const HandoffPlan &plan);

/// Throws `RunError` if the destination's volume has less free space than the estimated size of the
/// package.
void assertFreeSpace(const HandoffPlan &plan);

/// Creates and opens the package's own folder and syncs its entry to disk. Throws `RunError`.
OpenFolder reserve(const HandoffPlan &plan, const SelectsHandoff::Seconds &now);

/// The open folders of a package. Everything in it is created through them.
struct Folders {
    OpenFolder package;
    OpenFolder media;
    std::optional<OpenFolder> hd; ///< nullopt without HD copies
    OpenFolder cache;

    /// Throws `DestinationLost` unless the package and its folders of media are at their paths.
    void assertAllInPlace() const;
};

/// Creates the folders inside the package. Throws `RunError`.
Folders createSkeleton(const OpenFolder &package, HandoffOutputMode outputMode);

/// Writes the package's document and returns its bytes. Without `replaced` it is a new file;
/// otherwise it replaces a file with these bytes. Throws `RunError`, also if another program
/// changed the file, and `DestinationLost` if the package is no longer at its path.
QByteArray writeDocument(const OpenFolder &package, Project document,
                         const std::optional<QByteArray> &replaced);

} // namespace corvane::PackageFolder

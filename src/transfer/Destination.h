#pragma once

#include "platform/OpenFolder.h"

namespace corvane {

/// Thrown if the path of a run's destination no longer leads to the folder that the run opened. The
/// description is the text for the user.
class DestinationLost : public Failure {
  public:
    explicit DestinationLost(const QString &folder);
};

/// Throws `DestinationLost` unless the folder is still at its path.
void assertInPlace(const OpenFolder &folder);

/// A file that a run writes, as an entry of an open folder.
struct Destination {
    OpenFolder folder;
    QString name;
    Placing placing = Placing::mustBeFree;

    QString path() const;
    /// Returns the entry at `path`, which must be below the path of `root`. Creates missing folders
    /// between the two and follows no link among them. Throws `FileError`.
    static Destination below(const OpenFolder &root, const QString &path, Placing placing);
};

} // namespace corvane

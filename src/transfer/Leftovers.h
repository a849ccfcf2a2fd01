#pragma once

#include "platform/OpenFolder.h"

#include <QDateTime>

/// Temporary files of runs that were killed.
namespace corvane::Leftovers {

/// Removes the folder's regular files that have the form of this program's temporary names, with a
/// process id and a UUID, and that nobody has written for a day before `now`. Leaves files that it
/// can't judge or remove. Blocks; any thread.
void removeFrom(const OpenFolder &folder, const QDateTime &now);

/// Does the same in the system's temporary folder, where earlier versions kept private copies.
void removeFromTemporaryFolder(const QDateTime &now);

} // namespace corvane::Leftovers

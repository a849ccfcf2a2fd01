#pragma once

#include <QStringList>

#include <exception>

namespace corvane {

/// True if an output was refused because the contents or the folder of its source are no longer
/// those that were granted. Only the user can decide whether to trust such a source.
bool isSourceChange(const std::exception &error);

/// Returns the files that exist. A missing file has not changed: its drive may be disconnected.
/// Blocks on file access.
QStringList existingSources(const QStringList &files);

} // namespace corvane

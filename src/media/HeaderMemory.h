#pragma once

// For the source files of this floor only.

#include <QString>

#include <stop_token>

namespace corvane::media {

/// The memory in bytes that the tables of a QuickTime or MPEG-4 file's header claim for themselves
/// once they are opened, without opening them: reckoned from what each says it has, so that a lie
/// costs nothing. 0 or little for files of other kinds. A claim beyond any file's gives a number
/// beyond any bound. Throws `FileError`, and `Cancelled`.
qint64 estimatedHeaderMemory(const QString &path, const std::stop_token &stop);

/// How much the header of a file of this size may claim.
qint64 allowedHeaderMemory(qint64 fileSize);

} // namespace corvane::media

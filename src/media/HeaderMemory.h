#pragma once

// Internal to src/media.

#include <QString>

#include <stop_token>

namespace corvane::media {

/// Estimates the bytes of memory that FFmpeg would allocate for the header tables of a QuickTime or
/// MPEG-4 file, from the counts in the tables and without allocating them. Returns about 0 for
/// other files, and more than any limit for counts that no file can have. Throws `FileError` and
/// `Cancelled`.
qint64 estimatedHeaderMemory(const QString &path, const std::stop_token &stop);

/// The memory in bytes that the header of a file of this size may take.
qint64 allowedHeaderMemory(qint64 fileSize);

} // namespace corvane::media

#pragma once

#include "import/ScannedVideo.h"

#include <QStringList>

#include <stop_token>

namespace corvane {

/// Numbers of entries that a scan left out, by reason. Does not count hidden entries, skipped
/// folders and paired sidecars.
struct LeftOut {
    int notMedia = 0;
    int symbolicLinks = 0; ///< never followed below a root
    int unreadable = 0;    ///< files, folders and sources
    int invalidNames = 0;  ///< not valid UTF-8, so a document cannot contain them

    bool operator==(const LeftOut &) const = default;
};

/// A source, folder or file that a scan could not read, so that clips or sidecars may be missing.
struct UnreadableEntry {
    QString path;
    QString error; ///< the system's text

    bool operator==(const UnreadableEntry &) const = default;
};

struct ScanResult {
    QList<ScannedVideo> videos; ///< in the order of the sources
    LeftOut leftOut;
    /// The entries that `LeftOut::unreadable` counts, and folders of single files whose sidecars
    /// cannot be found.
    QList<UnreadableEntry> unreadable;

    bool operator==(const ScanResult &) const = default;
};

/// Finds the media files among the sources, which may be folders and files, and pairs each with its
/// sidecar. Entries of a folder are sorted by name; the content of a subfolder takes the position
/// of the subfolder.
///
/// Blocks; any thread. Entries that cannot be read don't end the scan. Throws `Cancelled`.
ScanResult scan(const QStringList &sources, bool recursive, std::stop_token stop);

} // namespace corvane

#pragma once

#include "import/ScannedVideo.h"

#include <QStringList>

#include <stop_token>

namespace corvane {

/// How many entries a scan saw and left out, and why. Hidden names, skipped folders and sidecars
/// that found their video aren't left out.
struct LeftOut {
    int notMedia = 0;
    int symbolicLinks = 0; ///< to whatever; none is followed below a root
    int unreadable = 0;    ///< files, folders and whole sources
    int invalidNames = 0;  ///< no valid UTF-8, so no document could name them

    int total() const { return notMedia + symbolicLinks + unreadable + invalidNames; }
    bool operator==(const LeftOut &) const = default;
};

struct ScanResult {
    QList<ScannedVideo> videos; ///< those of each source, in the order of the sources
    LeftOut leftOut;

    bool operator==(const ScanResult &) const = default;
};

/// Finds the media files in the given folders and files, and pairs each with its sidecar. A
/// folder's entries come sorted by name, and a folder's content stands where the folder would.
///
/// Looks only, and blocks, so it belongs on an executor. What can't be read is counted, never
/// thrown; throws `Cancelled` once `stop` asks for it.
ScanResult scan(const QStringList &sources, bool recursive, std::stop_token stop);

} // namespace corvane

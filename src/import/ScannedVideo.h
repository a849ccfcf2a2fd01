#pragma once

#include "document/Project.h"
#include "trust/RootIdentity.h"

#include <QString>

#include <optional>

namespace corvane {

/// A folder that was scanned, and what it was at that moment. The copier refuses to read a file
/// unless the same folder is still there.
struct ScanRoot {
    QString url;
    RootIdentity identity; ///< of the folder; its `contentHash` is empty

    bool operator==(const ScanRoot &) const = default;
};

/// A media file that a scan found, with the sidecar that it came with.
struct ScannedVideo {
    QString id; ///< a new UUID
    QString url;
    quint64 fileSizeBytes = 0;
    std::optional<QString> sidecarURL;
    std::optional<SidecarType> sidecarType;
    ScanRoot scanRoot;
    /// The duplicate key, filled in after the scan; empty where the file can't be hashed.
    std::optional<QString> contentHash;

    bool operator==(const ScannedVideo &) const = default;
};

} // namespace corvane

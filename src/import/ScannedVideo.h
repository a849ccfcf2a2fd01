#pragma once

#include "document/Project.h"
#include "platform/FileSystem.h"
#include "trust/RootIdentity.h"

#include <QString>

#include <optional>

namespace corvane {

/// A scanned folder and its identity at that time. The copier refuses to read files from any other
/// folder at that path.
struct ScanRoot {
    QString url;
    RootIdentity identity; ///< of the folder; its `contentHash` is empty

    bool operator==(const ScanRoot &) const = default;
};

/// A media file found by a scan, paired with its sidecar.
struct ScannedVideo {
    QString id; ///< a new UUID
    QString url;
    quint64 fileSizeBytes = 0;
    FileTime modified{}; ///< a file with another time is not the one that was scanned
    std::optional<QString> sidecarURL;
    std::optional<SidecarType> sidecarType;
    std::optional<FileTime> sidecarModified; ///< nullopt if it could not be read
    ScanRoot scanRoot;
    /// The duplicate key, set after the scan; nullopt if the file cannot be hashed.
    std::optional<QString> contentHash;

    bool operator==(const ScannedVideo &) const = default;
};

} // namespace corvane

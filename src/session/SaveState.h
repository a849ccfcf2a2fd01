#pragma once

#include "document/ProjectFileIO.h"
#include "session/ProjectStoreError.h"

namespace corvane {

/// Whether the open project's edits reach its file.
struct SaveState {
    /// Why the last save failed; nullopt if it succeeded, and before the first save. Unlike the
    /// session's last error, it isn't cleared when the user dismisses it.
    std::optional<ProjectStoreError> failure = {};
    qint64 fileSize = 0; ///< bytes, when the file was last read or written

    /// True if the project's file is close to the size that can't be saved any more.
    bool isNearlyFull() const { return fileSize >= ProjectFileIO::kFileLimit / 10 * 8; }

    bool operator==(const SaveState &) const = default;
};

} // namespace corvane

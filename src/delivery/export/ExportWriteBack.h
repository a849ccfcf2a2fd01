#pragma once

#include "delivery/export/ExportRow.h"
#include "session/ProjectStore.h"

/// Records a finished run in the project, as two undo steps. Main thread.
namespace corvane {

/// The project that a run was started from.
struct ExportOrigin {
    QString projectId;
    std::optional<QString> filePath;

    static ExportOrigin of(const Project &project, const ProjectStore &store);
    /// True if that project is open.
    bool isOpenIn(const ProjectStore &store) const;
};

/// Sets the export date of each clip and subclip whose row succeeded, then appends the run's
/// record. A no-op unless the original project is open.
void writeBack(ProjectStore &store, const ExportOrigin &origin, const ExportBatchInput &input,
               const ExportBatchResult &result);

} // namespace corvane

#pragma once

#include "delivery/export/ExportRow.h"
#include "session/ProjectStore.h"

/// What a finished run leaves in the project, as two undo steps. Main thread.
namespace corvane {

/// The project that a run was started from.
struct ExportOrigin {
    QString projectId;
    std::optional<QString> filePath;

    static ExportOrigin of(const Project &project, const ProjectStore &store);
    /// True while that project is the open one.
    bool isOpenIn(const ProjectStore &store) const;
};

/// Sets the date on each clip and subclip whose row succeeded, then appends the run's record. Does
/// nothing once another project, or none, is open.
void writeBack(ProjectStore &store, const ExportOrigin &origin, const ExportBatchInput &input,
               const ExportBatchResult &result);

} // namespace corvane

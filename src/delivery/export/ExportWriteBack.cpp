#include "delivery/export/ExportWriteBack.h"

namespace corvane {

namespace {

/// Changes the project and its date as an undo step.
template <typename Change> void changeProject(ProjectStore &store, Change change) {
    store.pushUndoState();
    Project project = *store.project();
    const QDateTime now = store.clock().now();
    change(project, now);
    project.updatedAt = now;
    store.updateProject(std::move(project));
}

void markExported(VideoItem &video, const QSet<QString> &rowIds, const QDateTime &now) {
    if (rowIds.contains(exportRowId(video->id))) {
        video.edit().exportedAt = now;
    }
    for (qsizetype index = 0; index < video->subclips.size(); ++index) {
        if (rowIds.contains(exportRowId(video->id, video->subclips.at(index).id))) {
            video.edit().subclips[index].exportedAt = now;
        }
    }
}

ExportBatch recordOf(const ExportBatchInput &input, const ExportBatchResult &result,
                     const QDateTime &now) {
    return {.id = input.batchId,
            .outputFolder = input.outputFolder,
            .mode = input.mode,
            .includeWholeVideoSelects = input.includeWholeVideoSelects,
            .includeSubclipSelects = input.includeSubclipSelects,
            .subclipHandleSeconds = input.subclipHandleSeconds,
            .namingOptions = input.namingOptions,
            .createdAt = input.completedAt,
            .completedAt = now,
            .succeededCount = int(result.succeeded.size()),
            .failedCount = result.failedCount(),
            .cancelledCount = result.cancelledCount,
            .cancelled = result.cancelled,
            .outputMode = input.outputMode};
}

} // namespace

ExportOrigin ExportOrigin::of(const Project &project, const ProjectStore &store) {
    return {project.id, store.fileURL()};
}

bool ExportOrigin::isOpenIn(const ProjectStore &store) const {
    return store.project() && store.project()->id == projectId && store.fileURL() == filePath;
}

void writeBack(ProjectStore &store, const ExportOrigin &origin, const ExportBatchInput &input,
               const ExportBatchResult &result) {
    if (!origin.isOpenIn(store)) {
        return;
    }
    QSet<QString> rowIds;
    for (const ExportRowOutcome &row : result.succeeded) {
        rowIds.insert(row.rowId);
    }
    changeProject(store, [&rowIds](Project &project, const QDateTime &now) {
        for (VideoItem &video : project.videos) {
            markExported(video, rowIds, now);
        }
    });
    changeProject(store, [&](Project &project, const QDateTime &now) {
        project.exportBatches.append(recordOf(input, result, now));
    });
}

} // namespace corvane

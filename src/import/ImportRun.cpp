// The run of an import: from the included rows to clips in the project, grants in the registry and
// what the clips' containers say.

#include "import/ImportViewModel.h"

#include "document/Project.h"
#include "mediacache/MetadataProcessor.h"
#include "platform/Paths.h"

#include <QCoreApplication>

#include <atomic>

namespace corvane {

namespace {

/// The last count of a copy on its way to the main thread. One message is under way at a time,
/// however fast the blocks come.
struct ByteCount {
    std::atomic<quint64> bytesDone = 0;
    std::atomic<bool> isOnItsWay = false;
};

QStringList sourcePaths(const QList<VideoItem> &videos) {
    QStringList paths;
    for (const VideoItem &video : videos) {
        paths.append(video->sourcePath);
    }
    return paths;
}

QStringList identifiers(const QList<VideoItem> &videos) {
    QStringList ids;
    for (const VideoItem &video : videos) {
        ids.append(video->id);
    }
    return ids;
}

/// Into the clip as it is now: it may have been reviewed meanwhile.
void write(const MetadataProcessor::Outcome &outcome, VideoRecord &video) {
    video.durationSeconds = outcome.durationSeconds;
    video.width = outcome.width;
    video.height = outcome.height;
    video.fps = outcome.fps;
    video.codec = outcome.codec;
    video.audioCodec = outcome.audioCodec;
    video.bitRateBps = outcome.bitRateBps;
    video.thumbnailPath = outcome.thumbnailRelativePath;
}

} // namespace

/// The grants come after the copies, so that their anchors are of what stands at the clips' paths
/// now.
QCoro::Task<> ImportViewModel::beginImport() {
    if (!canBeginImport()) {
        co_return;
    }
    const QPointer self(this);
    const Run run = startRun();
    const bool isPrepared = co_await prepareDestination(run);
    if (!self) {
        co_return;
    }
    const Imported imported = isPrepared ? co_await importRows(run) : Imported();
    if (!self) {
        co_return;
    }
    if (!isOpen(run)) {
        countLostProject(run);
    } else if (!imported.videos.isEmpty()) {
        addToProject(imported);
        co_await m_store->authorization().authorize(sourcePaths(imported.videos), run.projectFile);
        if (!self) {
            co_return;
        }
        co_await readMetadata(run, imported.videos);
        if (!self) {
            co_return;
        }
    }
    endRun();
}

void ImportViewModel::cancelImport() {
    if (m_stage == Stage::importing) {
        m_importTask.request_stop();
    }
}

void ImportViewModel::clearRun() {
    assign(m_progress, {}, &ImportViewModel::progressChanged);
    assign(m_succeededCount, 0, &ImportViewModel::succeededCountChanged);
    assign(m_skippedCount, 0, &ImportViewModel::skippedCountChanged);
    assign(m_failedCount, 0, &ImportViewModel::failedCountChanged);
    assign(m_sidecarsImportedCount, 0, &ImportViewModel::sidecarsImportedCountChanged);
    assign(m_failures, {}, &ImportViewModel::failuresChanged);
    assign(m_importedVideoIds, {}, &ImportViewModel::importedVideoIdsChanged);
}

ImportViewModel::Run ImportViewModel::startRun() {
    m_importTask = std::stop_source();
    Run run{.mode = m_mode,
            .destinationFolder = m_destinationFolder.value_or(mediaFolder(*m_store->fileURL())),
            .projectFile = *m_store->fileURL(),
            .projectId = m_store->project()->id,
            .stop = m_importTask.get_token()};
    for (const ImportPreviewRow &row : std::as_const(m_previewRows)) {
        if (row.included) {
            run.rows.append(row);
        }
    }
    clearRun();
    assign(m_skippedCount, int(m_previewRows.size() - run.rows.size()),
           &ImportViewModel::skippedCountChanged);
    assign(m_stage, Stage::importing, &ImportViewModel::stageChanged);
    return run;
}

/// Makes the folder that copies go to and records it. False where there is nothing to go on with.
QCoro::Task<bool> ImportViewModel::prepareDestination(Run run) {
    if (run.mode == SourceImportMode::inPlace) {
        co_return true;
    }
    const QPointer self(this);
    std::optional<QString> error;
    try {
        co_await userInitiatedExecutor().run(
            [folder = run.destinationFolder] { RowImport::ensureDestination(folder); });
    } catch (const std::exception &failure) {
        error = describe(failure);
    }
    if (!self) {
        co_return false;
    }
    if (error) {
        count(ImportFailure{paths::lastComponent(run.destinationFolder), *error});
        assign(m_failedCount, 1, &ImportViewModel::failedCountChanged);
        co_return false;
    }
    if (isOpen(run)) {
        co_await m_store->authorization().authorizeMediaRoot(run.destinationFolder,
                                                             run.projectFile);
    }
    co_return true;
}

QCoro::Task<ImportViewModel::Imported> ImportViewModel::importRows(Run run) {
    const QPointer self(this);
    Imported imported;
    for (qsizetype index = 0; index < run.rows.size(); ++index) {
        if (run.stop.stop_requested() || !isOpen(run)) {
            break;
        }
        const ImportPreviewRow &row = run.rows.at(index);
        assign(m_progress,
               std::optional(ImportProgress{.index = int(index) + 1,
                                            .total = int(run.rows.size()),
                                            .currentFilename = paths::lastComponent(row.source.url),
                                            .bytesTotal = row.source.fileSizeBytes}),
               &ImportViewModel::progressChanged);
        const auto outcome = co_await importRow(run, row);
        if (!self || !outcome) {
            break;
        }
        count(*outcome);
        if (outcome->sourcePath && m_store) {
            imported.videos.append(
                RowImport::makeVideoItem(row, run.mode, *outcome, m_store->clock().now()));
            imported.rootFolders.append(row.source.scanRoot.url);
        }
    }
    co_return imported;
}

/// Nothing where the row was cancelled.
QCoro::Task<std::optional<RowImport::Outcome>> ImportViewModel::importRow(Run run,
                                                                          ImportPreviewRow row) {
    if (run.mode == SourceImportMode::inPlace) {
        co_return RowImport::inPlace(row);
    }
    try {
        co_return co_await userInitiatedExecutor().run(
            [row, folder = run.destinationFolder, progress = byteProgress(), stop = run.stop] {
                return RowImport::copied(row, folder, progress, stop);
            });
    } catch (const Cancelled &) {
        co_return std::nullopt;
    }
}

ImportCopier::Progress ImportViewModel::byteProgress() {
    return [self = QPointer(this), latest = std::make_shared<ByteCount>()](quint64 bytesDone) {
        latest->bytesDone = bytesDone;
        if (latest->isOnItsWay.exchange(true)) {
            return;
        }
        QMetaObject::invokeMethod(
            QCoreApplication::instance(),
            [self, latest] {
                latest->isOnItsWay = false;
                if (self && self->m_progress) {
                    ImportProgress progress = *self->m_progress;
                    progress.bytesDone = latest->bytesDone;
                    self->assign(self->m_progress, std::optional(progress),
                                 &ImportViewModel::progressChanged);
                }
            },
            Qt::QueuedConnection);
    };
}

void ImportViewModel::count(const RowImport::Outcome &outcome) {
    for (const ImportFailure &failure : outcome.failures) {
        count(failure);
    }
    if (!outcome.sourcePath) {
        assign(m_failedCount, m_failedCount + 1, &ImportViewModel::failedCountChanged);
        return;
    }
    assign(m_succeededCount, m_succeededCount + 1, &ImportViewModel::succeededCountChanged);
    if (outcome.sidecarPath) {
        assign(m_sidecarsImportedCount, m_sidecarsImportedCount + 1,
               &ImportViewModel::sidecarsImportedCountChanged);
    }
}

void ImportViewModel::count(const ImportFailure &failure) {
    m_failures.append(failure);
    Q_EMIT failuresChanged();
}

/// Whatever was copied stays where it is, but no document holds it.
void ImportViewModel::countLostProject(const Run &run) {
    assign(m_failedCount, int(run.rows.size()), &ImportViewModel::failedCountChanged);
    assign(m_succeededCount, 0, &ImportViewModel::succeededCountChanged);
    assign(m_sidecarsImportedCount, 0, &ImportViewModel::sidecarsImportedCountChanged);
    count(
        ImportFailure{paths::lastComponent(run.projectFile),
                      QStringLiteral("The project was closed before the import ended. Nothing was "
                                     "added to it. Open it and import again.")});
}

bool ImportViewModel::isOpen(const Run &run) const {
    return m_store && m_store->fileURL() == run.projectFile && m_store->project() &&
           m_store->project()->id == run.projectId;
}

/// All new clips at once, so that the import is one step to undo.
void ImportViewModel::addToProject(const Imported &imported) {
    m_store->pushUndoState();
    Project project = *m_store->project();
    project.videos.append(imported.videos);
    QSet<QString> known(project.rootFolders.cbegin(), project.rootFolders.cend());
    for (const QString &folder : imported.rootFolders) {
        if (!known.contains(folder)) {
            known.insert(folder);
            project.rootFolders.append(folder);
        }
    }
    project.updatedAt = m_store->clock().now();
    m_store->updateProject(std::move(project));
    assign(m_importedVideoIds, identifiers(imported.videos),
           &ImportViewModel::importedVideoIdsChanged);
}

/// One clip at a time, each published as it is read.
QCoro::Task<> ImportViewModel::readMetadata(Run run, QList<VideoItem> videos) {
    const QPointer self(this);
    for (qsizetype index = 0; index < videos.size(); ++index) {
        if (run.stop.stop_requested() || !isOpen(run)) {
            co_return;
        }
        const VideoItem &video = videos.at(index);
        assign(m_progress,
               std::optional(ImportProgress{
                   .index = int(index) + 1,
                   .total = int(videos.size()),
                   .currentFilename = QStringLiteral("Reading metadata: ") + video->fileName}),
               &ImportViewModel::progressChanged);
        const auto outcome = co_await MetadataProcessor::process(video->id, video->sourcePath,
                                                                 cacheRoot(run.projectFile));
        if (!self || !isOpen(run)) {
            co_return;
        }
        m_store->updateVideo(video->id, [&](VideoRecord &record) { write(outcome, record); });
    }
}

void ImportViewModel::endRun() {
    assign(m_progress, {}, &ImportViewModel::progressChanged);
    assign(m_stage, Stage::done, &ImportViewModel::stageChanged);
}

} // namespace corvane

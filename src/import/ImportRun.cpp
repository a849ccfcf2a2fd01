#include "import/ImportRun.h"

#include "document/Project.h"
#include "import/ImportTexts.h"
#include "mediacache/MetadataProcessor.h"
#include "platform/Paths.h"
#include "transfer/Leftovers.h"

#include <atomic>

namespace corvane {

namespace {

/// Bytes copied so far, handed from the copying thread to the main thread. At most one message is
/// queued at a time, however fast blocks are copied.
struct ByteCount {
    std::atomic<quint64> bytesDone = 0;
    std::atomic<bool> isQueued = false;
};

void setMetadata(VideoRecord &video, const MetadataProcessor::Outcome &outcome) {
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

ImportRun::ImportRun(ProjectStore &store, const QList<ImportPreviewRow> &rows,
                     SourceImportMode mode, QString destinationFolder)
    : m_store(&store),
      m_projectFile(*store.fileURL()),
      m_projectId(store.project()->id),
      m_mode(mode),
      m_destinationFolder(std::move(destinationFolder)),
      m_rows(rows) {
    m_result.skippedCount =
        int(m_rows.removeIf([](const ImportPreviewRow &row) { return !row.included; }));
}

QCoro::Task<ImportResult> ImportRun::run() {
    if (co_await prepareDestination()) {
        co_await importRows();
    }
    if (isProjectOpen() && !m_videos.isEmpty()) {
        co_await backUp();
    }
    if (!isProjectOpen()) {
        failAllRows();
    } else if (!m_videos.isEmpty()) {
        addToProject();
        co_await grantAccess();
        co_await readMetadata();
    }
    co_return m_result;
}

void ImportRun::abandon() {
    cancel();
    m_store.clear();
}

bool ImportRun::isProjectOpen() const {
    return m_store && m_store->fileURL() == m_projectFile && m_store->project() &&
           m_store->project()->id == m_projectId;
}

/// Opens the folder for the copies and grants the project access to it. Returns false on failure.
QCoro::Task<bool> ImportRun::prepareDestination() {
    if (m_mode == SourceImportMode::inPlace) {
        co_return true;
    }
    std::optional<QString> error;
    try {
        m_destination = co_await userInitiatedExecutor().run(
            [path = m_destinationFolder, now = m_store->clock().now()] {
                OpenFolder folder = RowImport::openDestination(path);
                Leftovers::removeFrom(folder, now);
                return folder;
            });
    } catch (const std::exception &failure) {
        error = describe(failure);
    }
    if (error) {
        m_result.failures.append({paths::lastComponent(m_destinationFolder), *error});
        m_result.failedCount = 1;
    } else if (isProjectOpen()) {
        co_await m_store->authorization().authorizeMediaRoot(m_destinationFolder, m_projectFile);
    }
    co_return !error;
}

QCoro::Task<> ImportRun::importRows() {
    for (qsizetype index = 0; index < m_rows.size() && shouldContinue(); ++index) {
        const ImportPreviewRow &row = m_rows.at(index);
        setProgress({.index = int(index) + 1,
                     .total = int(m_rows.size()),
                     .currentFilename = paths::lastComponent(row.source.url),
                     .bytesTotal = row.source.fileSizeBytes});
        const auto outcome = m_mode == SourceImportMode::inPlace
                                 ? std::optional(RowImport::useInPlace(row))
                                 : co_await copyRow(row);
        if (!outcome) {
            co_return;
        }
        finishRow(row, *outcome);
    }
}

/// Returns nullopt if the run was cancelled during this row.
QCoro::Task<std::optional<RowImport::Outcome>> ImportRun::copyRow(ImportPreviewRow row) {
    try {
        co_return co_await userInitiatedExecutor().run(
            [row, folder = *m_destination, progress = byteProgress(), stop = m_stop.get_token()] {
                return RowImport::copyFiles(row, folder, progress, stop);
            });
    } catch (const Cancelled &) {
        co_return std::nullopt;
    }
}

ImportCopier::Progress ImportRun::byteProgress() {
    return [this, latest = std::make_shared<ByteCount>()](quint64 bytesDone) {
        latest->bytesDone = bytesDone;
        if (latest->isQueued.exchange(true)) {
            return;
        }
        const auto report = [this, latest] {
            latest->isQueued = false;
            if (m_progress->phase == ImportProgress::Phase::files) {
                ImportProgress progress = *m_progress;
                progress.bytesDone = latest->bytesDone;
                setProgress(progress);
            }
        };
        QMetaObject::invokeMethod(this, report, Qt::QueuedConnection);
    };
}

void ImportRun::setProgress(const ImportProgress &progress) {
    if (m_progress != progress) {
        m_progress = progress;
        Q_EMIT progressChanged();
    }
}

void ImportRun::finishRow(const ImportPreviewRow &row, const RowImport::Outcome &outcome) {
    m_result.failures.append(outcome.failures);
    if (!outcome.sourcePath) {
        ++m_result.failedCount;
        return;
    }
    ++m_result.succeededCount;
    m_result.sidecarsImportedCount += outcome.sidecarPath ? 1 : 0;
    if (outcome.anchor) {
        m_anchors.insert(paths::standardized(*outcome.sourcePath), *outcome.anchor);
    }
    if (m_store) {
        m_videos.append(RowImport::makeVideoItem(row, m_mode, outcome, m_store->clock().now()));
        m_rootFolders.append(row.source.scanRoot.url);
    }
}

/// For a project that was closed during the run. Copies stay on disk, but no document refers to
/// them.
void ImportRun::failAllRows() {
    m_result.failedCount = int(m_rows.size());
    m_result.succeededCount = 0;
    m_result.sidecarsImportedCount = 0;
    m_result.failures.append(
        {paths::lastComponent(m_projectFile),
         QStringLiteral("The project was closed before the import ended. Nothing was added to it. "
                        "Open it and import again.")});
}

QCoro::Task<> ImportRun::backUp() {
    if (const auto failure = co_await m_store->backUp()) {
        m_result.backupError = failure->description();
    }
}

void ImportRun::addToProject() {
    m_store->pushUndoState();
    Project project = *m_store->project();
    project.videos.append(m_videos);
    QSet<QString> known(project.rootFolders.cbegin(), project.rootFolders.cend());
    for (const QString &folder : std::as_const(m_rootFolders)) {
        if (!known.contains(folder)) {
            known.insert(folder);
            project.rootFolders.append(folder);
        }
    }
    project.updatedAt = m_store->clock().now();
    m_store->updateProject(std::move(project));
    for (const VideoItem &video : std::as_const(m_videos)) {
        m_result.importedVideoIds.append(video->id);
    }
    ImportProgress progress = *m_progress;
    progress.phase = ImportProgress::Phase::recording;
    progress.currentFilename = recordingText();
    progress.bytesDone = progress.bytesTotal = 0;
    setProgress(progress);
}

/// Follows the copies, because the anchors are those of the files at the clips' paths.
QCoro::Task<> ImportRun::grantAccess() {
    QStringList files;
    for (const VideoItem &video : std::as_const(m_videos)) {
        files.append(video->sourcePath);
    }
    const auto report = [this](const HashingProgress &hashing) {
        ImportProgress progress = *m_progress;
        progress.bytesDone = quint64(hashing.bytesDone);
        progress.bytesTotal = quint64(hashing.bytesTotal);
        setProgress(progress);
    };
    const QSet<QString> granted = co_await m_store->authorization().authorize(
        files, m_projectFile, m_anchors, {.stop = m_stop.get_token(), .progress = report});
    for (const VideoItem &video : std::as_const(m_videos)) {
        if (granted.contains(paths::standardized(video->sourcePath))) {
            continue;
        }
        if (m_stop.stop_requested()) {
            ++m_result.pendingCount;
        } else {
            m_result.failures.append({video->fileName, unreadableClipText()});
        }
    }
    if (isProjectOpen() && granted.size() < m_videos.size()) {
        co_await m_store->refreshMediaConfirmationState();
    }
}

/// Updates one clip at a time, so that fields appear as they are read.
QCoro::Task<> ImportRun::readMetadata() {
    for (qsizetype index = 0; index < m_videos.size() && shouldContinue(); ++index) {
        const VideoItem video = m_videos.at(index);
        setProgress({.phase = ImportProgress::Phase::metadata,
                     .index = int(index) + 1,
                     .total = int(m_videos.size()),
                     .currentFilename = metadataText(video->fileName)});
        const auto outcome = co_await MetadataProcessor::process(video->id, video->sourcePath,
                                                                 cacheRoot(m_projectFile));
        if (isProjectOpen()) {
            m_store->updateVideo(video->id,
                                 [&](VideoRecord &record) { setMetadata(record, outcome); });
        }
    }
}

} // namespace corvane

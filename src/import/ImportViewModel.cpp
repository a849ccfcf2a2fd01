#include "import/ImportViewModel.h"

#include "import/RefusedRows.h"
#include "platform/FileSystem.h"
#include "platform/Paths.h"
#include "platform/TextFormat.h"
#include "trust/ContentHasher.h"

#include <algorithm>

namespace corvane {

namespace {

/// A scan with the duplicate key of each video. A file that can't be hashed has none.
ScanResult scanWithKeys(const QStringList &sources, bool recursive, const std::stop_token &stop) {
    ScanResult result = scan(sources, recursive, stop);
    for (ScannedVideo &video : result.videos) {
        if (stop.stop_requested()) {
            throw Cancelled();
        }
        try {
            video.contentHash = ContentHasher::duplicateKey(video.url);
        } catch (const ContentHasher::HashError &) {
            video.contentHash.reset();
        }
    }
    return result;
}

bool isImportedAlready(const ImportPreviewRow &row) {
    return row.status == CollisionStatus::alreadyImported;
}

} // namespace

ImportViewModel::ImportViewModel(ProjectStore *store, QObject *parent)
    : QObject(parent), m_store(store) {}

ImportViewModel::~ImportViewModel() {
    m_scanTask.request_stop();
    m_importTask.request_stop();
}

bool ImportViewModel::canScan() const {
    return m_stage == Stage::sources && !m_sourceURLs.isEmpty();
}

bool ImportViewModel::canBeginImport() const {
    // The rows say what is new to the project that was open when they were made.
    return m_stage == Stage::results && m_store && m_store->project() &&
           m_store->fileURL() == m_scannedFor && includedCount() > 0;
}

int ImportViewModel::includedCount() const {
    return int(std::ranges::count_if(m_previewRows, &ImportPreviewRow::included));
}

QString ImportViewModel::foundText() const {
    const QString found =
        QStringLiteral("Found ") + counted(m_previewRows.size(), QStringLiteral("video"));
    const auto imported = std::ranges::count_if(m_previewRows, isImportedAlready);
    return imported == 0 ? found : found + QStringLiteral(" · %1 already imported.").arg(imported);
}

QString ImportViewModel::includedText() const {
    return QStringLiteral("%1 included").arg(includedCount());
}

QString ImportViewModel::destinationLabel() const {
    if (m_mode != SourceImportMode::copied || !m_destinationFolder) {
        return {};
    }
    const QString label = paths::lastComponent(*m_destinationFolder) + QStringLiteral(" folder");
    const bool exists = fileSystem().linkStatus(*m_destinationFolder).has_value();
    return exists ? label : label + QStringLiteral(" (created on import)");
}

void ImportViewModel::setSources(const QStringList &sources) {
    if (m_stage == Stage::sources) {
        assign(m_sourceURLs, sources, &ImportViewModel::sourceURLsChanged);
    }
}

void ImportViewModel::setRecursive(bool recursive) {
    if (m_stage == Stage::sources) {
        assign(m_recursive, recursive, &ImportViewModel::recursiveChanged);
    }
}

void ImportViewModel::setMode(SourceImportMode mode) {
    if (mayChoose() && mode != m_mode) {
        assign(m_mode, mode, &ImportViewModel::modeChanged);
        rebuildRows();
    }
}

void ImportViewModel::setDestinationFolder(const QString &folder) {
    const std::optional<QString> chosen = paths::standardized(folder);
    if (!mayChoose()) {
        return;
    }
    m_destinationIsChosen = true;
    if (chosen != m_destinationFolder) {
        assign(m_destinationFolder, chosen, &ImportViewModel::destinationFolderChanged);
        rebuildRows();
    }
}

void ImportViewModel::togglePreviewRow(const QString &id) {
    const auto row = std::ranges::find(m_previewRows, id, &ImportPreviewRow::id);
    if (m_stage == Stage::results && row != m_previewRows.end() && !isImportedAlready(*row)) {
        row->included = !row->included;
        Q_EMIT previewRowChanged(int(row - m_previewRows.begin()));
    }
}

QCoro::Task<> ImportViewModel::startScan() {
    if (!canScan()) {
        co_return;
    }
    const QPointer self(this);
    m_scanTask = std::stop_source();
    const std::stop_token stop = m_scanTask.get_token();
    assign(m_stage, Stage::scanning, &ImportViewModel::stageChanged);
    assign(m_scanError, {}, &ImportViewModel::scanErrorChanged);
    ScanResult result;
    std::optional<QString> error;
    try {
        result = co_await userInitiatedExecutor().run(
            [sources = m_sourceURLs, recursive = m_recursive, stop] {
                return scanWithKeys(sources, recursive, stop);
            });
    } catch (const std::exception &failure) {
        error = describe(failure);
    }
    if (!self || stop.stop_requested()) {
        co_return;
    }
    if (error) {
        assign(m_scanError, error, &ImportViewModel::scanErrorChanged);
        assign(m_stage, Stage::sources, &ImportViewModel::stageChanged);
    } else {
        showScan(std::move(result));
        co_await askAboutRefused(stop);
    }
}

/// A project that was moved, or a lost registry, leaves clips without a grant, and as they are in
/// the project no import includes them. Nothing is granted for a scan; the user is asked.
QCoro::Task<> ImportViewModel::askAboutRefused(std::stop_token stop) {
    if (!m_store || !m_store->project() || !m_store->fileURL()) {
        co_return;
    }
    const QPointer self(this);
    const QPointer store = m_store;
    const QString file = *store->fileURL();
    const Project project = *store->project();
    const QList<ImportPreviewRow> rows = m_previewRows;
    auto &authorization = store->authorization();
    const PathSafety::SourceGrants grants = co_await authorization.sourceGrants(file);
    RefusedRows refused = co_await userInitiatedExecutor().run(
        [rows, project, grants] { return refusedRows(rows, project, grants); });
    // One file at a time, and never in the way of what the user waits for.
    for (const QString &path : std::as_const(refused.written)) {
        if (!self || stop.stop_requested()) {
            break;
        }
        if (co_await utilityExecutor().run([=] { return hasOtherContents(path, grants); })) {
            refused.changed.append(path);
        }
    }
    if (!store) {
        co_return;
    }
    co_await authorization.markPending(refused.neverGranted, refused.changed, file);
    if (self) {
        assign(m_refusedCount, int(refused.neverGranted.size() + refused.changed.size()),
               &ImportViewModel::refusedCountChanged);
    }
    if (store) {
        co_await store->refreshMediaConfirmationState();
    }
}

void ImportViewModel::cancelScan() {
    if (m_stage == Stage::scanning) {
        m_scanTask.request_stop();
        assign(m_stage, Stage::sources, &ImportViewModel::stageChanged);
    }
}

void ImportViewModel::backToSources() {
    if (m_stage == Stage::results) {
        assign(m_stage, Stage::sources, &ImportViewModel::stageChanged);
    }
}

void ImportViewModel::reset() {
    if (m_stage == Stage::importing) {
        return;
    }
    m_scanTask.request_stop();
    assign(m_sourceURLs, {}, &ImportViewModel::sourceURLsChanged);
    assign(m_recursive, false, &ImportViewModel::recursiveChanged);
    assign(m_scanError, {}, &ImportViewModel::scanErrorChanged);
    assign(m_mode, SourceImportMode::inPlace, &ImportViewModel::modeChanged);
    assign(m_scannedVideos, {}, &ImportViewModel::scannedVideosChanged);
    assign(m_leftOut, {}, &ImportViewModel::leftOutChanged);
    assign(m_previewRows, {}, &ImportViewModel::previewRowsChanged);
    assign(m_refusedCount, 0, &ImportViewModel::refusedCountChanged);
    assign(m_destinationFolder, {}, &ImportViewModel::destinationFolderChanged);
    m_destinationIsChosen = false;
    clearRun();
    assign(m_stage, Stage::sources, &ImportViewModel::stageChanged);
}

void ImportViewModel::showScan(ScanResult result) {
    m_scannedFor = m_store ? m_store->fileURL() : std::nullopt;
    assign(m_scannedVideos, result.videos, &ImportViewModel::scannedVideosChanged);
    assign(m_leftOut, result.leftOut, &ImportViewModel::leftOutChanged);
    if (m_store && m_store->fileURL() && !m_destinationIsChosen) {
        assign(m_destinationFolder, std::optional(mediaFolder(*m_store->fileURL())),
               &ImportViewModel::destinationFolderChanged);
    }
    rebuildRows();
    assign(m_stage, Stage::results, &ImportViewModel::stageChanged);
}

void ImportViewModel::rebuildRows() {
    const auto project = m_store ? m_store->project() : std::nullopt;
    assign(m_previewRows, buildPreviewRows(m_scannedVideos, project, m_mode, m_destinationFolder),
           &ImportViewModel::previewRowsChanged);
}

} // namespace corvane

#include "import/ImportViewModel.h"

#include "import/ImportTexts.h"
#include "import/RefusedRows.h"
#include "platform/Cancellation.h"
#include "platform/Paths.h"
#include "trust/ContentHasher.h"

#include <algorithm>

namespace corvane {

namespace {

/// Scans and sets the duplicate key of each video; nullopt if the file cannot be hashed.
ScanResult scanAndHash(const QStringList &sources, bool recursive, const std::stop_token &stop) {
    ScanResult result = scan(sources, recursive, stop);
    for (ScannedVideo &video : result.videos) {
        throwIfStopRequested(stop);
        try {
            video.contentHash = ContentHasher::duplicateKey(video.url);
        } catch (const ContentHasher::HashError &) {
            video.contentHash.reset();
        }
    }
    return result;
}

bool isAlreadyImported(const ImportPreviewRow &row) {
    return row.status == CollisionStatus::alreadyImported;
}

} // namespace

ImportViewModel::ImportViewModel(ProjectStore *store, QObject *parent)
    : QObject(parent), m_store(store) {}

ImportViewModel::~ImportViewModel() {
    m_scanStop.request_stop();
    if (m_run) {
        m_run->abandon();
    }
}

std::optional<ImportProgress> ImportViewModel::progress() const {
    return m_run ? m_run->progress() : std::nullopt;
}

QList<ImportFailure> ImportViewModel::failures() const {
    return unreadableFailures(m_scan.unreadable) + m_result.failures;
}

bool ImportViewModel::canBeginImport() const {
    // The rows depend on the project that was open at the scan.
    return m_stage == Stage::results && m_store && m_store->project() &&
           m_store->fileURL() == m_scannedFor && includedCount() > 0;
}

int ImportViewModel::includedCount() const {
    return int(std::ranges::count_if(m_previewRows, &ImportPreviewRow::included));
}

void ImportViewModel::setStage(Stage stage) {
    if (m_stage != stage) {
        m_stage = stage;
        Q_EMIT stageChanged();
    }
}

void ImportViewModel::setSources(const QStringList &sources) {
    if (m_stage == Stage::sources && sources != m_sourceURLs) {
        m_sourceURLs = sources;
        Q_EMIT sourcesChanged();
    }
}

void ImportViewModel::setRecursive(bool recursive) {
    if (m_stage == Stage::sources && recursive != m_recursive) {
        m_recursive = recursive;
        Q_EMIT sourcesChanged();
    }
}

void ImportViewModel::setMode(SourceImportMode mode) {
    if (canChoose() && mode != m_mode) {
        m_mode = mode;
        rebuildRows();
    }
}

void ImportViewModel::setDestinationFolder(const QString &folder) {
    if (!canChoose()) {
        return;
    }
    m_isDestinationChosen = true;
    const std::optional<QString> path = paths::standardized(folder);
    if (path != m_destinationFolder) {
        m_destinationFolder = path;
        rebuildRows();
    }
}

void ImportViewModel::togglePreviewRow(const QString &id) {
    const auto row = std::ranges::find(m_previewRows, id, &ImportPreviewRow::id);
    if (m_stage == Stage::results && row != m_previewRows.end() && !isAlreadyImported(*row)) {
        row->included = !row->included;
        Q_EMIT includedChanged();
    }
}

QCoro::Task<> ImportViewModel::startScan() {
    if (!canScan()) {
        co_return;
    }
    const QPointer self(this);
    m_scanStop = std::stop_source();
    const std::stop_token stop = m_scanStop.get_token();
    m_scanError.reset();
    Q_EMIT sourcesChanged();
    setStage(Stage::scanning);
    ScanResult scan;
    std::optional<QString> error;
    try {
        scan = co_await userInitiatedExecutor().run(
            [sources = m_sourceURLs, recursive = m_recursive, stop] {
                return scanAndHash(sources, recursive, stop);
            });
    } catch (const std::exception &failure) {
        error = describe(failure);
    }
    if (!self || stop.stop_requested()) {
        co_return;
    }
    if (error) {
        m_scanError = error;
        Q_EMIT sourcesChanged();
        setStage(Stage::sources);
    } else {
        setScan(std::move(scan));
        co_await requestConfirmations(stop);
    }
}

/// Asks the user about clips without a grant, which a moved project or a lost registry leaves
/// behind. As they are in the project, no import includes them; a scan alone grants nothing.
QCoro::Task<> ImportViewModel::requestConfirmations(std::stop_token stop) {
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
    // At low priority and file by file because each is read completely.
    for (const QString &path : std::as_const(refused.modified)) {
        if (!self || stop.stop_requested()) {
            break;
        }
        if (co_await utilityExecutor().run([=] { return isContentChanged(path, grants); })) {
            refused.changed.append(path);
        }
    }
    if (!store) {
        co_return;
    }
    co_await authorization.markPending(refused.neverGranted, refused.changed, file);
    if (self) {
        m_refusedCount = int(refused.neverGranted.size() + refused.changed.size());
        Q_EMIT previewChanged();
    }
    if (store) {
        co_await store->refreshMediaConfirmationState();
    }
}

void ImportViewModel::cancelScan() {
    if (m_stage == Stage::scanning) {
        m_scanStop.request_stop();
        setStage(Stage::sources);
    }
}

void ImportViewModel::backToSources() {
    if (m_stage == Stage::results) {
        setStage(Stage::sources);
    }
}

QCoro::Task<> ImportViewModel::beginImport() {
    if (!canBeginImport()) {
        co_return;
    }
    const QPointer self(this);
    // Shared, so that the run outlives its coroutine even if this object is destroyed meanwhile.
    const auto run =
        std::make_shared<ImportRun>(*m_store, m_previewRows, m_mode, *m_destinationFolder);
    m_run = run;
    connect(run.get(), &ImportRun::progressChanged, this, &ImportViewModel::progressChanged);
    setStage(Stage::importing);
    ImportResult result = co_await run->run();
    if (self) {
        m_result = std::move(result);
        m_run.reset();
        setStage(Stage::done);
    }
}

void ImportViewModel::cancelImport() {
    if (m_run) {
        m_run->cancel();
    }
}

void ImportViewModel::reset() {
    if (m_stage == Stage::importing) {
        return;
    }
    m_scanStop.request_stop();
    m_sourceURLs.clear();
    m_recursive = false;
    m_scanError.reset();
    Q_EMIT sourcesChanged();
    m_mode = SourceImportMode::inPlace;
    m_scan = {};
    m_previewRows.clear();
    m_destinationFolder.reset();
    m_isDestinationChosen = false;
    m_refusedCount = 0;
    m_result = {};
    Q_EMIT previewChanged();
    setStage(Stage::sources);
}

void ImportViewModel::setScan(ScanResult scan) {
    m_scan = std::move(scan);
    m_scannedFor = m_store ? m_store->fileURL() : std::nullopt;
    if (m_scannedFor && !m_isDestinationChosen) {
        m_destinationFolder = mediaFolder(*m_scannedFor);
    }
    rebuildRows();
    setStage(Stage::results);
}

void ImportViewModel::rebuildRows() {
    const auto project = m_store ? m_store->project() : std::nullopt;
    m_previewRows = buildPreviewRows(m_scan.videos, project, m_mode, m_destinationFolder);
    Q_EMIT previewChanged();
}

} // namespace corvane

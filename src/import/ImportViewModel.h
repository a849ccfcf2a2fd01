#pragma once

#include "import/ImportRun.h"
#include "import/SourceScan.h"

#include <memory>

namespace corvane {

/// One import, from choosing sources to new clips in the project. Owns the stage, the choices and
/// the run. Scanning, hashing and copying happen on the user-initiated executor.
///
/// Main thread. An operation that the stage does not allow is a no-op. Failures are available as
/// `scanError` and `result`, never thrown. Destroying the object cancels a scan or run in progress.
/// The store may be null, which allows scans only, or be destroyed first.
class ImportViewModel : public QObject {
    Q_OBJECT

  public:
    enum class Stage { sources, scanning, results, importing, done };
    Q_ENUM(Stage)

    explicit ImportViewModel(ProjectStore *store, QObject *parent = nullptr);
    ~ImportViewModel() override;

    Stage stage() const { return m_stage; }
    const QStringList &sourceURLs() const { return m_sourceURLs; }
    bool recursive() const { return m_recursive; }
    const std::optional<QString> &scanError() const { return m_scanError; }
    SourceImportMode mode() const { return m_mode; }
    const QList<ScannedVideo> &scannedVideos() const { return m_scan.videos; }
    const LeftOut &leftOut() const { return m_scan.leftOut; }
    /// Failures of the scan, followed by those of the last run.
    QList<ImportFailure> failures() const;
    const QList<ImportPreviewRow> &previewRows() const { return m_previewRows; }
    /// The folder for copies: the project's media folder unless another one was set.
    const std::optional<QString> &destinationFolder() const { return m_destinationFolder; }
    /// Nullopt unless a run is in progress.
    std::optional<ImportProgress> progress() const;
    /// Result of the last run, complete at stage `done`.
    const ImportResult &result() const { return m_result; }
    /// Number of scanned files that are clips of the project at their recorded paths but may not
    /// be read for it: never granted, or no longer the granted file. An import skips them, so the
    /// scan adds them to the media confirmations.
    int refusedCount() const { return m_refusedCount; }

    bool canScan() const { return m_stage == Stage::sources && !m_sourceURLs.isEmpty(); }
    bool canBeginImport() const;
    int includedCount() const;

    // Allowed at stage `sources`.
    void setSources(const QStringList &sources);
    void setRecursive(bool recursive);
    // Allowed at stages `sources` and `results`. A change rebuilds the preview rows, which
    // includes rows again that were excluded by `togglePreviewRow`.
    void setMode(SourceImportMode mode);
    void setDestinationFolder(const QString &folder);
    /// Includes or excludes a row. Rows that are already imported stay excluded.
    void togglePreviewRow(const QString &id);

    /// Returns when the scan completed, failed or was cancelled.
    QCoro::Task<> startScan();
    /// Returns to stage `sources` at once and discards the scan.
    void cancelScan();
    /// Returns from the results to the sources, which are kept.
    void backToSources();
    /// Imports the included rows. Returns when the run is complete or cancelled.
    QCoro::Task<> beginImport();
    /// Cancels as described at `ImportRun::cancel`.
    void cancelImport();
    /// Restores the initial state. A no-op during a run.
    void reset();

  Q_SIGNALS:
    void stageChanged();
    /// `sourceURLs`, `recursive` or `scanError` changed.
    void sourcesChanged();
    /// The scan, mode, destination, preview rows or `refusedCount` changed.
    void previewChanged();
    /// A row was included or excluded by `togglePreviewRow`.
    void includedChanged();
    void progressChanged();

  private:
    bool canChoose() const { return m_stage == Stage::sources || m_stage == Stage::results; }
    void setStage(Stage stage);
    void setScan(ScanResult scan);
    QCoro::Task<> requestConfirmations(std::stop_token stop);
    void rebuildRows();

    QPointer<ProjectStore> m_store;

    Stage m_stage = Stage::sources;
    QStringList m_sourceURLs;
    bool m_recursive = false;
    std::optional<QString> m_scanError;
    SourceImportMode m_mode = SourceImportMode::inPlace;
    ScanResult m_scan;
    QList<ImportPreviewRow> m_previewRows;
    std::optional<QString> m_destinationFolder;
    bool m_isDestinationChosen = false;
    std::optional<QString> m_scannedFor; ///< project file that was open at the scan
    int m_refusedCount = 0;
    ImportResult m_result;

    std::stop_source m_scanStop;      ///< of the latest scan
    std::shared_ptr<ImportRun> m_run; ///< null unless a run is in progress
};

} // namespace corvane

#pragma once

#include "import/RowImport.h"
#include "import/SourceScan.h"
#include "session/ProjectStore.h"

#include <QObject>
#include <QPointer>

namespace corvane {

/// Where a running import stands.
struct ImportProgress {
    int index = 0; ///< of the row at work, from 1
    int total = 0; ///< the included rows
    QString currentFilename;
    quint64 bytesDone = 0;
    quint64 bytesTotal = 0;

    bool operator==(const ImportProgress &) const = default;
};

/// One import, from the chosen sources to a project that holds new clips. It owns the flow's stage,
/// its choices and its one run; scanning, hashing and copying happen on the user-initiated
/// executor, and what the new clips' containers say is read when they are in the project.
///
/// Main thread. An operation that the stage doesn't allow has no effect. Failures are told through
/// `scanError` and `failures`, never thrown. Destroying the object cancels what runs; the store may
/// go first.
class ImportViewModel : public QObject {
    Q_OBJECT

  public:
    enum class Stage { sources, scanning, results, importing, done };

    explicit ImportViewModel(ProjectStore *store, QObject *parent = nullptr);
    ~ImportViewModel() override;

    // Published fields. Each has a signal that is raised when the value differs.
    Stage stage() const { return m_stage; }
    const QStringList &sourceURLs() const { return m_sourceURLs; }
    bool recursive() const { return m_recursive; }
    const std::optional<QString> &scanError() const { return m_scanError; }
    SourceImportMode mode() const { return m_mode; }
    const QList<ScannedVideo> &scannedVideos() const { return m_scannedVideos; }
    const LeftOut &leftOut() const { return m_leftOut; }
    const QList<ImportPreviewRow> &previewRows() const { return m_previewRows; }
    const std::optional<QString> &destinationFolder() const { return m_destinationFolder; }
    const std::optional<ImportProgress> &progress() const { return m_progress; }
    int succeededCount() const { return m_succeededCount; }
    int skippedCount() const { return m_skippedCount; }
    int failedCount() const { return m_failedCount; }
    int sidecarsImportedCount() const { return m_sidecarsImportedCount; }
    const QList<ImportFailure> &failures() const { return m_failures; }
    /// The clips that the last run added to the project, in its order.
    const QStringList &importedVideoIds() const { return m_importedVideoIds; }
    /// How many of the files found are clips of the project already, at the very place where the
    /// clip says, and may not be read for it: never granted, or in a folder that was replaced. An
    /// import leaves them out, so the scan makes them wait for the user's word among the media
    /// confirmations.
    int refusedCount() const { return m_refusedCount; }

    // What the fields come to. They change with the fields that they are made of.
    bool canScan() const;
    bool canBeginImport() const;
    int includedCount() const;
    /// "Found 3 videos · 1 already imported."
    QString foundText() const;
    /// "2 included"
    QString includedText() const;
    /// "media folder (created on import)"; empty while files are used in place.
    QString destinationLabel() const;

    // The choices. The first two belong to the stage `sources`, the others come before the run.
    void setSources(const QStringList &sources);
    void setRecursive(bool recursive);
    /// A change of the mode or the destination builds the rows anew, and what was switched off by
    /// hand is included again.
    void setMode(SourceImportMode mode);
    void setDestinationFolder(const QString &folder);
    /// Includes a row or leaves it out. A row that is imported already stays out.
    void togglePreviewRow(const QString &id);

    // The run of the flow.
    /// Returns when the results are there, or the scan failed or was cancelled.
    QCoro::Task<> startScan();
    /// Back to the sources at once; what was scanned so far is dropped.
    void cancelScan();
    /// From the results to the sources, which are kept.
    void backToSources();
    /// Imports the included rows; returns when the run is done or was cancelled.
    QCoro::Task<> beginImport();
    /// Ends the run at the row at work. The rows done stay done and are added to the project; clips
    /// whose metadata weren't read yet stay without.
    void cancelImport();
    /// Clears all of this for another import. Ignored while an import runs.
    void reset();

  Q_SIGNALS:
    void stageChanged();
    void sourceURLsChanged();
    void recursiveChanged();
    void scanErrorChanged();
    void modeChanged();
    void scannedVideosChanged();
    void leftOutChanged();
    /// The rows were built anew.
    void previewRowsChanged();
    /// One row was included or left out.
    void previewRowChanged(int row);
    void destinationFolderChanged();
    void progressChanged();
    void succeededCountChanged();
    void skippedCountChanged();
    void failedCountChanged();
    void sidecarsImportedCountChanged();
    void failuresChanged();
    void importedVideoIdsChanged();
    void refusedCountChanged();

  private:
    /// What a run works from, fixed when it begins.
    struct Run {
        QList<ImportPreviewRow> rows;
        SourceImportMode mode = SourceImportMode::inPlace;
        QString destinationFolder;
        QString projectFile;
        QString projectId;
        std::stop_token stop;
    };

    /// What a run brings into the project.
    struct Imported {
        QList<VideoItem> videos;
        QStringList rootFolders; ///< where they came from
    };

    bool mayChoose() const { return m_stage == Stage::sources || m_stage == Stage::results; }
    void showScan(ScanResult result);
    QCoro::Task<> askAboutRefused(std::stop_token stop);
    void rebuildRows();
    void clearRun();

    Run startRun();
    QCoro::Task<bool> prepareDestination(Run run);
    QCoro::Task<Imported> importRows(Run run);
    QCoro::Task<std::optional<RowImport::Outcome>> importRow(Run run, ImportPreviewRow row);
    void addToProject(const Imported &imported);
    QCoro::Task<> readMetadata(Run run, QList<VideoItem> videos);
    void endRun();
    ImportCopier::Progress byteProgress();
    void count(const RowImport::Outcome &outcome);
    void count(const ImportFailure &failure);
    void countLostProject(const Run &run);
    /// Whether the project that the run began with still is the open one.
    bool isOpen(const Run &run) const;

    template <typename Value>
    void assign(Value &field, const Value &value, void (ImportViewModel::*changed)()) {
        if (!(field == value)) {
            field = value;
            Q_EMIT(this->*changed)();
        }
    }

    QPointer<ProjectStore> m_store;

    Stage m_stage = Stage::sources;
    QStringList m_sourceURLs;
    bool m_recursive = false;
    std::optional<QString> m_scanError;
    SourceImportMode m_mode = SourceImportMode::inPlace;
    QList<ScannedVideo> m_scannedVideos;
    LeftOut m_leftOut;
    QList<ImportPreviewRow> m_previewRows;
    std::optional<QString> m_destinationFolder;
    std::optional<QString> m_scannedFor; ///< the project that was open when the rows were made
    bool m_destinationIsChosen = false;  ///< by the user; else it is the project's media folder
    std::optional<ImportProgress> m_progress;
    int m_succeededCount = 0;
    int m_skippedCount = 0;
    int m_failedCount = 0;
    int m_sidecarsImportedCount = 0;
    QList<ImportFailure> m_failures;
    QStringList m_importedVideoIds;
    int m_refusedCount = 0;

    std::stop_source m_scanTask;   ///< of the scan that runs or ran last
    std::stop_source m_importTask; ///< likewise of the import
};

} // namespace corvane

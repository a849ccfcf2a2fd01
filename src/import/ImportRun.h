#pragma once

#include "import/RowImport.h"
#include "session/ProjectStore.h"

#include <QObject>
#include <QPointer>

namespace corvane {

/// Progress of an import run.
struct ImportProgress {
    enum class Phase { files, recording, metadata };

    Phase phase = Phase::files;
    int index = 0;           ///< of the current row, or clip in phase `metadata`; starts at 1
    int total = 0;           ///< number of included rows or of clips
    QString currentFilename; ///< the file name; in later phases a sentence
    /// Of the current row's video, 0 unless it is copied; in phase `recording` of all clips.
    quint64 bytesDone = 0;
    quint64 bytesTotal = 0; ///< size of the current row's video or of all clips; 0 in `metadata`

    bool operator==(const ImportProgress &) const = default;
};

/// Result of an import run.
struct ImportResult {
    int succeededCount = 0;
    int skippedCount = 0; ///< rows that were not included
    int failedCount = 0;
    int sidecarsImportedCount = 0;
    QList<ImportFailure> failures;
    QStringList importedVideoIds; ///< of the clips added to the project, in row order
    int pendingCount = 0;         ///< imported clips that await confirmation after a cancellation
    std::optional<QString> backupError; ///< of the backup before the project was changed
};

/// One run of an import: copies the files of the included rows unless they are used in place,
/// writes a backup of the project, adds the clips to it as one undo step, grants access to them and
/// reads their metadata. A failed backup is reported and doesn't stop the run.
///
/// Adds nothing if the project that was open at the start no longer is; every row then counts as
/// failed. Main thread; files are copied on the user-initiated executor. The store may be destroyed
/// during the run.
class ImportRun : public QObject {
    Q_OBJECT

  public:
    /// A project must be open. Ignores `destinationFolder` in mode `inPlace`.
    ImportRun(ProjectStore &store, const QList<ImportPreviewRow> &rows, SourceImportMode mode,
              QString destinationFolder);

    /// Performs the run. Must be called once; the object must outlive the task. Never throws.
    QCoro::Task<ImportResult> run();
    /// Stops at the current row. Completed rows are kept and added to the project; clips that were
    /// not hashed yet await confirmation, and those whose metadata was not read stay without it.
    void cancel() { m_stop.request_stop(); }
    /// Cancels and leaves the project unchanged from now on.
    void abandon();

    /// Nullopt before the first row.
    const std::optional<ImportProgress> &progress() const { return m_progress; }

  Q_SIGNALS:
    void progressChanged();

  private:
    bool isProjectOpen() const;
    bool shouldContinue() const { return !m_stop.stop_requested() && isProjectOpen(); }
    QCoro::Task<bool> prepareDestination();
    QCoro::Task<> importRows();
    QCoro::Task<std::optional<RowImport::Outcome>> copyRow(ImportPreviewRow row);
    void finishRow(const ImportPreviewRow &row, const RowImport::Outcome &outcome);
    void failAllRows();
    QCoro::Task<> backUp();
    void addToProject();
    QCoro::Task<> grantAccess();
    QCoro::Task<> readMetadata();
    ImportCopier::Progress byteProgress();
    void setProgress(const ImportProgress &progress);

    QPointer<ProjectStore> m_store;
    QString m_projectFile;
    QString m_projectId;
    SourceImportMode m_mode;
    QString m_destinationFolder;
    QList<ImportPreviewRow> m_rows; ///< the included rows
    std::stop_source m_stop;
    std::optional<ImportProgress> m_progress;
    ImportResult m_result;
    std::optional<OpenFolder> m_destination; ///< open; nullopt if files are used in place
    QList<VideoItem> m_videos;               ///< clips of the completed rows
    QHash<QString, QString> m_anchors;       ///< of copies, by path
    QStringList m_rootFolders;               ///< scanned folders of the completed rows
};

} // namespace corvane

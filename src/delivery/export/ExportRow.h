#pragma once

#include "delivery/ExportNaming.h"
#include "platform/VolumeLimits.h"
#include "trust/RootIdentity.h"

#include <functional>

/// The records of an export run: its input, its progress and its result. Paths are absolute.
namespace corvane {

/// Returns the id of the row of a clip or of a subclip.
inline QString exportRowId(const QString &clip) {
    return QStringLiteral("whole:") + clip;
}
inline QString exportRowId(const QString &clip, const QString &subclip) {
    return QStringLiteral("sub:%1:%2").arg(clip, subclip);
}

/// A planned row: a whole clip or a subclip, and the paths of its outputs.
struct ExportRowJob {
    QString id; ///< see `exportRowId`
    ExportRowKind kind = ExportRowKind::wholeClip;
    QString sourcePath;
    QString destinationPath;         ///< primary output; HD output with `OutputMode::hdOnly`
    std::optional<double> inSeconds; ///< both points of a subclip only
    std::optional<double> outSeconds;
    std::optional<QString> sidecarSource;
    std::optional<QString> sidecarDestination;
    QString parentVideoId;
    std::optional<QString> subclipId;
    std::optional<QString> hdDestinationPath; ///< with `OutputMode::primaryAndHd` only
    QString originalFilename;
    QString proposedName;

    /// nullopt unless both points are set.
    std::optional<ClipRange> range() const {
        return inSeconds && outSeconds ? std::optional(ClipRange{*inSeconds, *outSeconds})
                                       : std::nullopt;
    }
    bool operator==(const ExportRowJob &) const = default;
};

/// The input of a run besides its rows.
struct ExportBatchInput {
    QString batchId;
    QString outputFolder;
    ExportBatch::Mode mode = ExportBatch::Mode::fastCopy;
    OutputMode outputMode = OutputMode::primaryOnly;
    QDateTime completedAt; ///< time of the start of the run
    ExportNamingOptions namingOptions;
    double subclipHandleSeconds = 0;
    bool includeWholeVideoSelects = true;
    bool includeSubclipSelects = true;
    VolumeLimits volumeLimits; ///< of the output folder
    QString projectFolder;
    AuthorizedPaths authorizedSourcePaths; ///< snapshot of the grants for the entire run
    bool mediaRootAuthorized = false;      ///< part of the snapshot
    /// Files that no output may replace, besides the sources of the rows: the project file and the
    /// media, sidecars, HD files and original files of all clips.
    QStringList protectedFiles;

    bool operator==(const ExportBatchInput &) const = default;
};

struct ExportProgress {
    enum class Phase { starting, inProgress, hdEncoding, done };

    int index = 0; ///< from 0
    int total = 0;
    QString currentFilename;
    QString currentMode; ///< "fast-copy", "accurate-transcode" or "hd"
    ExportRowKind kind = ExportRowKind::wholeClip;
    Phase phase = Phase::starting;
    quint64 bytesDone = 0; ///< both 0 unless bytes are copied
    quint64 bytesTotal = 0;
    double rowProgress = 0; ///< of the current output, from 0 to 1

    /// Completed part of the run, from 0 to 1. If a row has two outputs, each counts half of it.
    double overallFraction(OutputMode outputMode) const {
        double row = rowProgress;
        if (outputMode == OutputMode::primaryAndHd && phase != Phase::done) {
            row = row / 2 + (phase == Phase::hdEncoding ? 0.5 : 0.0);
        }
        return total > 0 ? (index + row) / total : 0;
    }

    bool operator==(const ExportProgress &) const = default;
};

/// Called on the main thread.
using ExportProgressHandler = std::function<void(const ExportProgress &)>;

/// A row whose primary output was made. Its HD copy may have failed.
struct ExportRowOutcome {
    QString rowId;
    QString parentVideoId;
    std::optional<QString> subclipId;
    QString destinationPath;
    std::optional<QString> hdOutputPath; ///< nullopt if there is no HD file
    std::optional<QString> hdError;      ///< why the wanted HD copy is missing
    std::optional<QString> hdDestinationPath;

    bool operator==(const ExportRowOutcome &) const = default;
};

struct ExportRowFailure {
    QString rowId;
    QString parentVideoId;
    std::optional<QString> subclipId;
    QString destinationPath;
    QString error;
    bool cancelled = false;
    std::optional<QString> hdDestinationPath;

    bool operator==(const ExportRowFailure &) const = default;
};

struct ExportBatchResult {
    QList<ExportRowOutcome> succeeded; ///< both lists are in row order
    QList<ExportRowFailure> failed;    ///< includes the cancelled rows
    int cancelledCount = 0;
    std::optional<QString> manifestSidecarPath;
    std::optional<QString> manifestError;
    bool cancelled = false;
    QStringList changedSources; ///< refused because they are no longer the granted files

    /// Number of rows that failed other than by cancellation.
    int failedCount() const { return int(failed.size()) - cancelledCount; }

    bool operator==(const ExportBatchResult &) const = default;
};

} // namespace corvane

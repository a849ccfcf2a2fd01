#pragma once

#include "delivery/ExportNaming.h"
#include "transfer/CancelToken.h"
#include "trust/RootIdentity.h"

#include <functional>

/// The plain records that an export run is given, reports and gives back. Paths are absolute.
namespace corvane {

/// The ids of a clip's row and of a subclip's.
inline QString exportRowId(const QString &clip) {
    return QStringLiteral("whole:") + clip;
}
inline QString exportRowId(const QString &clip, const QString &subclip) {
    return QStringLiteral("sub:%1:%2").arg(clip, subclip);
}

/// One planned row: a whole clip or a range of one, and where its outputs go.
struct ExportRowJob {
    QString id; ///< see `exportRowId`
    ExportRowKind kind = ExportRowKind::wholeClip;
    QString sourcePath;
    QString destinationPath; ///< the primary output, or the only one with `OutputMode::hdOnly`
    std::optional<double> inSeconds;
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

/// What a run is given besides its rows. The grants are one snapshot for the whole run.
struct ExportBatchInput {
    QString batchId;
    QString outputFolder;
    ExportBatch::Mode mode = ExportBatch::Mode::fastCopy;
    OutputMode outputMode = OutputMode::primaryOnly;
    QDateTime completedAt; ///< stamped when the run is started
    ExportNamingOptions namingOptions;
    double subclipHandleSeconds = 0;
    bool includeWholeVideoSelects = true;
    bool includeSubclipSelects = true;
    QString projectFolder;
    AuthorizedPaths authorizedSourcePaths;
    bool mediaRootAuthorized = false;
    /// Absolute paths of what no output may replace: the project file, and all clips' media,
    /// sidecars and files they were copied from, exported in this run or not.
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
    quint64 bytesDone = 0; ///< both for byte copies only
    quint64 bytesTotal = 0;
    double rowProgress = 0; ///< from 0 to 1

    bool operator==(const ExportProgress &) const = default;
};

/// Called on the main thread.
using ExportProgressHandler = std::function<void(const ExportProgress &)>;

/// A row whose primary output stands. What became of its HD copy is told beside that.
struct ExportRowOutcome {
    QString rowId;
    QString parentVideoId;
    std::optional<QString> subclipId;
    QString destinationPath;
    std::optional<QString> hdOutputPath; ///< the HD file, where one was made
    std::optional<QString> hdError;
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
    QList<ExportRowOutcome> succeeded; ///< both lists in the order of the rows
    QList<ExportRowFailure> failed;    ///< the cancelled ones included
    int cancelledCount = 0;
    std::optional<QString> manifestSidecarPath;
    std::optional<QString> manifestError;
    bool cancelled = false;

    /// Rows that failed for another reason than a cancellation.
    int failedCount() const { return int(failed.size()) - cancelledCount; }

    bool operator==(const ExportBatchResult &) const = default;
};

} // namespace corvane

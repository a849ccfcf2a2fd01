#pragma once

#include "document/Project.h"
#include "platform/VolumeLimits.h"
#include "trust/RootIdentity.h"

#include <algorithm>
#include <functional>

/// The records of a handoff: its plan, its progress and its result. Paths are absolute.
namespace corvane {

enum class HandoffOutputMode { primaryOnly, primaryAndHd };

/// A clip of the handoff. Its paths of media and sidecar are absolute.
struct HandoffClip {
    VideoItem video;
    bool isWholeClipSelected = false;
    QList<Subclip> standaloneSubclips; ///< become files of their own; in document order

    bool operator==(const HandoffClip &) const = default;
};

/// The input of a run.
struct HandoffPlan {
    QString sourceProjectFilePath;
    QString sourceCacheRoot;
    QString destinationFolder;
    QString projectName; ///< name of the package folder and stem of its project file
    std::optional<QString> shootDate;
    std::optional<QString> clientOrSeries;
    std::optional<QString> location;
    std::optional<QString> notes;
    ExportBatch::Mode mode = ExportBatch::Mode::fastCopy;
    HandoffOutputMode outputMode = HandoffOutputMode::primaryOnly;
    double subclipHandleSeconds = 0;
    ExportNamingOptions naming;
    VolumeLimits volumeLimits; ///< of the destination folder
    QList<HandoffClip> clips;
    AuthorizedPaths authorizedSourcePaths;  ///< snapshot of the grants for the entire run
    bool sourceMediaRootAuthorized = false; ///< part of the snapshot

    bool operator==(const HandoffPlan &) const = default;
};

struct HandoffProgress {
    enum class Phase {
        starting,
        copyingMedia,
        extractingSubclip,
        generatingThumbnail,
        generatingFilmstrip,
        copyingHD,
        writingProject,
        done,
    };

    int index = 0; ///< of the clip, from 0; raised by one when the whole clip is done
    int total = 0; ///< clips
    QString currentFilename;
    Phase phase = Phase::starting;
    quint64 bytesDone = 0; ///< both 0 unless bytes are copied
    quint64 bytesTotal = 0;
    double rowProgress = 0; ///< of the current output, from 0 to 1

    /// Completed part of the run, from 0 to 1.
    double overallFraction() const {
        const double row = phase == Phase::done ? 0.0 : rowProgress;
        return total > 0 ? std::clamp((index + row) / total, 0.0, 1.0) : 0;
    }

    bool operator==(const HandoffProgress &) const = default;
};

/// Called on the main thread.
using HandoffProgressHandler = std::function<void(const HandoffProgress &)>;

/// A completed output.
struct HandoffRowOutcome {
    QString videoId; ///< of the clip in the package's document
    QString destinationPath;
    std::optional<QString> hdPath; ///< nullopt if there is no HD file

    bool operator==(const HandoffRowOutcome &) const = default;
};

/// A failed step of a clip, or a cancelled clip.
struct HandoffRowFailure {
    QString videoId; ///< of the clip in the source project
    QString videoFileName;
    QString error;
    bool cancelled = false;

    bool operator==(const HandoffRowFailure &) const = default;
};

struct HandoffResult {
    std::optional<QString> packageFolder;
    std::optional<QString> projectFileURL;
    QList<HandoffRowOutcome> succeeded; ///< in the order of completion
    QList<HandoffRowFailure> failed;    ///< includes the cancelled clips
    int cancelledCount = 0;
    bool cancelled = false;
    std::optional<QString> generalError; ///< why the package is incomplete
    QStringList changedSources;          ///< refused because they are no longer the granted files

    /// Number of failures other than cancellations.
    int failedCount() const { return int(failed.size()) - cancelledCount; }

    bool operator==(const HandoffResult &) const = default;
};

template <>
inline constexpr auto rawValues<HandoffOutputMode> = std::to_array<RawValue<HandoffOutputMode>>({
    {HandoffOutputMode::primaryOnly, "primary-only"},
    {HandoffOutputMode::primaryAndHd, "primary-and-hd"},
});

} // namespace corvane

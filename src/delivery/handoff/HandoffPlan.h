#pragma once

#include "document/Project.h"
#include "trust/RootIdentity.h"

#include <functional>

/// The plain records that a handoff is given, reports and gives back. Paths are absolute.
namespace corvane {

enum class HandoffOutputMode { primaryOnly, primaryAndHd };

/// One clip with anything to hand over. Its paths to media and sidecar are absolute.
struct HandoffClip {
    VideoItem video;
    bool isWholeClipSelected = false;
    /// Subclips that become files of their own, in the order of the document.
    QList<Subclip> standaloneSubclips;

    bool operator==(const HandoffClip &) const = default;
};

/// What a run is given. The grants are one snapshot for the whole run.
struct HandoffPlan {
    QString sourceProjectFilePath;
    QString sourceCacheRoot;
    QString destinationFolder;
    QString projectName; ///< the package folder's name and the new project file's stem
    std::optional<QString> shootDate;
    std::optional<QString> clientOrSeries;
    std::optional<QString> location;
    std::optional<QString> notes;
    ExportBatch::Mode mode = ExportBatch::Mode::fastCopy;
    HandoffOutputMode outputMode = HandoffOutputMode::primaryOnly;
    double subclipHandleSeconds = 0;
    ExportNamingOptions naming;
    QList<HandoffClip> clips;
    AuthorizedPaths authorizedSourcePaths;
    bool sourceMediaRootAuthorized = false;

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

    int index = 0; ///< of the clip, from 0; one higher once it is done
    int total = 0; ///< clips
    QString currentFilename;
    Phase phase = Phase::starting;
    quint64 bytesDone = 0; ///< both for byte copies only
    quint64 bytesTotal = 0;
    double rowProgress = 0; ///< of the output in hand, from 0 to 1

    bool operator==(const HandoffProgress &) const = default;
};

/// Called on the main thread.
using HandoffProgressHandler = std::function<void(const HandoffProgress &)>;

/// An output that stands in the package.
struct HandoffRowOutcome {
    QString videoId; ///< of the clip in the new project
    QString destinationPath;
    std::optional<QString> hdPath; ///< the HD file, where one was made

    bool operator==(const HandoffRowOutcome &) const = default;
};

/// A step of a clip that failed, or a clip that a cancellation left out.
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
    QList<HandoffRowOutcome> succeeded; ///< in the order made
    QList<HandoffRowFailure> failed;    ///< the cancelled ones included
    int cancelledCount = 0;
    bool cancelled = false;
    /// What ended the run as a whole, or kept the project file from being completed.
    std::optional<QString> generalError;

    /// Failures for another reason than a cancellation.
    int failedCount() const { return int(failed.size()) - cancelledCount; }

    bool operator==(const HandoffResult &) const = default;
};

template <> struct RawValues<HandoffOutputMode> {
    static constexpr std::array<std::pair<HandoffOutputMode, std::string_view>, 2> table{{
        {HandoffOutputMode::primaryOnly, "primary-only"},
        {HandoffOutputMode::primaryAndHd, "primary-and-hd"},
    }};
};

} // namespace corvane

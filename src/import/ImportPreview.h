#pragma once

#include "import/ScannedVideo.h"

#include <QSet>

namespace corvane {

enum class CollisionStatus { ok, renamed, alreadyImported };

/// How an import would treat one scanned video.
struct ImportPreviewRow {
    QString id; ///< of the scanned video
    ScannedVideo source;
    QString proposedName;
    std::optional<QString> proposedSidecarName;
    CollisionStatus status = CollisionStatus::ok; ///< of the video; sidecars follow it
    bool included = false;

    bool operator==(const ImportPreviewRow &) const = default;
};

/// Returns one row per video, in order. Videos that the project contains are not included. In mode
/// `copied` all proposed names, including those of sidecars, are unique among the rows and the
/// entries of the destination folder, compared case-sensitively. A destination that cannot be
/// listed counts as empty. Linear in the number of videos.
QList<ImportPreviewRow> buildPreviewRows(const QList<ScannedVideo> &scannedVideos,
                                         const std::optional<Project> &project,
                                         SourceImportMode mode,
                                         const std::optional<QString> &destinationFolder);

/// Returns the first of "take (2).mov", "take (3).mov", ... that is not taken.
QString uniqueName(const QString &name, const QSet<QString> &taken);

/// Returns the name of a sidecar whose video is renamed. Keeps the text after the old stem:
/// "C0001M01.XML" becomes "C0001 (2)M01.XML" for "C0001 (2).MP4".
QString sidecarName(const QString &sidecarPath, const QString &videoStem,
                    const QString &newVideoStem);

} // namespace corvane

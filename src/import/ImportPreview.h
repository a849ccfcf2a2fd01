#pragma once

#include "import/ScannedVideo.h"

#include <QSet>

namespace corvane {

enum class CollisionStatus { ok, renamed, alreadyImported };

/// What an import will do with one scanned video.
struct ImportPreviewRow {
    QString id; ///< the scanned video's
    ScannedVideo source;
    QString proposedName;
    std::optional<QString> proposedSidecarName;
    CollisionStatus status =
        CollisionStatus::ok; ///< of the video's name; a sidecar follows quietly
    bool included = false;

    bool operator==(const ImportPreviewRow &) const = default;
};

/// The rows of the preview, in the order of the videos. What the project holds already isn't
/// included. In a copied import no proposed name, of a video or a sidecar, is another row's or that
/// of something in the destination folder; names are compared exactly, case included. A destination
/// that can't be listed counts as empty. Linear in the number of videos.
QList<ImportPreviewRow> buildPreviewRows(const QList<ScannedVideo> &scannedVideos,
                                         const std::optional<Project> &project,
                                         SourceImportMode mode,
                                         const std::optional<QString> &destinationFolder);

/// "take (2).mov", "take (3).mov", ...: the first that isn't taken.
QString uniqueName(const QString &name, const QSet<QString> &taken);

/// The name of a sidecar whose video is renamed: what follows the old stem is kept, so that
/// "C0001M01.XML" beside "C0001 (2).MP4" is "C0001 (2)M01.XML".
QString sidecarName(const QString &sidecarPath, const QString &videoStem,
                    const QString &newVideoStem);

} // namespace corvane

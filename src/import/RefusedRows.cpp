#include "import/RefusedRows.h"

#include "platform/Paths.h"

#include <QHash>

namespace corvane {

namespace {

QHash<QString, VideoItem> clipsByPath(const Project &project) {
    QHash<QString, VideoItem> clips;
    for (const VideoItem &video : project.videos) {
        clips.insert(paths::standardized(video->sourcePath), video);
    }
    return clips;
}

/// Changed since it was imported; it may have been granted as it is now. Two keys of which one is
/// missing tell nothing.
bool isChanged(const ScannedVideo &found, const VideoItem &clip) {
    return found.contentHash && clip->contentHash && *found.contentHash != *clip->contentHash;
}

/// Why the file would be refused; nothing where it wouldn't.
std::optional<PathSafety::Violation::Kind> refusal(const QString &path,
                                                   const PathSafety::SourceGrants &grants) {
    try {
        PathSafety::validateSource(path, grants, QStringLiteral("source"));
        return std::nullopt;
    } catch (const PathSafety::Violation &violation) {
        return violation.kind();
    }
}

} // namespace

RefusedRows refusedRows(const QList<ImportPreviewRow> &rows, const Project &project,
                        PathSafety::SourceGrants grants) {
    using Kind = PathSafety::Violation::Kind;
    using Verdict = ContentHasher::AnchorVerification;
    const QHash<QString, VideoItem> clips = clipsByPath(project);
    RefusedRows refused;
    for (const ImportPreviewRow &row : rows) {
        const QString path = paths::standardized(row.source.url);
        const auto clip = clips.constFind(path);
        if (clip == clips.cend()) {
            continue;
        }
        if (!isChanged(row.source, *clip)) {
            grants.preverifiedAnchors.insert(path, Verdict::matches);
        }
        const auto kind = refusal(path, grants);
        if (kind == Kind::notAuthorizedForProject || kind == Kind::sourcePendingRelink) {
            refused.neverGranted.append(path);
        } else if (kind == Kind::sourceIdentityChanged) {
            refused.changed.append(path);
        }
    }
    return refused;
}

} // namespace corvane

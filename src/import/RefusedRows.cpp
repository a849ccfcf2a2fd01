#include "import/RefusedRows.h"

#include "platform/Paths.h"
#include "trust/FolderIdentities.h"

#include <QSet>

namespace corvane {

namespace {

QSet<QString> clipPaths(const Project &project) {
    QSet<QString> paths;
    for (const VideoItem &video : project.videos) {
        paths.insert(paths::standardized(video->sourcePath));
    }
    return paths;
}

/// What nearly all are, told without looking at each file anew.
bool isGrantedThere(const std::optional<RootIdentity> &granted,
                    const std::optional<RootIdentity> &folder) {
    return granted && folder && granted->isSameFolder(*folder);
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
    const QSet<QString> clips = clipPaths(project);
    FolderIdentities folders;
    RefusedRows refused;
    for (const ImportPreviewRow &row : rows) {
        const QString path = paths::standardized(row.source.url);
        if (row.status != CollisionStatus::alreadyImported || !clips.contains(path) ||
            isGrantedThere(grants.authorizedSourcePaths.value(path), folders.ofParent(path))) {
            continue;
        }
        grants.preverifiedAnchors.insert(path, Verdict::matches); // its key is the clip's
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

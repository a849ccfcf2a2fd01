#include "import/RefusedRows.h"

#include "platform/Paths.h"
#include "trust/FolderIdentities.h"

#include <QDateTime>
#include <QHash>

#include <chrono>

namespace corvane {

namespace {

/// Creation dates of the clips by path.
QHash<QString, QDateTime> creationDates(const Project &project) {
    QHash<QString, QDateTime> dates;
    for (const VideoItem &video : project.videos) {
        dates.insert(paths::standardized(video->sourcePath), video->createdAt);
    }
    return dates;
}

bool isModifiedSince(const QString &path, const QDateTime &date) {
    using std::chrono::milliseconds;
    const auto status = fileSystem().linkStatus(path);
    return status && std::chrono::floor<milliseconds>(status->modified).time_since_epoch() >
                         milliseconds(date.toMSecsSinceEpoch());
}

/// The common case, decided without accessing the file.
bool isGrantedFolder(const std::optional<RootIdentity> &granted,
                     const std::optional<RootIdentity> &folder) {
    return granted && folder && granted->isSameFolder(*folder);
}

/// The reason to refuse the file, or nullopt if it may be read.
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
    const QHash<QString, QDateTime> clips = creationDates(project);
    FolderIdentities folders;
    RefusedRows refused;
    for (const ImportPreviewRow &row : rows) {
        const QString path = paths::standardized(row.source.url);
        const auto clip = clips.constFind(path);
        if (row.status != CollisionStatus::alreadyImported || clip == clips.cend()) {
            continue;
        }
        if (isGrantedFolder(grants.authorizedSourcePaths.value(path), folders.ofParent(path))) {
            if (isModifiedSince(path, *clip)) {
                refused.modified.append(path);
            }
            continue;
        }
        grants.preverifiedAnchors.insert(path, Verdict::matches); // by its duplicate key
        const auto kind = refusal(path, grants);
        if (kind == Kind::notAuthorizedForProject || kind == Kind::sourcePendingRelink) {
            refused.neverGranted.append(path);
        } else if (kind == Kind::sourceIdentityChanged) {
            refused.changed.append(path);
        }
    }
    return refused;
}

bool isContentChanged(const QString &path, const PathSafety::SourceGrants &grants) {
    return refusal(path, grants) == PathSafety::Violation::Kind::sourceIdentityChanged;
}

} // namespace corvane

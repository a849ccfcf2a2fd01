#include "trust/PathSafety.h"

#include "platform/Paths.h"

#include <QUuid>

namespace corvane::PathSafety {

namespace {

QString sentence(Violation::Kind kind) {
    using Kind = Violation::Kind;
    switch (kind) {
    case Kind::notARegularFile:
        return QStringLiteral("%1 is not a regular file, refusing to use it: %2");
    case Kind::notMediaFile:
        return QStringLiteral("%1 is not a media file, refusing to copy it: %2");
    case Kind::symlinkedPathComponent:
        return QStringLiteral("%1 reaches through a symbolic link, refusing to use it: %2");
    case Kind::notAuthorizedForProject:
        return QStringLiteral("%1 was never imported or relinked for this project, refusing to use "
                              "it: %2. Re-import or relink it, then try again.");
    case Kind::sourceIdentityChanged:
        return QStringLiteral(
            "%1's folder changed since it was authorized, refusing to use it: %2. "
            "Re-import or relink it, then try again.");
    case Kind::sourcePendingRelink:
        break;
    }
    return QStringLiteral("%1 was authorized but its folder was never confirmed, refusing to use "
                          "it: %2. Re-import or relink it, then try again.");
}

/// Both paths are standardized, and the candidate is below `root`.
bool reachesThroughSymlink(const QString &candidate, const QString &root) {
    qsizetype end = root.size();
    while (end < candidate.size()) {
        const qsizetype slash = candidate.indexOf(QLatin1Char('/'), end + 1);
        end = slash < 0 ? candidate.size() : slash;
        if (fileType(candidate.left(end)) == FileType::SymbolicLink) {
            return true;
        }
    }
    return false;
}

/// An unverifiable anchor doesn't count as a change.
bool hasChangedContents(const QString &path, const QString &anchor, const SourceGrants &grants) {
    using Verdict = ContentHasher::AnchorVerification;
    const auto known = grants.preverifiedAnchors.constFind(path);
    if (known != grants.preverifiedAnchors.cend() && ContentHasher::parseFullAnchor(anchor)) {
        return *known == Verdict::mismatches;
    }
    return ContentHasher::verifyAnchor(anchor, path) == Verdict::mismatches;
}

/// An unreadable folder doesn't count as a change: reading the file will fail.
bool hasChangedFolder(const QString &path, const RootIdentity &granted) {
    const auto folder = folderIdentity(paths::parentFolder(path));
    return folder && !granted.isSameFolder(*folder);
}

bool isInAuthorizedMediaRoot(const QString &path, const SourceGrants &grants) {
    return grants.mediaRootAuthorized &&
           isInsideWithoutSymlinks(path,
                                   paths::joined(grants.projectFolder, QStringLiteral("media")));
}

} // namespace

Violation::Violation(Kind kind, const QString &path, const QString &label)
    : Failure(sentence(kind).arg(label, path)), m_kind(kind) {}

std::optional<FileType> fileType(const QString &path) {
    const auto status = fileSystem().linkStatus(path);
    return status ? std::optional(status->type) : std::nullopt;
}

bool reachesOutsideOrThroughSymlink(const QString &candidate, const QString &root) {
    const QString path = paths::standardized(candidate);
    const QString folder = paths::standardized(root);
    return !paths::isBelow(path, folder) || reachesThroughSymlink(path, folder);
}

bool isInsideWithoutSymlinks(const QString &path, const QString &root) {
    const QString folder = paths::standardized(root);
    return fileType(folder) != FileType::SymbolicLink &&
           !reachesOutsideOrThroughSymlink(path, folder);
}

std::optional<RootIdentity> folderIdentity(const QString &folder) {
    try {
        const auto identity = FolderIdentity::of(fileSystem().openFolder(folder));
        return identity ? std::optional(RootIdentity{*identity, {}}) : std::nullopt;
    } catch (const FileError &) {
        return std::nullopt;
    }
}

void validateSource(const QString &path, const SourceGrants &grants, const QString &label) {
    using Kind = Violation::Kind;
    const QString source = paths::standardized(path);
    const auto refuseIf = [&](bool isFault, Kind kind) {
        if (isFault) {
            throw Violation(kind, source, label);
        }
    };
    const auto type = fileType(source);
    refuseIf(type && *type != FileType::Regular, Kind::notARegularFile);
    refuseIf(!isMediaFile(source), Kind::notMediaFile);

    const auto entry = grants.authorizedSourcePaths.constFind(source);
    refuseIf(entry == grants.authorizedSourcePaths.cend(), Kind::notAuthorizedForProject);
    const std::optional<RootIdentity> &granted = *entry;
    refuseIf(!granted, Kind::sourcePendingRelink);
    refuseIf(granted->contentHash && hasChangedContents(source, *granted->contentHash, grants),
             Kind::sourceIdentityChanged);
    refuseIf(!isInAuthorizedMediaRoot(source, grants) && hasChangedFolder(source, *granted),
             Kind::sourceIdentityChanged);
}

std::optional<QString> cachePath(const QString &storedPath, const QString &projectFolder) {
    if (storedPath.isEmpty()) {
        return std::nullopt;
    }
    const QString cacheRoot = paths::joined(projectFolder, QStringLiteral(".corvane-cache"));
    const bool isAbsolute = storedPath.startsWith(QLatin1Char('/'));
    QString path =
        paths::standardized(isAbsolute ? storedPath : paths::joined(cacheRoot, storedPath));
    if (!paths::isBelow(path, paths::standardized(projectFolder))) {
        return std::nullopt;
    }
    return path;
}

std::optional<QString> resolveCachePath(const QString &storedPath, const QString &projectFolder) {
    const auto path = cachePath(storedPath, projectFolder);
    return path && !reachesOutsideOrThroughSymlink(*path, projectFolder) ? path : std::nullopt;
}

QString subclipThumbnailName(const QString &subclipId) {
    const QString uuid = QUuid::fromString(subclipId).toString(QUuid::WithoutBraces).toUpper();
    return uuid == subclipId.toUpper() // not a UUID in braces
               ? QStringLiteral("subclip-thumbs/%1.jpg").arg(uuid)
               : QString();
}

std::optional<QString> subclipThumbnailPath(const QString &subclipId,
                                            const QString &projectFolder) {
    return resolveCachePath(subclipThumbnailName(subclipId), projectFolder);
}

} // namespace corvane::PathSafety

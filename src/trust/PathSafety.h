#pragma once

#include "platform/FileSystem.h"
#include "trust/ContentHasher.h"
#include "trust/RootIdentity.h"

#include <QStringList>

/// Decides whether a path that a project names may be read for a delivery. The operations look at
/// the file system and either return or throw; they hand out no descriptor, so a passed check is a
/// statement about that moment, and the reader re-checks what it read. Any thread; nothing is kept.
namespace corvane::PathSafety {

class Violation : public Failure {
  public:
    enum class Kind {
        notARegularFile,
        notMediaFile,
        symlinkedPathComponent,
        notAuthorizedForProject,
        sourceIdentityChanged, ///< a changed folder and changed contents alike
        sourcePendingRelink,
    };

    /// `label` is the word for the path's role: "export source", "sidecar destination", ...
    Violation(Kind kind, const QString &path, const QString &label);

    Kind kind() const { return m_kind; }

  private:
    Kind m_kind;
};

/// The file's type without following a link at the last component; nothing where it can't be read.
std::optional<FileType> fileType(const QString &path);

/// By the name alone: a video or audio MIME type, or one of the ten known extensions.
bool isMediaFile(const QString &path);

/// True if the candidate isn't inside root, or a component of it below root is a symbolic link.
bool reachesOutsideOrThroughSymlink(const QString &candidate, const QString &root);

/// True if root is no symbolic link, the path lies strictly inside it, and no component below root
/// is a link.
bool isInsideWithoutSymlinks(const QString &path, const QString &root);

/// The folder's identity without a content hash; links are followed. Nothing where it can't be
/// read.
std::optional<RootIdentity> folderIdentity(const QString &folder);

/// What a source is vetted against: one snapshot of the grants, taken when the run was planned.
struct SourceGrants {
    QString projectFolder;
    AuthorizedPaths authorizedSourcePaths;
    bool mediaRootAuthorized = false;
    /// Verdicts that were reached ahead of time; a path that is missing here is verified on the
    /// spot.
    QHash<QString, ContentHasher::AnchorVerification> preverifiedAnchors;
};

/// Returns if the project may read the file, or throws `Violation`.
void validateSource(const QString &path, const SourceGrants &grants, const QString &label);

/// A stored cache path (absolute, or relative to the cache root) as an absolute path; nothing where
/// it is empty, leaves the project folder or reaches through a link. The caller then shows no
/// image.
std::optional<QString> resolveCachePath(const QString &storedPath, const QString &projectFolder);

/// Where a subclip's thumbnail lies; nothing for an id that is no UUID.
std::optional<QString> subclipThumbnailPath(const QString &subclipId, const QString &projectFolder);

} // namespace corvane::PathSafety

/// The one rule that holds for every export: a proxy is never a source.
namespace corvane::ProxyInvariant {

class Violation : public Failure {
  public:
    static Violation sourcePathResolvesUnderProxiesCache(const QString &resolvedPath);

  private:
    using Failure::Failure;
};

/// Both resolve links first, and throw `Violation` where ".corvane-cache" and "proxies" follow each
/// other anywhere in the path.
void assertNotProxySource(const QString &path);
void assertNoProxySources(const QStringList &paths);

} // namespace corvane::ProxyInvariant

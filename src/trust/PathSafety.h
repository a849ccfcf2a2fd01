#pragma once

#include "platform/FileSystem.h"
#include "trust/ContentHasher.h"
#include "trust/RootIdentity.h"

#include <QStringList>

/// Checks paths from a project document before they are read or written. The functions access the
/// file system and are thread-safe. They return no descriptor, so a check holds only for the moment
/// it was made: the reader must check again what it opened.
namespace corvane::PathSafety {

/// The reason a source is refused, worded for the user.
class Violation : public Failure {
  public:
    enum class Kind {
        notARegularFile,
        notMediaFile,
        symlinkedPathComponent,
        notAuthorizedForProject,
        sourceIdentityChanged, ///< the folder or the contents changed since the grant
        sourcePendingRelink,   ///< listed without an identity
    };

    /// `label` names the role of the path in the message, such as "export source".
    Violation(Kind kind, const QString &path, const QString &label);

    Kind kind() const { return m_kind; }

  private:
    Kind m_kind;
};

/// Returns the file's type without following a symbolic link in the last component; nullopt if it
/// can't be read.
std::optional<FileType> fileType(const QString &path);

/// Decides by the name only: a video or audio MIME type, or one of ten known extensions.
bool isMediaFile(const QString &path);

/// True if the candidate is not strictly inside `root`, or if a component below `root` is a
/// symbolic link.
bool reachesOutsideOrThroughSymlink(const QString &candidate, const QString &root);

/// True if the path is strictly inside `root`, and neither `root` nor a component below it is a
/// symbolic link.
bool isInsideWithoutSymlinks(const QString &path, const QString &root);

/// Returns the folder's identity, without a content hash; nullopt if it can't be read. Follows
/// symbolic links.
std::optional<RootIdentity> folderIdentity(const QString &folder);

/// A snapshot of a project's grants, taken when a run is planned.
struct SourceGrants {
    QString projectFolder;
    AuthorizedPaths authorizedSourcePaths;
    bool mediaRootAuthorized = false;
    /// Results of hashing done in advance. Files that are missing here are hashed when validated.
    QHash<QString, ContentHasher::AnchorVerification> preverifiedAnchors;
};

/// Throws `Violation` if the project may not read the file. Hashes the file unless it has a full
/// anchor that is preverified.
void validateSource(const QString &path, const SourceGrants &grants, const QString &label);

/// Returns the absolute path of a stored cache path, which is absolute or relative to the cache
/// root; nullopt if it is empty or outside the project folder. Doesn't access the disk: whoever
/// reads the file refuses symbolic links below the project folder.
std::optional<QString> cachePath(const QString &storedPath, const QString &projectFolder);

/// `cachePath`; also nullopt if the path is reached through a symbolic link.
std::optional<QString> resolveCachePath(const QString &storedPath, const QString &projectFolder);

/// The stored path of a subclip's thumbnail; empty if the id is not a UUID.
QString subclipThumbnailName(const QString &subclipId);

/// Returns the path of a subclip's thumbnail; nullopt if the id is not a UUID, or as in
/// `resolveCachePath`.
std::optional<QString> subclipThumbnailPath(const QString &subclipId, const QString &projectFolder);

} // namespace corvane::PathSafety

/// Ensures that an export never reads a proxy.
namespace corvane::ProxyInvariant {

/// The reason a source is refused, worded for the user.
class Violation : public Failure {
  public:
    static Violation sourcePathResolvesUnderProxiesCache(const QString &resolvedPath);

  private:
    using Failure::Failure;
};

/// Both throw `Violation` if the path, with symbolic links resolved, contains the folder
/// ".corvane-cache/proxies".
void assertNotProxySource(const QString &path);
void assertNoProxySources(const QStringList &paths);

} // namespace corvane::ProxyInvariant

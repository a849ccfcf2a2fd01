#pragma once

#include "platform/AtomicWrite.h"
#include "transfer/Destination.h"
#include "trust/RootIdentity.h"

#include <functional>
#include <memory>
#include <optional>
#include <stop_token>

/// Copies one file without relying on earlier checks: verifies the identity of the root folder,
/// opens each component below it relative to a descriptor without following links, hashes the bytes
/// while they are copied, and renames only a complete, synced file to the destination. What is
/// written goes to an open folder, so no link or other folder at its path can redirect it.
namespace corvane::ImportCopier {

class CopyError : public Failure {
  public:
    enum class Kind {
        sourceUnreadable,
        sourceNotARegularFile,
        destinationUnwritable,
        writeFailed,
        renameFailed,
        destinationIsNotAFile,
        destinationTaken,
        destinationFull,
        sourceOutsideScanRoot,
        sourceRootChanged,
        sourceContentChanged,
    };

    static CopyError sourceUnreadable(const QString &path, const QString &error);
    static CopyError sourceNotARegularFile(const QString &path);
    static CopyError destinationUnwritable(const QString &path, const QString &error);
    static CopyError writeFailed(const QString &path, const QString &error);
    static CopyError renameFailed(const QString &path, const QString &error);
    static CopyError destinationIsNotAFile(const QString &path);
    static CopyError destinationTaken(const QString &path);
    static CopyError destinationFull(const Destination &destination, qint64 needed,
                                     qint64 available);
    static CopyError sourceOutsideScanRoot(const QString &path, const QString &root);
    static CopyError sourceRootChanged(const QString &path);
    static CopyError sourceContentChanged(const QString &path);

    Kind kind() const { return m_kind; }

  private:
    CopyError(Kind kind, QString description) : Failure(std::move(description)), m_kind(kind) {}

    Kind m_kind;
};

/// The folder through which sources are opened. If the identity is set, the folder must match it;
/// if its `contentHash` is a full anchor, the copied bytes must match that too.
struct SourceRoot {
    QString path;
    std::optional<RootIdentity> identity;
    /// Opened and checked by the first copy and then shared by all copies of this object, so that a
    /// clip and its sidecar come from the same folder. One thread at a time.
    std::shared_ptr<Descriptor> folder = std::make_shared<Descriptor>();
};

/// "<prefix><process>.<new UUID>.<extension>", for a file that is renamed or removed.
QString temporaryName(const QString &prefix, const QString &extension);

/// Called with the bytes copied so far, on the copying thread.
using Progress = std::function<void(quint64 bytesDone)>;

struct Options {
    Durability durability = Durability::Synced;
    bool isIdentified = false; ///< computes the anchor and the duplicate key
    /// For a copy that only this process reads: it is readable by its owner only, shares the bytes
    /// of the source if the file system can do that, and is refused early if it doesn't fit.
    bool isPrivate = false;
};

/// A complete copy under a temporary name, which is removed unless the copy is placed.
class UnplacedCopy {
  public:
    UnplacedCopy(std::unique_ptr<TemporaryFile> file, FileStatus source);

    /// The status of the source, as of its opening.
    const FileStatus &source() const { return m_source; }
    // The identifiers of the bytes copied, see `ContentHasher`. Empty unless `isIdentified`.
    QString anchor;
    QString duplicateKey;

    /// Renames the copy and syncs the folder. If it throws `destinationIsNotAFile` or
    /// `destinationTaken`, it may be called again with another name. After another `CopyError` the
    /// file may have its name, but not survive a loss of power.
    void place(const QString &name, Placing placing);

  private:
    std::unique_ptr<TemporaryFile> m_file;
    FileStatus m_source;
};

/// Copies a file into the destination's folder without placing it; its name is for messages.
/// Blocks; any thread. Without a root the source is opened by its path. With a root, its path must
/// still lead to the opened folder afterwards.
///
/// Throws `CopyError` or `Cancelled`, and leaves no temporary file.
UnplacedCopy copyUnplaced(const QString &source, const Destination &destination,
                          const std::optional<SourceRoot> &root, const Progress &progress,
                          std::stop_token stop, const Options &options = {});

/// Does the same and places the copy. With `Durability::Later` the caller syncs the volume.
///
/// Throws `CopyError` or `Cancelled`. The destination is then unchanged and no temporary file is
/// left, unless the last step fails, which syncs the folder after the file was renamed.
void copy(const QString &source, const Destination &destination,
          const std::optional<SourceRoot> &root, const Progress &progress, std::stop_token stop,
          const Options &options = {});

} // namespace corvane::ImportCopier

#pragma once

#include "platform/AtomicWrite.h"
#include "trust/RootIdentity.h"

#include <functional>
#include <optional>
#include <stop_token>

/// Copies one file without relying on earlier checks: verifies the identity of the root folder,
/// opens each component below it relative to a descriptor without following links, hashes the bytes
/// while they are copied, and renames only a complete, synced file to the destination.
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
    static CopyError sourceOutsideScanRoot(const QString &path, const QString &root);
    static CopyError sourceRootChanged(const QString &path);
    static CopyError sourceContentChanged(const QString &path);

    Kind kind() const { return m_kind; }

  private:
    CopyError(Kind kind, QString description) : Failure(std::move(description)), m_kind(kind) {}

    Kind m_kind;
};

/// The folder through which the source is opened. If the identity is set, the folder must match it;
/// if its `contentHash` is a full anchor, the copied bytes must match that too.
struct SourceRoot {
    QString path;
    std::optional<RootIdentity> identity;
};

/// "<prefix><process>.<new UUID>.<extension>", for a file that is renamed or removed.
QString temporaryName(const QString &prefix, const QString &extension);

/// Called with the bytes copied so far, on the copying thread.
using Progress = std::function<void(quint64 bytesDone)>;

/// Copies a file and creates missing folders of the destination. Blocks; any thread. Without a root
/// the source is opened by its path. The copy gets `permissions` less the umask. With
/// `Durability::Later` the caller syncs the volume.
///
/// Throws `CopyError` or `Cancelled`. The destination is then unchanged and no temporary file is
/// left, unless the last step fails, which syncs the folder after the file was renamed.
void copy(const QString &source, const QString &destination, const std::optional<SourceRoot> &root,
          const Progress &progress, std::stop_token stop, quint32 permissions = 0666,
          Durability durability = Durability::Synced);

} // namespace corvane::ImportCopier

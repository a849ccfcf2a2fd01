#pragma once

#include "platform/AtomicWrite.h"
#include "trust/RootIdentity.h"

#include <functional>
#include <optional>
#include <stop_token>

/// Copies one file, trusting nothing that was seen of it before: the root is proved again by its
/// identity, the way down goes on descriptors without following links, what is read is hashed on
/// its way, and only a complete, synced file is moved to the destination's name.
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

/// The folder that the source must be reached through, and what it was. A `contentHash` in the
/// identity that is a full anchor must be reproduced by the bytes that are read. Without an
/// identity the folder is only walked from.
struct SourceRoot {
    QString path;
    std::optional<RootIdentity> identity;
};

/// Receives the bytes copied so far, on the copying thread.
using Progress = std::function<void(quint64 bytesDone)>;

/// Copies on the calling thread, which belongs to an executor. Without a root the source is opened
/// by its plain path. The copy gets `permissions`, less the user's mask. With `Durability::Later`
/// it is the caller who syncs the volume.
///
/// Throws `CopyError`, or `Cancelled` once `stop` asks for it; then the destination is as it was
/// and no temporary file is left. Only where the very last step fails, the sync of the folder, the
/// whole new file stands there already.
void copy(const QString &source, const QString &destination, const std::optional<SourceRoot> &root,
          const Progress &progress, std::stop_token stop, quint32 permissions = 0666,
          Durability durability = Durability::Synced);

} // namespace corvane::ImportCopier

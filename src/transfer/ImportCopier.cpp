#include "transfer/ImportCopier.h"

#include "document/Project.h"
#include "platform/BlockBuffer.h"
#include "platform/Cancellation.h"
#include "platform/Paths.h"
#include "platform/TextFormat.h"
#include "transfer/PipelinedHasher.h"
#include "trust/ContentHasher.h"
#include "trust/SampledDigest.h"

#include <cerrno>
#include <unistd.h>

namespace corvane::ImportCopier {

namespace {

/// Performs a file operation and converts its failure to the `CopyError` of this step.
template <typename Call, typename Convert> auto converting(Call call, Convert convert) {
    try {
        return call();
    } catch (const FileError &error) {
        throw convert(error.description());
    }
}

template <typename Call> auto reading(const QString &source, Call call) {
    return converting(
        call, [&](const QString &error) { return CopyError::sourceUnreadable(source, error); });
}

template <typename Call> auto writing(const QString &destination, Call call) {
    return converting(
        call, [&](const QString &error) { return CopyError::writeFailed(destination, error); });
}

/// Opens the root and verifies that it is the expected folder.
Descriptor openRoot(const QString &root, const std::optional<RootIdentity> &expected) {
    Descriptor folder = fileSystem().openFolder(root);
    if (expected) {
        const auto current = FolderIdentity::of(folder);
        if (!current || !expected->isSameFolder(*current)) {
            throw CopyError::sourceRootChanged(root);
        }
    }
    return folder;
}

/// Opens each component relative to its parent's descriptor without following links.
Descriptor openThroughRoot(const QString &path, const SourceRoot &root) {
    const QString source = paths::standardized(path);
    const QString rootPath = paths::standardized(root.path);
    if (!paths::isBelow(source, rootPath)) {
        throw CopyError::sourceOutsideScanRoot(source, rootPath);
    }
    QStringList names = source.mid(rootPath.size()).split(QLatin1Char('/'), Qt::SkipEmptyParts);
    const QString fileName = names.takeLast();
    if (!root.folder->isOpen()) {
        *root.folder = openRoot(rootPath, root.identity);
    }
    Descriptor inner;
    for (const QString &name : std::as_const(names)) {
        inner = fileSystem().openFolderAt(inner.isOpen() ? inner : *root.folder, name);
    }
    return fileSystem().openFileAt(inner.isOpen() ? inner : *root.folder, fileName);
}

/// Throws unless the root's path still leads to the folder that was read from.
void checkRootAgain(const SourceRoot &root) {
    const auto found = fileSystem().targetStatus(root.path);
    const FileStatus opened = fileSystem().status(*root.folder);
    if (!found || found->device != opened.device || found->inode != opened.inode) {
        throw CopyError::sourceRootChanged(root.path);
    }
}

Descriptor openSource(const QString &source, const std::optional<SourceRoot> &root) {
    return reading(source, [&] {
        Descriptor file = root ? openThroughRoot(source, *root)
                               : fileSystem().openForReading(source, FileSystem::Links::Refuse);
        if (fileSystem().status(file).type != FileType::Regular) {
            throw CopyError::sourceNotARegularFile(source);
        }
        return file;
    });
}

std::unique_ptr<TemporaryFile> createTemporary(const Destination &destination,
                                               const Options &options) {
    // Scans skip hidden names.
    const QString name = temporaryName(QStringLiteral(".tmp."), paths::extension(destination.name));
    return converting(
        [&] {
            return std::make_unique<TemporaryFile>(
                destination.folder, name, options.isPrivate ? 0600 : 0666, options.durability);
        },
        [&](const QString &) {
            return CopyError::destinationUnwritable(destination.path(),
                                                    QStringLiteral("could not create tmp file"));
        });
}

/// Parameters of a copy that its steps share.
struct Transfer {
    const QString &source;
    const QString &destination; ///< for messages
    const Progress &progress;
    const std::stop_token &stop;
};

/// Computes what the copied bytes have to match, or what identifies them.
class CopiedBytes {
  public:
    CopiedBytes(const std::optional<SourceRoot> &root, const Options &options, qint64 size) {
        const bool hasAnchor = root && root->identity && root->identity->contentHash;
        m_expected =
            hasAnchor ? ContentHasher::parseFullAnchor(*root->identity->contentHash) : std::nullopt;
        if (options.isIdentified) {
            m_sampled.emplace(size, QByteArray());
        }
        if (m_expected || m_sampled) {
            m_salt = m_expected ? m_expected->salt : ContentHasher::randomSalt();
            m_hasher.emplace(m_salt);
        } else {
            m_ownBlock.emplace();
        }
    }

    char *nextBlock() { return m_hasher ? m_hasher->nextBlock() : m_ownBlock->data(); }
    void take(const char *block, qint64 count) {
        if (m_sampled) {
            m_sampled->update(block, count);
        }
        if (m_hasher) {
            m_hasher->hashBlock(count);
        }
    }
    /// Throws if the bytes are not the expected ones. Call it once, last.
    void finish(const QString &source, UnplacedCopy &copy) {
        const QString digest = m_hasher ? m_hasher->finalizeDigest() : QString();
        if (m_expected && digest != m_expected->expectedDigest) {
            throw CopyError::sourceContentChanged(source);
        }
        if (m_sampled) {
            copy.anchor = ContentHasher::fullAnchor(m_salt, digest);
            copy.duplicateKey = m_sampled->finalizeDigest();
        }
    }

  private:
    std::optional<ContentHasher::FullAnchor> m_expected;
    QByteArray m_salt;
    std::optional<PipelinedHasher> m_hasher;
    std::optional<StreamingSampledDigest> m_sampled;
    std::optional<BlockBuffer> m_ownBlock;
};

/// Reads all bytes and writes them unless `into` is nullptr. Each is read once, so the bytes
/// written are the bytes hashed.
void transferBytes(const Transfer &transfer, const Descriptor &from, TemporaryFile *into,
                   CopiedBytes &bytes) {
    throwIfStopRequested(transfer.stop);
    for (quint64 bytesDone = 0;;) {
        char *block = bytes.nextBlock();
        const qint64 count = reading(
            transfer.source, [&] { return fileSystem().read(from, block, BlockBuffer::kSize); });
        if (count == 0) {
            return;
        }
        bytes.take(block, count);
        if (into) {
            writing(transfer.destination, [&] { into->write(block, count); });
        }
        bytesDone += quint64(count);
        if (transfer.progress) {
            transfer.progress(bytesDone);
        }
        throwIfStopRequested(transfer.stop);
    }
}

/// Makes a private copy of the source's bytes, as of one moment, without writing them. Returns
/// false if the file system can't do that; throws if a written copy doesn't fit.
bool sharesBytes(const Transfer &transfer, const Descriptor &from, const Destination &destination,
                 const TemporaryFile &into, qint64 size) {
    if (fileSystem().shareBytes(from, into.descriptor())) {
        return true;
    }
    const qint64 available = writing(transfer.destination, [&] {
        return fileSystem().availableBytes(destination.folder.anchoredPath());
    });
    if (size > available) {
        throw CopyError::destinationFull(destination, size, available);
    }
    return false;
}

} // namespace

CopyError CopyError::sourceUnreadable(const QString &path, const QString &error) {
    return {Kind::sourceUnreadable,
            QStringLiteral("Cannot read %1: %2").arg(paths::lastComponent(path), error)};
}

CopyError CopyError::sourceNotARegularFile(const QString &path) {
    return {Kind::sourceNotARegularFile,
            QStringLiteral("%1 is a symbolic link or other special file, refusing to read it: %2")
                .arg(paths::lastComponent(path), path)};
}

CopyError CopyError::destinationUnwritable(const QString &path, const QString &error) {
    return {Kind::destinationUnwritable,
            QStringLiteral("Cannot write to %1: %2").arg(paths::lastComponent(path), error)};
}

CopyError CopyError::writeFailed(const QString &path, const QString &error) {
    return {Kind::writeFailed,
            QStringLiteral("Write failed for %1: %2").arg(paths::lastComponent(path), error)};
}

CopyError CopyError::renameFailed(const QString &path, const QString &error) {
    return {Kind::renameFailed,
            QStringLiteral("Rename failed for %1: %2").arg(paths::lastComponent(path), error)};
}

CopyError CopyError::destinationIsNotAFile(const QString &path) {
    return {
        Kind::destinationIsNotAFile,
        QStringLiteral("Something that isn't a file is already at %1. Rename it or pick another "
                       "folder. Nothing was deleted.")
            .arg(path)};
}

CopyError CopyError::destinationTaken(const QString &path) {
    return {Kind::destinationTaken,
            QStringLiteral("Another file appeared at %1 during the copy. It was kept, and nothing "
                           "was copied. Try again.")
                .arg(path)};
}

CopyError CopyError::destinationFull(const Destination &destination, qint64 needed,
                                     qint64 available) {
    return {Kind::destinationFull,
            QStringLiteral("the private copy of the source needs %1 in the folder %2, where %3 are "
                           "free. Make room there, then try again.")
                .arg(formattedByteCount(quint64(needed)), destination.folder.path(),
                     formattedByteCount(quint64(available)))};
}

CopyError CopyError::sourceOutsideScanRoot(const QString &path, const QString &root) {
    return {Kind::sourceOutsideScanRoot,
            QStringLiteral("%1 is not inside the scanned folder (%2), refusing to read it: %3")
                .arg(paths::lastComponent(path), root, path)};
}

CopyError CopyError::sourceRootChanged(const QString &path) {
    return {
        Kind::sourceRootChanged,
        QStringLiteral("The folder %1 changed after it was scanned and no longer matches what was "
                       "previewed, refusing to read from it: %2. Re-scan and try again.")
            .arg(paths::lastComponent(path), path)};
}

CopyError CopyError::sourceContentChanged(const QString &path) {
    return {
        Kind::sourceContentChanged,
        QStringLiteral("%1's contents changed since it was authorized, refusing to use what was "
                       "just read: %2. Re-import or relink it, then try again.")
            .arg(paths::lastComponent(path), path)};
}

QString temporaryName(const QString &prefix, const QString &extension) {
    return QStringLiteral("%1%2.%3.%4")
        .arg(prefix, QString::number(::getpid()), newIdentifier(), extension);
}

UnplacedCopy::UnplacedCopy(std::unique_ptr<TemporaryFile> file, FileStatus source)
    : m_file(std::move(file)), m_source(source) {}

void UnplacedCopy::place(const QString &name, Placing placing) {
    const OpenFolder &folder = m_file->folder();
    const QString path = paths::joined(folder.path(), name);
    const auto existing = fileSystem().linkStatusAt(folder.descriptor(), name);
    if (existing && existing->type != FileType::Regular) {
        throw CopyError::destinationIsNotAFile(path);
    }
    try {
        m_file->commit(name, placing);
    } catch (const FileError &error) {
        throw error.code() == EEXIST ? CopyError::destinationTaken(path)
                                     : CopyError::renameFailed(path, error.description());
    }
}

UnplacedCopy copyUnplaced(const QString &source, const Destination &destination,
                          const std::optional<SourceRoot> &root, const Progress &progress,
                          std::stop_token stop, const Options &options) {
    const Descriptor from = openSource(source, root);
    auto temporary = createTemporary(destination, options);
    const FileStatus status = reading(source, [&] { return fileSystem().status(from); });
    CopiedBytes bytes(root, options, status.size);
    const QString path = destination.path();
    const Transfer transfer{source, path, progress, stop};
    if (options.isPrivate && sharesBytes(transfer, from, destination, *temporary, status.size)) {
        const Descriptor shared = writing(path, [&] {
            return fileSystem().openFileAt(destination.folder.descriptor(), temporary->name());
        });
        transferBytes(transfer, shared, nullptr, bytes);
    } else {
        transferBytes(transfer, from, temporary.get(), bytes);
    }
    writing(path, [&] { temporary->finish(); });
    UnplacedCopy copy(std::move(temporary), status);
    bytes.finish(source, copy);
    if (root) {
        checkRootAgain(*root);
    }
    return copy;
}

void copy(const QString &source, const Destination &destination,
          const std::optional<SourceRoot> &root, const Progress &progress, std::stop_token stop,
          const Options &options) {
    copyUnplaced(source, destination, root, progress, std::move(stop), options)
        .place(destination.name, destination.placing);
}

} // namespace corvane::ImportCopier

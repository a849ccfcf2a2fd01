#include "transfer/ImportCopier.h"

#include "document/Project.h"
#include "platform/BlockBuffer.h"
#include "platform/Cancellation.h"
#include "platform/Paths.h"
#include "transfer/PipelinedHasher.h"
#include "trust/ContentHasher.h"
#include "trust/PathSafety.h"

#include <algorithm>
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
    Descriptor folder = openRoot(rootPath, root.identity);
    for (const QString &name : std::as_const(names)) {
        folder = fileSystem().openFolderAt(folder, name);
    }
    return fileSystem().openFileAt(folder, fileName);
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

TemporaryFile createTemporary(const QString &destination, quint32 permissions,
                              Durability durability) {
    // Scans skip hidden names.
    const QString name = temporaryName(QStringLiteral(".tmp."), paths::extension(destination));
    const QString path = paths::joined(paths::parentFolder(destination), name);
    return converting([&] { return TemporaryFile(path, permissions, durability); },
                      [&](const QString &) {
                          return CopyError::destinationUnwritable(
                              destination, QStringLiteral("could not create tmp file"));
                      });
}

/// Parameters of a copy that its steps share.
struct Transfer {
    const QString &source;
    const QString &destination;
    const Progress &progress;
    const std::stop_token &stop;
};

/// Copies all bytes. Each is read once, so the bytes written are the bytes hashed.
void transferBytes(const Transfer &transfer, const Descriptor &from, TemporaryFile &into,
                   PipelinedHasher *hasher) {
    std::optional<BlockBuffer> ownBlock;
    if (!hasher) {
        ownBlock.emplace();
    }
    throwIfStopRequested(transfer.stop);
    for (quint64 bytesDone = 0;;) {
        char *block = hasher ? hasher->nextBlock() : ownBlock->data();
        const qint64 count = reading(
            transfer.source, [&] { return fileSystem().read(from, block, BlockBuffer::kSize); });
        if (count == 0) {
            return;
        }
        if (hasher) {
            hasher->hashBlock(count);
        }
        writing(transfer.destination, [&] { into.write(block, count); });
        bytesDone += quint64(count);
        if (transfer.progress) {
            transfer.progress(bytesDone);
        }
        throwIfStopRequested(transfer.stop);
    }
}

std::optional<ContentHasher::FullAnchor> anchorToReproduce(const std::optional<SourceRoot> &root) {
    const bool hasAnchor = root && root->identity && root->identity->contentHash;
    return hasAnchor ? ContentHasher::parseFullAnchor(*root->identity->contentHash) : std::nullopt;
}

/// Renames the complete file to the destination. Replaces only a regular file.
void commit(TemporaryFile &temporary, const QString &destination) {
    const auto existing = PathSafety::fileType(destination);
    if (existing && *existing != FileType::Regular) {
        throw CopyError::destinationIsNotAFile(destination);
    }
    converting([&] { temporary.commit(destination); },
               [&](const QString &error) { return CopyError::renameFailed(destination, error); });
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

void copy(const QString &source, const QString &destination, const std::optional<SourceRoot> &root,
          const Progress &progress, std::stop_token stop, quint32 permissions,
          Durability durability) {
    converting(
        [&] { fileSystem().createFolders(paths::parentFolder(destination)); },
        [&](const QString &error) { return CopyError::destinationUnwritable(destination, error); });
    Descriptor from = openSource(source, root);
    TemporaryFile temporary = createTemporary(destination, permissions, durability);
    const auto anchor = anchorToReproduce(root);
    std::optional<PipelinedHasher> hasher;
    if (anchor) {
        hasher.emplace(anchor->salt);
    }
    transferBytes({source, destination, progress, stop}, from, temporary,
                  hasher ? &*hasher : nullptr);
    writing(destination, [&] { temporary.finish(); });
    if (hasher && hasher->finalizeDigest() != anchor->expectedDigest) {
        throw CopyError::sourceContentChanged(source);
    }
    commit(temporary, destination);
}

} // namespace corvane::ImportCopier

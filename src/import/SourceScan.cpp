#include "import/SourceScan.h"

#include "import/SidecarIndex.h"
#include "platform/Cancellation.h"
#include "platform/Paths.h"
#include "trust/PathSafety.h"

#include <QSet>

#include <algorithm>

namespace corvane {

namespace {

bool isSkippedFolder(const QString &name) {
    return name == QLatin1String(".git") || name == QLatin1String("node_modules");
}

/// The listing of a folder, read once for the walk and for pairing videos with sidecars.
struct FolderListing {
    QList<DirectoryEntry> entries; ///< without hidden names, sorted by name
    SidecarIndex sidecars;
};

/// Collects the videos of one scan. Descends only into entries that are folders themselves, not
/// links to folders, so that every file found is inside its root.
class SourceScanner {
  public:
    SourceScanner(bool recursive, std::stop_token stop)
        : m_recursive(recursive), m_stop(std::move(stop)) {}

    void scanSource(const QString &source);
    ScanResult result() &&;

  private:
    const std::optional<ScanRoot> &rootAt(const QString &folder);
    std::optional<FolderListing> listFolder(const QString &folder);
    void walk(const QString &folder);
    void visit(const QString &folder, const DirectoryEntry &entry, const SidecarIndex &sidecars);
    void scanSingleFile(const QString &folder, const QString &name);
    void scanFile(const QString &folder, const QString &name, const SidecarIndex &sidecars);
    void addUnreadable(const QString &path);
    void leaveOutNonMedia(const QString &folder, const QString &name);

    bool m_recursive;
    std::stop_token m_stop;
    ScanRoot m_root; ///< of the current source
    ScanResult m_result;
    QHash<QString, std::optional<ScanRoot>> m_roots;
    /// By folder, for sources that are single files; often many of them share a folder.
    QHash<QString, SidecarIndex> m_sidecarsBesideFiles;
    /// Counted as left out at the end unless they were paired.
    QStringList m_possibleSidecars;
    QSet<QString> m_pairedSidecars;
};

void SourceScanner::scanSource(const QString &source) {
    throwIfStopRequested(m_stop);
    const QString path = paths::standardized(source);
    const auto target = fileSystem().targetStatus(path);
    const bool isFolder = target && target->type == FileType::Directory;
    const QString folder = isFolder ? path : paths::parentFolder(path);
    const auto &root = rootAt(folder);
    if (!root) {
        addUnreadable(path);
        return;
    }
    m_root = *root;
    if (isFolder) {
        walk(folder);
    } else {
        scanSingleFile(folder, paths::lastComponent(path));
    }
}

ScanResult SourceScanner::result() && {
    for (const QString &path : std::as_const(m_possibleSidecars)) {
        m_result.leftOut.notMedia += m_pairedSidecars.contains(path) ? 0 : 1;
    }
    return std::move(m_result);
}

const std::optional<ScanRoot> &SourceScanner::rootAt(const QString &folder) {
    auto known = m_roots.find(folder);
    if (known == m_roots.end()) {
        const auto identity = PathSafety::folderIdentity(folder);
        known = m_roots.insert(folder, identity ? std::optional(ScanRoot{folder, *identity})
                                                : std::nullopt);
    }
    return *known;
}

std::optional<FolderListing> SourceScanner::listFolder(const QString &folder) {
    FolderListing listing;
    try {
        listing.entries = fileSystem().list(folder);
    } catch (const FileError &error) {
        m_result.unreadable.append({folder, error.description()});
        return std::nullopt;
    }
    listing.entries.removeIf(
        [](const DirectoryEntry &entry) { return entry.name.startsWith(QLatin1Char('.')); });
    std::ranges::sort(listing.entries, {}, &DirectoryEntry::name);
    for (DirectoryEntry &entry : listing.entries) {
        if (!entry.isTypeKnown && entry.hasValidName) {
            const auto status = fileSystem().linkStatus(paths::joined(folder, entry.name));
            entry.isTypeKnown = status.has_value();
            entry.type = status ? status->type : FileType::Other;
        }
        if (entry.hasValidName && entry.type == FileType::Regular) {
            listing.sidecars.add(entry.name);
        }
    }
    return listing;
}

void SourceScanner::walk(const QString &folder) {
    const auto listing = listFolder(folder);
    if (!listing) {
        ++m_result.leftOut.unreadable;
        return;
    }
    // Listing follows a link that replaced the folder after it was visited.
    if (folder != m_root.url && PathSafety::fileType(folder) != FileType::Directory) {
        addUnreadable(folder);
        return;
    }
    for (const DirectoryEntry &entry : listing->entries) {
        throwIfStopRequested(m_stop);
        visit(folder, entry, listing->sidecars);
    }
}

void SourceScanner::visit(const QString &folder, const DirectoryEntry &entry,
                          const SidecarIndex &sidecars) {
    const bool isFolder = entry.isTypeKnown && entry.type == FileType::Directory;
    if (isFolder && (!m_recursive || isSkippedFolder(entry.name))) {
        return;
    }
    if (!entry.hasValidName) {
        ++m_result.leftOut.invalidNames;
    } else if (isFolder) {
        walk(paths::joined(folder, entry.name));
    } else if (!entry.isTypeKnown) {
        addUnreadable(paths::joined(folder, entry.name));
    } else if (entry.type == FileType::SymbolicLink) {
        ++m_result.leftOut.symbolicLinks;
    } else if (entry.type == FileType::Regular && PathSafety::isMediaFile(entry.name)) {
        scanFile(folder, entry.name, sidecars);
    } else {
        leaveOutNonMedia(folder, entry.name);
    }
}

/// A video has no sidecar if its folder cannot be listed.
void SourceScanner::scanSingleFile(const QString &folder, const QString &name) {
    const auto status = fileSystem().linkStatus(paths::joined(folder, name));
    if (status && status->type == FileType::Regular && !PathSafety::isMediaFile(name)) {
        leaveOutNonMedia(folder, name);
        return;
    }
    auto known = m_sidecarsBesideFiles.constFind(folder);
    if (known == m_sidecarsBesideFiles.cend()) {
        known = m_sidecarsBesideFiles.insert(folder,
                                             listFolder(folder).value_or(FolderListing()).sidecars);
    }
    scanFile(folder, name, *known);
}

/// Adds a file with the name of a media file, unless it is not a regular file.
void SourceScanner::scanFile(const QString &folder, const QString &name,
                             const SidecarIndex &sidecars) {
    const QString path = paths::joined(folder, name);
    const auto status = fileSystem().linkStatus(path);
    if (!status) {
        addUnreadable(path);
    } else if (status->type == FileType::SymbolicLink) {
        ++m_result.leftOut.symbolicLinks;
    } else if (status->type != FileType::Regular) {
        leaveOutNonMedia(folder, name);
    } else {
        ScannedVideo video{.id = newIdentifier(),
                           .url = path,
                           .fileSizeBytes = quint64(status->size),
                           .modified = status->modified,
                           .scanRoot = m_root};
        if (const auto sidecar = sidecars.find(paths::split(name).stem)) {
            video.sidecarURL = paths::joined(folder, sidecar->name);
            video.sidecarType = sidecar->type;
            const auto sidecarStatus = fileSystem().linkStatus(*video.sidecarURL);
            video.sidecarModified =
                sidecarStatus ? std::optional(sidecarStatus->modified) : std::nullopt;
            m_pairedSidecars.insert(*video.sidecarURL);
        }
        m_result.videos.append(std::move(video));
    }
}

void SourceScanner::addUnreadable(const QString &path) {
    ++m_result.leftOut.unreadable;
    QString error = QStringLiteral("it changed during the scan");
    try {
        (void)fileSystem().openForReading(path, FileSystem::Links::Refuse);
    } catch (const FileError &failure) {
        error = failure.description();
    }
    m_result.unreadable.append({path, error});
}

void SourceScanner::leaveOutNonMedia(const QString &folder, const QString &name) {
    if (SidecarIndex::isSidecarName(name)) {
        m_possibleSidecars.append(paths::joined(folder, name));
    } else {
        ++m_result.leftOut.notMedia;
    }
}

} // namespace

ScanResult scan(const QStringList &sources, bool recursive, std::stop_token stop) {
    SourceScanner scanner(recursive, std::move(stop));
    for (const QString &source : sources) {
        scanner.scanSource(source);
    }
    return std::move(scanner).result();
}

} // namespace corvane

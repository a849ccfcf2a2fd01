#include "import/ImportPreview.h"

#include "platform/FileSystem.h"
#include "platform/Paths.h"
#include "platform/VolumeLimits.h"

#include <QHash>

namespace corvane {

namespace {

constexpr int kFirstNumber = 2;

/// The name is valid on its volume already, but may become too long.
QString numbered(const QString &name, int number) {
    return VolumeLimits().fittedName(name, QStringLiteral(" (%1)").arg(number));
}

/// Makes names unique as "name (2)", with case. Remembers the last number of each name, so that
/// reserving takes constant time even for thousands of equal names. (Deliveries number differently,
/// see `NameReserver` in transfer.)
class UniqueNames {
  public:
    UniqueNames(QSet<QString> taken, const VolumeLimits &limits)
        : m_taken(std::move(taken)), m_limits(limits) {}

    /// Returns the name, fitted to the limits, if it is free, else with the first free number.
    QString reserve(const QString &wanted) {
        const QString name = m_limits.fittedName(wanted);
        QString reserved = name;
        if (m_taken.contains(name)) {
            int &next = m_nextNumber.insert(name, m_nextNumber.value(name, kFirstNumber)).value();
            do {
                reserved = numbered(name, next++);
            } while (m_taken.contains(reserved));
        }
        m_taken.insert(reserved);
        return reserved;
    }

  private:
    QSet<QString> m_taken;
    VolumeLimits m_limits;
    QHash<QString, int> m_nextNumber;
};

QSet<QString> namesIn(const QString &folder) {
    QSet<QString> names;
    try {
        const auto entries = fileSystem().list(folder);
        for (const DirectoryEntry &entry : entries) {
            names.insert(entry.name);
        }
    } catch (const FileError &) {
        // Usually it does not exist yet. Other failures recur when files are copied.
    }
    return names;
}

QSet<QString> contentHashes(const Project &project) {
    QSet<QString> hashes;
    for (const VideoItem &video : project.videos) {
        if (!video->contentHash.value_or(QString()).isEmpty()) {
            hashes.insert(*video->contentHash);
        }
    }
    return hashes;
}

ImportPreviewRow makeRow(const ScannedVideo &video) {
    ImportPreviewRow row{.id = video.id,
                         .source = video,
                         .proposedName = paths::lastComponent(video.url),
                         .included = true};
    if (video.sidecarURL) {
        row.proposedSidecarName = paths::lastComponent(*video.sidecarURL);
    }
    return row;
}

void reserveNames(ImportPreviewRow &row, UniqueNames &names) {
    const QString ownName = row.proposedName;
    row.proposedName = names.reserve(ownName);
    const bool isRenamed = row.proposedName != ownName;
    row.status = isRenamed ? CollisionStatus::renamed : CollisionStatus::ok;
    if (row.proposedSidecarName) {
        row.proposedSidecarName =
            names.reserve(sidecarName(*row.proposedSidecarName, paths::split(ownName).stem,
                                      paths::split(row.proposedName).stem));
    }
}

} // namespace

QList<ImportPreviewRow> buildPreviewRows(const QList<ScannedVideo> &scannedVideos,
                                         const std::optional<Project> &project,
                                         SourceImportMode mode,
                                         const std::optional<QString> &destinationFolder) {
    const QSet<QString> known = project ? contentHashes(*project) : QSet<QString>();
    const bool isCopied = mode == SourceImportMode::copied;
    const bool hasFolder = isCopied && destinationFolder;
    UniqueNames names(hasFolder ? namesIn(*destinationFolder) : QSet<QString>(),
                      hasFolder ? VolumeLimits::of(*destinationFolder) : VolumeLimits());
    QList<ImportPreviewRow> rows;
    rows.reserve(scannedVideos.size());
    for (const ScannedVideo &video : scannedVideos) {
        ImportPreviewRow row = makeRow(video);
        if (video.contentHash && known.contains(*video.contentHash)) {
            row.status = CollisionStatus::alreadyImported;
            row.included = false;
        } else if (isCopied) {
            reserveNames(row, names);
        }
        rows.append(std::move(row));
    }
    return rows;
}

QString uniqueName(const QString &name, const QSet<QString> &taken) {
    for (int number = kFirstNumber;; ++number) {
        const QString candidate = numbered(name, number);
        if (!taken.contains(candidate)) {
            return candidate;
        }
    }
}

QString sidecarName(const QString &sidecarPath, const QString &videoStem,
                    const QString &newVideoStem) {
    const auto [stem, extension] = paths::split(paths::lastComponent(sidecarPath));
    const bool follows = stem.startsWith(videoStem);
    return newVideoStem + (follows ? stem.mid(videoStem.size()) : QString()) + extension;
}

} // namespace corvane

#include "delivery/export/ExportPlanning.h"

#include "platform/FileSystem.h"
#include "platform/Paths.h"
#include "transfer/NameReserver.h"

#include <algorithm>

namespace corvane {

namespace {

/// A selected clip or subclip, in the planned project.
struct PlannedItem {
    const VideoRecord *parent = nullptr;
    const Subclip *subclip = nullptr; ///< nullptr for the whole clip

    ExportRowKind kind() const {
        return subclip ? ExportRowKind::subclip : ExportRowKind::wholeClip;
    }
    bool isExported() const {
        return (subclip ? subclip->exportedAt : parent->exportedAt).has_value();
    }
    std::tuple<const QString &, ExportRowKind, int> order() const {
        return {parent->id, kind(), subclip ? subclip->creationIndex : 0};
    }
};

/// Returns the selected items that the include switches admit, in document order.
QList<PlannedItem> admittedItems(const Project &project, const ExportChoices &choices) {
    QList<PlannedItem> items;
    for (const VideoItem &video : project.videos) {
        if (choices.includeWholeVideoSelects && video->selectedForExport) {
            items.append({.parent = &*video});
        }
        for (const Subclip &subclip : video->subclips) {
            if (choices.includeSubclipSelects && subclip.selectedForExport) {
                items.append({.parent = &*video, .subclip = &subclip});
            }
        }
    }
    return items;
}

void reserveFolders(NameReserver &names, const QString &outputFolder) {
    QList<DirectoryEntry> entries;
    try {
        entries = fileSystem().list(outputFolder);
    } catch (const FileError &) {
        return; // the run creates the folder or reports why it cannot
    }
    for (const DirectoryEntry &entry : entries) {
        const auto type = [&]() -> std::optional<FileType> {
            if (entry.isTypeKnown) {
                return entry.type;
            }
            const auto status = fileSystem().linkStatus(paths::joined(outputFolder, entry.name));
            return status ? std::optional(status->type) : std::nullopt;
        }();
        if (entry.hasValidName && type == FileType::Directory) {
            names.reserveName(entry.name);
        }
    }
}

/// Turns the items of one plan into rows, in order.
class RowPlanner {
  public:
    RowPlanner(const Project &project, const ExportChoices &choices, bool includeFolderContents)
        : m_project(project),
          m_choices(choices),
          m_folder(*choices.outputFolder),
          m_names(choices.volumeLimits) {
        if (includeFolderContents) {
            reserveFolders(m_names, m_folder);
        }
    }

    ExportRowJob nextRow(const PlannedItem &item);

  private:
    QString takeName(const PlannedItem &item);
    void addHDCopy(ExportRowJob &row, const QString &stem);
    void addSidecar(ExportRowJob &row, const PlannedItem &item, const QString &stem);

    const Project &m_project;
    const ExportChoices &m_choices;
    QString m_folder;
    NameReserver m_names;
    int m_sequence = 0;
};

ExportRowJob RowPlanner::nextRow(const PlannedItem &item) {
    const QString name = takeName(item);
    const QString stem = paths::split(name).stem;
    const QString clip = item.parent->id;
    ExportRowJob row{
        .id = exportRowId(clip),
        .kind = item.kind(),
        .sourcePath = resolvedAgainstProject(item.parent->sourcePath, m_project.filePath),
        .destinationPath = paths::joined(m_folder, name),
        .parentVideoId = clip,
        .originalFilename = item.parent->fileName,
        .proposedName = name,
    };
    if (m_choices.outputMode == OutputMode::primaryAndHd) {
        addHDCopy(row, stem);
    }
    if (item.subclip) {
        const ClipRange range = widenedRange(*item.subclip, m_choices.subclipHandleSeconds,
                                             item.parent->durationSeconds);
        row.id = exportRowId(clip, item.subclip->id);
        row.subclipId = item.subclip->id;
        row.inSeconds = range.inSeconds;
        row.outSeconds = range.outSeconds;
    } else {
        addSidecar(row, item, stem);
    }
    return row;
}

QString RowPlanner::takeName(const PlannedItem &item) {
    const bool isHDOnly = m_choices.outputMode == OutputMode::hdOnly;
    ExportNameParts parts{
        .kind = item.kind(),
        .mode = isHDOnly ? ExportBatch::Mode::accurateTranscode : m_choices.mode,
        .originalFilename = item.parent->fileName,
        .options = m_choices.naming,
        .shootDate = m_project.shootDate,
        .sequence = ++m_sequence,
    };
    if (item.subclip) {
        parts.subclipLabel = item.subclip->label;
        parts.subclipIndex = item.subclip->creationIndex;
    }
    return m_names.take(buildExportName(parts));
}

/// All HD copies share a folder and an extension, so the stems of the outputs must differ.
void RowPlanner::addHDCopy(ExportRowJob &row, const QString &stem) {
    const QString name = stem + QStringLiteral(".mp4");
    m_names.reserveStem(stem);
    m_names.reserveName(name);
    row.hdDestinationPath = paths::joined(paths::joined(m_folder, QStringLiteral("HD")), name);
}

/// The sidecar has the stem of its clip, which pairs the two.
void RowPlanner::addSidecar(ExportRowJob &row, const PlannedItem &item, const QString &stem) {
    const QString source = item.parent->sidecarPath.value_or(QString());
    if (source.isEmpty()) {
        return;
    }
    const QString extension = paths::extension(source);
    const QString name = extension.isEmpty() ? stem : stem + QLatin1Char('.') + extension;
    row.sidecarSource = resolvedAgainstProject(source, m_project.filePath);
    row.sidecarDestination = paths::joined(m_folder, m_names.takeBesideStem(name));
}

} // namespace

ExportChoices defaultExportChoices(const Project &project) {
    ExportChoices choices;
    choices.outputFolder =
        paths::joined(projectFolder(project.filePath), QStringLiteral("selects"));
    applyPreset(choices.naming, choices.namingPreset, project.displayName());
    return choices;
}

QList<ExportRowJob> planRows(const Project &project, const ExportChoices &choices,
                             bool includeFolderContents) {
    if (!choices.outputFolder) {
        return {};
    }
    QList<PlannedItem> items = admittedItems(project, choices);
    items.removeIf(
        [&choices](const PlannedItem &item) { return choices.exportNewOnly && item.isExported(); });
    std::ranges::stable_sort(items, {}, &PlannedItem::order);
    RowPlanner planner(project, choices, includeFolderContents);
    QList<ExportRowJob> rows;
    rows.reserve(items.size());
    for (const PlannedItem &item : items) {
        rows.append(planner.nextRow(item));
    }
    return rows;
}

int countSelects(const Project &project, const ExportChoices &choices) {
    return int(admittedItems(project, choices).size());
}

} // namespace corvane

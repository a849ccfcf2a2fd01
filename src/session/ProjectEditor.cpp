#include "session/ProjectEditor.h"

#include "document/ProjectMigration.h"

#include <QSet>

#include <algorithm>
#include <limits>

namespace corvane {

namespace {

constexpr int kHighestRating = 5;

int clampedRating(int rating) {
    return std::clamp(rating, 0, kHighestRating);
}

/// -1 if the clip has no such subclip.
qsizetype indexOfSubclip(const VideoRecord &video, const QString &subclipId) {
    const auto found = std::ranges::find(video.subclips, subclipId, &Subclip::id);
    return found == video.subclips.end() ? -1 : found - video.subclips.begin();
}

int nextCreationIndex(const VideoRecord &video) {
    int highest = 0;
    for (const Subclip &subclip : video.subclips) {
        highest = std::max(highest, subclip.creationIndex);
    }
    return highest == std::numeric_limits<int>::max() ? highest : highest + 1;
}

/// Clip id to index, for edits of many clips. The first of two clips with the same id counts.
QHash<QString, qsizetype> indexesById(const Project &project) {
    QHash<QString, qsizetype> indexes;
    indexes.reserve(project.videos.size());
    for (qsizetype index = project.videos.size() - 1; index >= 0; --index) {
        indexes.insert(project.videos.at(index)->id, index);
    }
    return indexes;
}

void deselect(VideoRecord &video) {
    video.selectedForExport = false;
    video.exportedAt.reset();
}

/// Calls `change(video, subclipIds)` once for each clip that a key names.
template <typename Change>
void changeClipsOf(Project &project, const QList<SubclipKey> &keys, Change change) {
    QHash<QString, QSet<QString>> subclipIds;
    for (const SubclipKey &key : keys) {
        subclipIds[key.videoId].insert(key.subclipId);
    }
    for (qsizetype index = 0; index < project.videos.size(); ++index) {
        const auto found = subclipIds.constFind(project.videos.at(index)->id);
        if (found != subclipIds.cend()) {
            change(project.videos[index].edit(), *found);
        }
    }
}

} // namespace

ProjectEditor::ProjectEditor(Clock &clock, QObject *parent) : QObject(parent), m_clock(clock) {}

void ProjectEditor::setProject(std::optional<Project> project) {
    m_project = std::move(project);
    m_batchIndexes.clear();
    ++m_revision;
}

void ProjectEditor::clearHistory() {
    m_undoStack.clear();
    m_redoStack.clear();
    m_inUndoBatch = false;
    m_isReplayingHistory = false;
    m_nextSaveAllowsDecrease = false;
}

void ProjectEditor::edit(Undoable undoable, const ProjectChange &change) {
    if (!m_project) {
        return;
    }
    if (undoable == Undoable::Yes) {
        pushUndoState();
    }
    // Records are copy-on-write, so snapshots and running saves keep theirs.
    change(*m_project);
    m_project->updatedAt = m_clock.now();
    publishEdit();
}

void ProjectEditor::publishEdit() {
    ++m_revision;
    scheduleSave();
    if (m_inUndoBatch) {
        m_hasBatchEdits = true;
    } else {
        Q_EMIT projectChanged();
    }
}

const VideoRecord *ProjectEditor::video(const QString &id) const {
    const qsizetype index = m_project ? indexOfVideo(id) : -1;
    return index < 0 ? nullptr : &*m_project->videos.at(index);
}

bool ProjectEditor::hasSelects() const {
    m_selects.update(m_project ? m_project->videos : QList<VideoItem>());
    return !m_selects.isZero();
}

qsizetype ProjectEditor::indexOfVideo(const QString &id) const {
    if (!m_inUndoBatch) {
        return m_project->indexOfVideo(id);
    }
    if (m_batchIndexes.isEmpty()) {
        m_batchIndexes = indexesById(*m_project);
    }
    return m_batchIndexes.value(id, -1);
}

void ProjectEditor::editVideo(Undoable undoable, const QString &id, const VideoChange &change) {
    edit(undoable, [&](Project &project) {
        const qsizetype index = indexOfVideo(id);
        if (index >= 0) {
            change(project.videos[index].edit());
        }
    });
}

void ProjectEditor::editSubclip(Undoable undoable, const SubclipKey &key,
                                const SubclipChange &change) {
    edit(undoable, [&](Project &project) {
        const qsizetype index = indexOfVideo(key.videoId);
        const qsizetype subclipIndex =
            index < 0 ? -1 : indexOfSubclip(*project.videos.at(index), key.subclipId);
        if (subclipIndex >= 0) {
            VideoRecord &video = project.videos[index].edit();
            change(video, video.subclips[subclipIndex]);
        }
    });
}

void ProjectEditor::updateProject(Project project) {
    if (!m_project || m_project->id != project.id) {
        return;
    }
    m_project = std::move(project);
    m_batchIndexes.clear();
    publishEdit();
}

void ProjectEditor::autoReview(VideoRecord &video) const {
    if (!video.reviewed && ProjectMigration::hasReviewMarks(video)) {
        video.reviewed = true;
        video.reviewedAt = m_clock.now();
    }
}

void ProjectEditor::setRating(const QString &videoId, int rating) {
    editVideo(Undoable::Yes, videoId, [&](VideoRecord &video) {
        video.rating = clampedRating(rating);
        autoReview(video);
    });
}

void ProjectEditor::toggleFavorite(const QString &videoId) {
    editVideo(Undoable::Yes, videoId, [&](VideoRecord &video) {
        video.favorite = !video.favorite;
        autoReview(video);
    });
}

void ProjectEditor::toggleSelectedForExport(const QString &videoId) {
    editVideo(Undoable::Yes, videoId, [&](VideoRecord &video) {
        if (video.selectedForExport) {
            deselect(video);
        } else {
            video.selectedForExport = true;
        }
        autoReview(video);
    });
}

void ProjectEditor::toggleRejected(const QString &videoId) {
    editVideo(Undoable::Yes, videoId, [](VideoRecord &video) {
        video.rejected = !video.rejected;
        if (video.rejected) {
            deselect(video);
        }
    });
}

void ProjectEditor::toggleReviewed(const QString &videoId) {
    editVideo(Undoable::Yes, videoId, [&](VideoRecord &video) {
        video.reviewed = !video.reviewed;
        video.reviewedAt = video.reviewed ? std::optional(m_clock.now()) : std::nullopt;
    });
}

void ProjectEditor::setNotes(const QString &videoId, const QString &text) {
    editVideo(Undoable::No, videoId, [&](VideoRecord &video) {
        video.notes = text.isEmpty() ? std::nullopt : std::optional(text);
    });
}

void ProjectEditor::addTag(const QString &videoId, const QString &text) {
    const QString tag = text.trimmed();
    if (tag.isEmpty()) {
        return;
    }
    editVideo(Undoable::No, videoId, [&](VideoRecord &video) {
        if (!video.tags.contains(tag)) {
            video.tags.append(tag);
        }
    });
}

void ProjectEditor::removeTag(const QString &videoId, const QString &text) {
    editVideo(Undoable::No, videoId, [&](VideoRecord &video) { video.tags.removeAll(text); });
}

int ProjectEditor::setClipsSelected(const QStringList &videoIds, bool isSelected) {
    int changed = 0;
    edit(Undoable::No, [&](Project &project) {
        const auto indexes = indexesById(project);
        for (const QString &id : videoIds) {
            const qsizetype index = indexes.value(id, -1);
            if (index < 0 || project.videos.at(index)->selectedForExport == isSelected) {
                continue;
            }
            VideoRecord &video = project.videos[index].edit();
            if (isSelected) {
                video.selectedForExport = true;
                autoReview(video);
            } else {
                deselect(video);
            }
            ++changed;
        }
    });
    return changed;
}

QString ProjectEditor::addSubclip(const QString &videoId, double inSeconds, double outSeconds) {
    QString added;
    editVideo(Undoable::No, videoId, [&](VideoRecord &video) {
        added = newIdentifier();
        video.subclips.append({.id = added,
                               .sourceVideoId = videoId,
                               .inSeconds = inSeconds,
                               .outSeconds = outSeconds,
                               .selectedForExport = true,
                               .createdAt = m_clock.now(),
                               .creationIndex = nextCreationIndex(video)});
        autoReview(video);
    });
    return added;
}

void ProjectEditor::renameSubclip(const SubclipKey &key, const std::optional<QString> &text) {
    const QString label = text.value_or(QString()).trimmed();
    editSubclip(Undoable::No, key, [&](VideoRecord &, Subclip &subclip) {
        subclip.label = label.isEmpty() ? std::nullopt : std::optional(label);
    });
}

void ProjectEditor::setSubclipRating(const SubclipKey &key, int rating) {
    editSubclip(Undoable::Yes, key, [&](VideoRecord &video, Subclip &subclip) {
        subclip.rating = clampedRating(rating);
        autoReview(video);
    });
}

void ProjectEditor::toggleSubclipFavorite(const SubclipKey &key) {
    editSubclip(Undoable::Yes, key, [&](VideoRecord &video, Subclip &subclip) {
        subclip.favorite = !subclip.favorite;
        autoReview(video);
    });
}

void ProjectEditor::toggleSubclipSelected(const SubclipKey &key) {
    editSubclip(Undoable::Yes, key, [&](VideoRecord &video, Subclip &subclip) {
        subclip.selectedForExport = !subclip.selectedForExport;
        if (!subclip.selectedForExport) {
            subclip.exportedAt.reset();
        }
        autoReview(video);
    });
}

int ProjectEditor::setSubclipsSelected(const QList<SubclipKey> &keys, bool isSelected) {
    int changed = 0;
    const auto changeClip = [&](VideoRecord &video, const QSet<QString> &subclipIds) {
        for (Subclip &subclip : video.subclips) {
            if (subclip.selectedForExport == isSelected || !subclipIds.contains(subclip.id)) {
                continue;
            }
            subclip.selectedForExport = isSelected;
            if (isSelected) {
                autoReview(video);
            } else {
                subclip.exportedAt.reset();
            }
            ++changed;
        }
    };
    edit(Undoable::No, [&](Project &project) { changeClipsOf(project, keys, changeClip); });
    return changed;
}

void ProjectEditor::deleteSubclips(const QList<SubclipKey> &keys) {
    if (keys.isEmpty()) {
        return;
    }
    const auto removeFromClip = [](VideoRecord &video, const QSet<QString> &subclipIds) {
        video.subclips.removeIf(
            [&](const Subclip &subclip) { return subclipIds.contains(subclip.id); });
    };
    edit(Undoable::Yes, [&](Project &project) {
        m_nextSaveAllowsDecrease = true;
        changeClipsOf(project, keys, removeFromClip);
    });
}

void ProjectEditor::pushUndoState() {
    if (m_inUndoBatch || m_isReplayingHistory || !m_project) {
        return;
    }
    m_undoStack.append(*m_project);
    while (m_undoStack.size() > kUndoLimit) {
        m_undoStack.removeFirst();
    }
    m_redoStack.clear();
}

void ProjectEditor::replay(QList<Project> &from, QList<Project> &to) {
    if (from.isEmpty()) {
        return;
    }
    Project snapshot = from.takeLast();
    if (!m_project) {
        return;
    }
    to.append(*m_project);
    m_isReplayingHistory = true;
    m_nextSaveAllowsDecrease = true;
    snapshot.updatedAt = m_clock.now();
    updateProject(std::move(snapshot));
    m_isReplayingHistory = false;
}

ProjectEditor::UndoBatch::UndoBatch(ProjectEditor &editor)
    : m_editor(editor), m_isNested(editor.m_inUndoBatch) {
    m_editor.pushUndoState();
    m_editor.m_inUndoBatch = true;
}

ProjectEditor::UndoBatch::~UndoBatch() {
    m_editor.m_inUndoBatch = m_isNested;
    if (m_isNested) {
        return;
    }
    m_editor.m_batchIndexes.clear();
    if (std::exchange(m_editor.m_hasBatchEdits, false)) {
        Q_EMIT m_editor.projectChanged();
    }
}

} // namespace corvane

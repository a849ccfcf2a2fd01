// The operations of the store that change a project while it is reviewed, and its history.

#include "document/ProjectMigration.h"
#include "session/ProjectStore.h"

#include <QHash>

#include <algorithm>
#include <limits>

namespace corvane {

namespace {

constexpr int kHighestRating = 5;

int clampedRating(int rating) {
    return std::clamp(rating, 0, kHighestRating);
}

Subclip *subclipOf(VideoRecord &video, const QString &subclipId) {
    const auto found = std::ranges::find(video.subclips, subclipId, &Subclip::id);
    return found == video.subclips.end() ? nullptr : &*found;
}

bool holdsSubclip(const VideoRecord &video, const QString &subclipId) {
    return std::ranges::any_of(video.subclips,
                               [&](const Subclip &subclip) { return subclip.id == subclipId; });
}

int nextCreationIndex(const VideoRecord &video) {
    int highest = 0;
    for (const Subclip &subclip : video.subclips) {
        highest = std::max(highest, subclip.creationIndex);
    }
    return highest == std::numeric_limits<int>::max() ? highest : highest + 1;
}

/// Where each clip stands, for edits of many.
QHash<QString, qsizetype> indexesById(const Project &project) {
    QHash<QString, qsizetype> indexes;
    indexes.reserve(project.videos.size());
    for (qsizetype index = project.videos.size() - 1; index >= 0; --index) {
        indexes.insert(project.videos.at(index)->id, index); // of one id twice, the first counts
    }
    return indexes;
}

void deselect(VideoRecord &video) {
    video.selectedForExport = false;
    video.exportedAt.reset();
}

/// Calls `change(video, ids)` once for each clip that is named, with the subclips named of it.
template <typename Change>
void changeClipsOf(Project &project, const QList<SubclipKey> &keys, Change change) {
    QHash<QString, QSet<QString>> named;
    for (const SubclipKey &key : keys) {
        named[key.videoId].insert(key.subclipId);
    }
    for (qsizetype index = 0; index < project.videos.size(); ++index) {
        const auto found = named.constFind(project.videos.at(index)->id);
        if (found != named.cend()) {
            change(project.videos[index].edit(), *found);
        }
    }
}

void removeSubclips(Project &project, const QList<SubclipKey> &keys) {
    changeClipsOf(project, keys, [](VideoRecord &video, const QSet<QString> &doomed) {
        video.subclips.removeIf(
            [&](const Subclip &subclip) { return doomed.contains(subclip.id); });
    });
}

} // namespace

void ProjectStore::edit(Undoable undoable, const ProjectChange &change) {
    if (!m_project) {
        return;
    }
    if (undoable == Undoable::Yes) {
        pushUndoState();
    }
    // In place: what shares storage with the document, a snapshot or a save under way, keeps it.
    change(*m_project);
    m_project->updatedAt = m_clock.now();
    publishEdit();
}

void ProjectStore::publishEdit() {
    ++m_revision;
    setDirty(true);
    if (m_saver) {
        m_saver->schedule();
    }
    if (m_inUndoBatch) {
        m_batchChangedProject = true;
    } else {
        Q_EMIT projectChanged();
    }
}

/// A batch asks for many clips, so it makes a table at its first question.
const VideoRecord *ProjectStore::video(const QString &id) const {
    const qsizetype index = m_project ? indexOfVideo(id) : -1;
    return index < 0 ? nullptr : &*m_project->videos.at(index);
}

qsizetype ProjectStore::indexOfVideo(const QString &id) const {
    if (!m_inUndoBatch) {
        return m_project->indexOfVideo(id);
    }
    if (m_batchIndexes.isEmpty()) {
        m_batchIndexes = indexesById(*m_project);
    }
    return m_batchIndexes.value(id, -1);
}

void ProjectStore::editVideo(Undoable undoable, const QString &id, const VideoChange &change) {
    edit(undoable, [&](Project &project) {
        const qsizetype index = indexOfVideo(id);
        if (index >= 0) {
            change(project.videos[index].edit());
        }
    });
}

void ProjectStore::editSubclip(Undoable undoable, const SubclipKey &key,
                               const SubclipChange &change) {
    edit(undoable, [&](Project &project) {
        const qsizetype index = indexOfVideo(key.videoId);
        if (index >= 0 && holdsSubclip(*project.videos.at(index), key.subclipId)) {
            VideoRecord &video = project.videos[index].edit();
            change(video, *subclipOf(video, key.subclipId));
        }
    });
}

void ProjectStore::updateProject(Project project) {
    if (!m_project || m_project->id != project.id) {
        return;
    }
    m_project = std::move(project);
    m_batchIndexes.clear();
    publishEdit();
}

void ProjectStore::updateVideo(const QString &videoId, const VideoChange &change) {
    editVideo(Undoable::No, videoId, change);
}

void ProjectStore::autoReview(VideoRecord &video) const {
    if (!video.reviewed && ProjectMigration::hasReviewMarks(video)) {
        video.reviewed = true;
        video.reviewedAt = m_clock.now();
    }
}

void ProjectStore::setRating(const QString &videoId, int rating) {
    editVideo(Undoable::Yes, videoId, [&](VideoRecord &video) {
        video.rating = clampedRating(rating);
        autoReview(video);
    });
}

void ProjectStore::toggleFavorite(const QString &videoId) {
    editVideo(Undoable::Yes, videoId, [&](VideoRecord &video) {
        video.favorite = !video.favorite;
        autoReview(video);
    });
}

void ProjectStore::toggleSelectedForExport(const QString &videoId) {
    editVideo(Undoable::Yes, videoId, [&](VideoRecord &video) {
        if (video.selectedForExport) {
            deselect(video);
        } else {
            video.selectedForExport = true;
        }
        autoReview(video);
    });
}

void ProjectStore::toggleRejected(const QString &videoId) {
    editVideo(Undoable::Yes, videoId, [](VideoRecord &video) {
        video.rejected = !video.rejected;
        if (video.rejected) {
            deselect(video);
        }
    });
}

void ProjectStore::toggleReviewed(const QString &videoId) {
    editVideo(Undoable::Yes, videoId, [&](VideoRecord &video) {
        video.reviewed = !video.reviewed;
        video.reviewedAt = video.reviewed ? std::optional(m_clock.now()) : std::nullopt;
    });
}

void ProjectStore::setNotes(const QString &videoId, const QString &text) {
    editVideo(Undoable::No, videoId, [&](VideoRecord &video) {
        video.notes = text.isEmpty() ? std::nullopt : std::optional(text);
    });
}

void ProjectStore::addTag(const QString &videoId, const QString &text) {
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

void ProjectStore::removeTag(const QString &videoId, const QString &text) {
    editVideo(Undoable::No, videoId, [&](VideoRecord &video) { video.tags.removeAll(text); });
}

int ProjectStore::selectClips(const QStringList &videoIds) {
    return editSelection(videoIds, true);
}

int ProjectStore::deselectClips(const QStringList &videoIds) {
    return editSelection(videoIds, false);
}

int ProjectStore::editSelection(const QStringList &videoIds, bool select) {
    int changed = 0;
    edit(Undoable::No, [&](Project &project) {
        const auto indexes = indexesById(project);
        for (const QString &id : videoIds) {
            const qsizetype index = indexes.value(id, -1);
            if (index < 0 || project.videos.at(index)->selectedForExport == select) {
                continue;
            }
            VideoRecord &video = project.videos[index].edit();
            if (select) {
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

QString ProjectStore::addSubclip(const QString &videoId, double inSeconds, double outSeconds) {
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

void ProjectStore::renameSubclip(const SubclipKey &key, const std::optional<QString> &text) {
    const QString label = text.value_or(QString()).trimmed();
    editSubclip(Undoable::No, key, [&](VideoRecord &, Subclip &subclip) {
        subclip.label = label.isEmpty() ? std::nullopt : std::optional(label);
    });
}

void ProjectStore::setSubclipRating(const SubclipKey &key, int rating) {
    editSubclip(Undoable::Yes, key, [&](VideoRecord &video, Subclip &subclip) {
        subclip.rating = clampedRating(rating);
        autoReview(video);
    });
}

void ProjectStore::toggleSubclipFavorite(const SubclipKey &key) {
    editSubclip(Undoable::Yes, key, [&](VideoRecord &video, Subclip &subclip) {
        subclip.favorite = !subclip.favorite;
        autoReview(video);
    });
}

void ProjectStore::toggleSubclipSelected(const SubclipKey &key) {
    editSubclip(Undoable::Yes, key, [&](VideoRecord &video, Subclip &subclip) {
        subclip.selectedForExport = !subclip.selectedForExport;
        if (!subclip.selectedForExport) {
            subclip.exportedAt.reset();
        }
        autoReview(video);
    });
}

int ProjectStore::selectSubclips(const QList<SubclipKey> &keys) {
    return editSubclips(keys, true);
}

int ProjectStore::deselectSubclips(const QList<SubclipKey> &keys) {
    return editSubclips(keys, false);
}

int ProjectStore::editSubclips(const QList<SubclipKey> &keys, bool select) {
    int changed = 0;
    const auto changeClip = [&](VideoRecord &video, const QSet<QString> &named) {
        for (Subclip &subclip : video.subclips) {
            if (subclip.selectedForExport == select || !named.contains(subclip.id)) {
                continue;
            }
            subclip.selectedForExport = select;
            if (select) {
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

void ProjectStore::deleteSubclip(const SubclipKey &key) {
    edit(Undoable::Yes, [&](Project &project) {
        m_nextSaveAllowsDecrease = true;
        removeSubclips(project, {key});
    });
}

void ProjectStore::deleteSubclips(const QList<SubclipKey> &keys) {
    if (keys.isEmpty()) {
        return;
    }
    edit(Undoable::Yes, [&](Project &project) {
        m_nextSaveAllowsDecrease = true;
        removeSubclips(project, keys);
    });
}

void ProjectStore::pushUndoState() {
    if (m_inUndoBatch || m_isReplayingHistory || !m_project) {
        return;
    }
    m_undoStack.append(*m_project);
    while (m_undoStack.size() > kUndoLimit) {
        m_undoStack.removeFirst();
    }
    m_redoStack.clear();
}

void ProjectStore::undo() {
    replay(m_undoStack, m_redoStack);
}

void ProjectStore::redo() {
    replay(m_redoStack, m_undoStack);
}

void ProjectStore::replay(QList<Project> &from, QList<Project> &to) {
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

ProjectStore::UndoBatch::UndoBatch(ProjectStore &store)
    : m_store(store), m_before(store.m_inUndoBatch) {
    m_store.pushUndoState();
    m_store.m_inUndoBatch = true;
}

ProjectStore::UndoBatch::~UndoBatch() {
    m_store.m_inUndoBatch = m_before;
    if (m_before) {
        return;
    }
    m_store.m_batchIndexes.clear();
    if (std::exchange(m_store.m_batchChangedProject, false)) {
        Q_EMIT m_store.projectChanged();
    }
}

} // namespace corvane

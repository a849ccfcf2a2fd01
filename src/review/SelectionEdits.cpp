#include "review/SelectionEdits.h"

namespace corvane {

SelectionEdits::SelectionEdits(ProjectStore &store, const ReviewListModel &list,
                               ReviewSelection &selection, ReviewMarking &marking)
    : m_store(store), m_list(list), m_selection(selection), m_marking(marking) {}

void SelectionEdits::run(const KeyMap::Command &command) {
    const auto onClip = [this](void (ProjectStore::*edit)(const QString &)) -> ClipEdit {
        return [this, edit](const QString &id) { (m_store.*edit)(id); };
    };
    const auto onSubclip = [this](void (ProjectStore::*edit)(const SubclipKey &)) -> SubclipEdit {
        return [this, edit](const SubclipKey &key) { (m_store.*edit)(key); };
    };
    switch (command.action) {
    case KeyMap::Action::rate:
        edit([&](const QString &id) { m_store.setRating(id, command.argument); },
             [&](const SubclipKey &key) { m_store.setSubclipRating(key, command.argument); });
        break;
    case KeyMap::Action::toggleFavorite:
        edit(onClip(&ProjectStore::toggleFavorite),
             onSubclip(&ProjectStore::toggleSubclipFavorite));
        break;
    case KeyMap::Action::toggleSelected:
        edit(onClip(&ProjectStore::toggleSelectedForExport),
             onSubclip(&ProjectStore::toggleSubclipSelected));
        break;
    case KeyMap::Action::toggleReviewed:
        edit(onClip(&ProjectStore::toggleReviewed), {});
        break;
    case KeyMap::Action::toggleRejected:
        edit(onClip(&ProjectStore::toggleRejected), {});
        break;
    default:
        break;
    }
}

void SelectionEdits::edit(const ClipEdit &clipEdit, const SubclipEdit &subclipEdit) {
    if (m_selection.multiSelection().exists()) {
        editMarked(clipEdit, subclipEdit);
    } else if (subclipEdit && m_selection.isInSubclipMode()) {
        subclipEdit({*m_selection.selectedVideoId(), *m_selection.activeSubclipId()});
    } else {
        clipEdit(*m_selection.selectedVideoId());
    }
}

void SelectionEdits::editMarked(const ClipEdit &clipEdit, const SubclipEdit &subclipEdit) {
    const MultiSelection &marks = m_selection.multiSelection();
    QStringList clips;
    for (const QString &id : marks.multiSelectedClipIds) {
        if (m_list.video(id)) {
            clips.append(id);
        }
    }
    const QList<SubclipKey> subclips =
        subclipEdit ? m_list.subclipKeys(marks.multiSelectedSubclipIds) : QList<SubclipKey>();
    if (clips.isEmpty() && subclips.isEmpty()) {
        return;
    }
    const ProjectStore::UndoBatch batch(m_store);
    for (const QString &id : clips) {
        clipEdit(id);
    }
    for (const SubclipKey &key : subclips) {
        subclipEdit(key);
    }
}

std::optional<SelectionEdits::Question> SelectionEdits::deletion() {
    const VideoRecord *video = m_selection.selectedVideo();
    if (m_selection.multiSelection().exists()) {
        return deletionOfMarked();
    }
    if (const Subclip *active = m_selection.activeSubclip()) {
        return Question{ReviewConfirmation::deleteSubclip(*active),
                        [this, id = active->id] { m_marking.deleteSubclip(id); }};
    }
    if (video && !video->rejected) {
        return Question{ReviewConfirmation::rejectClip(*video),
                        [this, id = video->id] { reject(id); }};
    }
    return std::nullopt;
}

std::optional<SelectionEdits::Question> SelectionEdits::deletionOfMarked() {
    const MultiSelection &marks = m_selection.multiSelection();
    QStringList clips;
    for (const QString &id : marks.multiSelectedClipIds) {
        const VideoRecord *video = m_list.video(id);
        if (video && !video->rejected) {
            clips.append(id);
        }
    }
    const auto question =
        ReviewConfirmation::applyToMarked(marks.multiSelectedSubclipIds.size(), clips.size());
    if (!question) {
        m_selection.clearMultiSelection();
        return std::nullopt;
    }
    return Question{*question, [this, clips] { deleteMarked(clips); }};
}

void SelectionEdits::deleteMarked(const QStringList &clipsToReject) {
    {
        const ProjectStore::UndoBatch batch(m_store);
        m_store.deleteSubclips(
            m_list.subclipKeys(m_selection.multiSelection().multiSelectedSubclipIds));
        for (const QString &id : clipsToReject) {
            reject(id);
        }
    }
    m_selection.clearMultiSelection();
}

void SelectionEdits::reject(const QString &videoId) {
    const VideoRecord *video = m_store.video(videoId);
    if (video && !video->rejected) {
        m_store.toggleRejected(videoId);
    }
}

} // namespace corvane

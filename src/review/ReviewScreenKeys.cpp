// What the keys of the review screen do.

#include "review/ReviewScreenState.h"

#include <algorithm>

namespace corvane {

namespace {

constexpr double kFastestShuttle = 8;

} // namespace

bool ReviewScreenState::handleKeyDown(int key, Qt::KeyboardModifiers modifiers, bool textHasFocus,
                                      bool isRepeat) {
    if (textHasFocus || m_confirmation) {
        return false;
    }
    if (m_isShown && (key == Qt::Key_Backspace || key == Qt::Key_Delete)) {
        if (!isRepeat) {
            handleDeleteKey();
        }
        return true;
    }
    if (m_isShown && key == Qt::Key_Escape && m_marks.exists()) {
        clearMultiSelection();
        return true;
    }
    if (isRepeat) {
        return KeyMap::command(key, modifiers).has_value(); // for nobody else to act on either
    }
    return handleKeyPress(key, modifiers, textHasFocus);
}

bool ReviewScreenState::handleKeyPress(int key, Qt::KeyboardModifiers modifiers,
                                       bool textHasFocus) {
    const auto command = textHasFocus ? std::nullopt : KeyMap::command(key, modifiers);
    if (!command || (command->needsClip() && !hasSelectedVideo())) {
        return false;
    }
    run(*command);
    return true;
}

void ReviewScreenState::run(const KeyMap::Command &command) {
    using enum KeyMap::Action;
    switch (command.action) {
    case undo:
        m_store.undo();
        break;
    case redo:
        m_store.redo();
        break;
    case togglePlayback:
    case stopPlayback:
    case shuttleBackward:
    case shuttleForward:
    case stepFrames:
    case skip:
        runTransport(command);
        break;
    case markIn:
    case nudgeIn:
    case markOut:
    case nudgeOut:
    case saveDraft:
    case leaveSubclipMode:
    case jumpToIn:
    case jumpToOut:
        runMarking(command);
        break;
    case rate:
    case toggleFavorite:
    case toggleSelected:
    case toggleReviewed:
    case toggleRejected:
        runEdit(command);
        break;
    }
}

void ReviewScreenState::runTransport(const KeyMap::Command &command) {
    const double rate = m_player.rate();
    switch (command.action) {
    case KeyMap::Action::togglePlayback:
        togglePlayback();
        break;
    case KeyMap::Action::stopPlayback:
        m_player.setRate(0);
        break;
    case KeyMap::Action::shuttleBackward:
        m_player.setRate(rate < 0 ? std::max(rate * 2, -kFastestShuttle) : -1.0);
        break;
    case KeyMap::Action::shuttleForward:
        m_player.setRate(rate > 0 ? std::min(rate * 2, kFastestShuttle) : 1.0);
        break;
    case KeyMap::Action::stepFrames:
        m_player.stepFrames(command.argument);
        break;
    case KeyMap::Action::skip:
        m_player.seek(m_player.currentSeconds() + command.argument);
        break;
    default:
        break;
    }
}

void ReviewScreenState::togglePlayback() {
    if (m_player.rate() == 0) {
        m_player.setRate(1.0);
    } else {
        m_player.pause();
    }
}

void ReviewScreenState::runEdit(const KeyMap::Command &command) {
    const auto onClip = [this](void (ProjectStore::*edit)(const QString &)) -> ClipEdit {
        return [this, edit](const QString &id) { (m_store.*edit)(id); };
    };
    const auto onSubclip = [this](void (ProjectStore::*edit)(const SubclipKey &)) -> SubclipEdit {
        return [this, edit](const SubclipKey &key) { (m_store.*edit)(key); };
    };
    switch (command.action) {
    case KeyMap::Action::rate:
        editTarget([&](const QString &id) { m_store.setRating(id, command.argument); },
                   [&](const SubclipKey &key) { m_store.setSubclipRating(key, command.argument); });
        break;
    case KeyMap::Action::toggleFavorite:
        editTarget(onClip(&ProjectStore::toggleFavorite),
                   onSubclip(&ProjectStore::toggleSubclipFavorite));
        break;
    case KeyMap::Action::toggleSelected:
        editTarget(onClip(&ProjectStore::toggleSelectedForExport),
                   onSubclip(&ProjectStore::toggleSubclipSelected));
        break;
    case KeyMap::Action::toggleReviewed:
        editTarget(onClip(&ProjectStore::toggleReviewed), {});
        break;
    case KeyMap::Action::toggleRejected:
        editTarget(onClip(&ProjectStore::toggleRejected), {});
        break;
    default:
        break;
    }
}

void ReviewScreenState::editTarget(const ClipEdit &clipEdit, const SubclipEdit &subclipEdit) {
    if (m_marks.exists()) {
        editMarked(clipEdit, subclipEdit);
    } else if (subclipEdit && isInSubclipMode()) {
        subclipEdit({*m_selectedVideoId, *m_activeSubclipId});
    } else {
        clipEdit(*m_selectedVideoId);
    }
}

/// Every row is edited for itself, and all of them are one undo step.
void ReviewScreenState::editMarked(const ClipEdit &clipEdit, const SubclipEdit &subclipEdit) {
    QStringList clips;
    for (const QString &id : m_marks.multiSelectedClipIds) {
        if (m_list.video(id)) {
            clips.append(id);
        }
    }
    const QList<SubclipKey> subclips =
        subclipEdit ? m_list.subclipKeys(m_marks.multiSelectedSubclipIds) : QList<SubclipKey>();
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

void ReviewScreenState::handleDeleteKey() {
    const VideoRecord *video = selectedVideo();
    if (m_marks.exists()) {
        confirmMarked();
    } else if (const Subclip *active = activeSubclip()) {
        ask(ReviewConfirmation::deleteSubclip(*active),
            [this, id = active->id] { deleteSubclip(id); });
    } else if (video && !video->rejected) {
        ask(ReviewConfirmation::rejectClip(*video),
            [this, id = video->id] { rejectUnlessRejected(id); });
    }
}

void ReviewScreenState::confirmMarked() {
    QStringList clips;
    for (const QString &id : m_marks.multiSelectedClipIds) {
        const VideoRecord *video = m_list.video(id);
        if (video && !video->rejected) {
            clips.append(id);
        }
    }
    const auto question =
        ReviewConfirmation::applyToMarked(m_marks.multiSelectedSubclipIds.size(), clips.size());
    if (question) {
        ask(*question, [this, clips] { applyToMarked(clips); });
    } else {
        clearMultiSelection();
    }
}

void ReviewScreenState::applyToMarked(const QStringList &clipIds) {
    const QSet<QString> subclipIds = m_marks.multiSelectedSubclipIds;
    {
        const ProjectStore::UndoBatch batch(m_store);
        m_store.deleteSubclips(m_list.subclipKeys(subclipIds));
        for (const QString &id : clipIds) {
            rejectUnlessRejected(id);
        }
    }
    if (m_activeSubclipId && subclipIds.contains(*m_activeSubclipId)) {
        leaveSubclip();
    }
    clearMultiSelection();
}

void ReviewScreenState::rejectUnlessRejected(const QString &videoId) {
    const VideoRecord *video = m_store.video(videoId);
    if (video && !video->rejected) {
        m_store.toggleRejected(videoId);
    }
}

void ReviewScreenState::ask(ReviewConfirmation question, std::function<void()> onAccept) {
    m_confirmation = std::move(question);
    m_onAccept = std::move(onAccept);
    Q_EMIT confirmationChanged();
}

void ReviewScreenState::answerConfirmation(bool accept) {
    if (!m_confirmation) {
        return;
    }
    m_confirmation.reset();
    const auto onAccept = std::exchange(m_onAccept, {});
    Q_EMIT confirmationChanged();
    if (accept) {
        onAccept();
    }
}

QVariantMap ReviewScreenState::confirmationMap() const {
    if (!m_confirmation) {
        return {};
    }
    return {{QStringLiteral("title"), m_confirmation->title},
            {QStringLiteral("text"), m_confirmation->text},
            {QStringLiteral("acceptButton"), m_confirmation->acceptButton},
            {QStringLiteral("cancelButton"), m_confirmation->cancelButton}};
}

} // namespace corvane

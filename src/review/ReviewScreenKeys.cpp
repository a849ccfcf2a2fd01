// Keys and confirmations of the review screen.

#include "review/ReviewScreenState.h"

namespace corvane {

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
    if (m_isShown && key == Qt::Key_Escape && m_selection.multiSelection().exists()) {
        m_selection.clearMultiSelection();
        return true;
    }
    if (isRepeat) {
        return KeyMap::command(key, modifiers).has_value(); // consumed, or others would act on it
    }
    return handleKeyPress(key, modifiers, textHasFocus);
}

bool ReviewScreenState::handleKeyPress(int key, Qt::KeyboardModifiers modifiers,
                                       bool textHasFocus) {
    const auto command = textHasFocus ? std::nullopt : KeyMap::command(key, modifiers);
    if (!command || (command->needsClip() && !m_selection.hasSelectedVideo())) {
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
        m_transport.run(command);
        break;
    case markIn:
    case nudgeIn:
    case markOut:
    case nudgeOut:
    case saveDraft:
    case leaveSubclipMode:
    case jumpToIn:
    case jumpToOut:
        m_marking.run(command);
        break;
    case rate:
    case toggleFavorite:
    case toggleSelected:
    case toggleReviewed:
    case toggleRejected:
        m_edits.run(command);
        break;
    }
}

void ReviewScreenState::handleDeleteKey() {
    if (auto question = m_edits.deletion()) {
        m_confirmation = std::move(question->confirmation);
        m_onAccept = std::move(question->onAccept);
        Q_EMIT confirmationChanged();
    }
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

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
            m_actions.add([this] { handleDeleteKey(); });
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
    m_actions.add([this, command = *command] { run(command); }, command->readsPlayhead());
    return true;
}

void ReviewScreenState::moveSelection(int rows, Qt::KeyboardModifiers modifiers) {
    m_actions.add([this, rows, modifiers] { m_selection.moveSelection(rows, modifiers); });
}

void ReviewScreenState::run(const KeyMap::Command &command) {
    if (command.action == KeyMap::Action::undo) {
        m_store.undo();
    } else if (command.action == KeyMap::Action::redo) {
        m_store.redo();
    } else { // each ignores the commands of the others
        m_transport.run(command);
        m_marking.run(command);
        m_edits.run(command);
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

QVariant ReviewScreenState::alertSubject() const {
    if (!m_confirmation) {
        return QVariant::fromValue(nullptr);
    }
    return QVariantMap{{QStringLiteral("title"), m_confirmation->title},
                       {QStringLiteral("text"), m_confirmation->text},
                       {QStringLiteral("acceptText"), m_confirmation->acceptButton},
                       {QStringLiteral("cancelText"), m_confirmation->cancelButton}};
}

} // namespace corvane

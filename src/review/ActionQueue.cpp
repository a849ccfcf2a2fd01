#include "review/ActionQueue.h"

#include <QScopedValueRollback>

namespace corvane {

ActionQueue::ActionQueue(const ReviewPlayer &player) : m_player(player) {
    connect(&player, &ReviewPlayer::settled, this, &ActionQueue::runReady);
}

void ActionQueue::add(Action action, bool readsPlayhead) {
    m_waiting.append({std::move(action), readsPlayhead});
    runReady();
}

void ActionQueue::runReady() {
    if (m_isRunning) {
        return;
    }
    const QScopedValueRollback running(m_isRunning, true);
    while (!m_waiting.isEmpty() && (m_player.isSettled() || !m_waiting.first().readsPlayhead)) {
        m_waiting.takeFirst().action();
    }
}

void ActionQueue::clear() {
    if (!m_isRunning) {
        m_waiting.clear();
    }
}

} // namespace corvane

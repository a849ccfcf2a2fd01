#include "review/PlayerReadiness.h"

namespace corvane {

PlayerReadiness::PlayerReadiness(std::function<void()> action, QObject *parent)
    : QObject(parent), m_action(std::move(action)) {}

void PlayerReadiness::whenReady(ReviewPlayer &player, Clock &clock, std::function<void()> action,
                                QObject *parent) {
    if (player.isReady()) {
        action();
        return;
    }
    auto *wait = new PlayerReadiness(std::move(action), parent);
    connect(&player, &ReviewPlayer::isReadyChanged, wait, [wait, &player] {
        if (player.isReady()) {
            wait->finish();
        }
    });
    wait->m_timer = clock.after(kTimeout, [wait] { wait->finish(); });
}

void PlayerReadiness::finish() {
    if (const auto action = std::exchange(m_action, {})) {
        deleteLater();
        action();
    }
}

} // namespace corvane

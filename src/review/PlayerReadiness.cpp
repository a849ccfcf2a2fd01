#include "review/PlayerReadiness.h"

namespace corvane {

PlayerReadiness::PlayerReadiness(ReviewPlayer &player, Clock &clock, std::function<void()> action)
    : m_action(std::move(action)) {
    if (player.isReady()) {
        finish();
        return;
    }
    connect(&player, &ReviewPlayer::isReadyChanged, this, [this, &player] {
        if (player.isReady()) {
            finish();
        }
    });
    m_timer = clock.after(kTimeout, [this] { finish(); });
}

void PlayerReadiness::finish() {
    if (const auto action = std::exchange(m_action, {})) {
        action();
    }
}

} // namespace corvane

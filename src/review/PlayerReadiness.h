#pragma once

#include "platform/Clock.h"
#include "review/ReviewPlayer.h"

namespace corvane {

/// Runs an action once, when a player is ready or a timeout has passed: immediately if it is ready
/// already. Destroying this object cancels the action, which must not do that itself.
class PlayerReadiness : public QObject {
    Q_OBJECT

  public:
    static constexpr std::chrono::seconds kTimeout{1};

    PlayerReadiness(ReviewPlayer &player, Clock &clock, std::function<void()> action);

  private:
    void finish();

    std::function<void()> m_action;
    std::unique_ptr<Clock::Timer> m_timer;
};

} // namespace corvane

#pragma once

#include "platform/Clock.h"
#include "review/ReviewPlayer.h"

namespace corvane {

/// Runs an action when a player is ready or a timeout has passed, then deletes itself.
class PlayerReadiness : public QObject {
    Q_OBJECT

  public:
    static constexpr std::chrono::seconds kTimeout{1};

    /// Runs the action immediately if the player is ready. Deleting `parent` cancels the action.
    static void whenReady(ReviewPlayer &player, Clock &clock, std::function<void()> action,
                          QObject *parent);

  private:
    PlayerReadiness(std::function<void()> action, QObject *parent);
    void finish();

    std::function<void()> m_action;
    std::unique_ptr<Clock::Timer> m_timer;
};

} // namespace corvane

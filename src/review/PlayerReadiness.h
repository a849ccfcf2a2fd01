#pragma once

#include "platform/Clock.h"
#include "review/ReviewPlayer.h"

namespace corvane {

/// Waits for a player to be ready, a second at most, then runs the action and ends itself. It ends
/// without the action where its parent ends first.
class PlayerReadiness : public QObject {
    Q_OBJECT

  public:
    static constexpr std::chrono::seconds kLongestWait{1};

    /// Runs the action at once where the player is ready.
    static void whenReady(ReviewPlayer &player, Clock &clock, std::function<void()> action,
                          QObject *parent);

  private:
    PlayerReadiness(std::function<void()> action, QObject *parent);
    void finish();

    std::function<void()> m_action;
    std::unique_ptr<Clock::Timer> m_bound;
};

} // namespace corvane

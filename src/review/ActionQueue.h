#pragma once

#include "review/ReviewPlayer.h"

#include <functional>

namespace corvane {

/// Runs the actions of keys in the order of the keys. An action that reads the playhead waits until
/// the player has settled, and all later actions wait behind it. Main thread only.
class ActionQueue : public QObject {
    Q_OBJECT

  public:
    using Action = std::function<void()>;

    /// The player must outlive it.
    explicit ActionQueue(const ReviewPlayer &player);

    /// Runs the action now, or later if it has to wait.
    void add(Action action, bool readsPlayhead = false);
    /// Drops the waiting actions. No-op if an action calls it: the later ones were meant to follow.
    void clear();

  private:
    struct Waiting {
        Action action;
        bool readsPlayhead = false;
    };

    void runReady();

    const ReviewPlayer &m_player;
    QList<Waiting> m_waiting;
    bool m_isRunning = false;
};

} // namespace corvane

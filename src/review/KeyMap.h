#pragma once

#include <QStringList>

#include <optional>

/// The keys of the review screen and their commands. Command is Ctrl, Control is Meta, Option is
/// Alt.
namespace corvane::KeyMap {

enum class Action {
    undo,
    redo,
    togglePlayback,
    stopPlayback,
    shuttleBackward,
    shuttleForward,
    stepFrames, ///< by the argument
    skip,       ///< by the argument, in seconds
    markIn,
    nudgeIn,
    markOut,
    nudgeOut,
    saveDraft,
    leaveSubclipMode,
    jumpToIn,
    jumpToOut,
    rate, ///< the argument is the rating
    toggleFavorite,
    toggleSelected,
    toggleReviewed,
    toggleRejected,
};

struct Command {
    Action action;
    int argument = 0;

    /// True for all commands except undo and redo.
    bool needsClip() const { return action != Action::undo && action != Action::redo; }
    bool readsPlayhead() const;

    bool operator==(const Command &) const = default;
};

/// Returns nullopt for a key without a command. `key` is a `Qt::Key`, the same for upper and lower
/// case.
std::optional<Command> command(int key, Qt::KeyboardModifiers modifiers);

/// The keys of each command as the user guide writes them, such as "Shift+I" or "0 to 5".
QStringList guideKeys();

} // namespace corvane::KeyMap

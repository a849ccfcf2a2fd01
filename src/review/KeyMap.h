#pragma once

#include <QList>
#include <QString>

#include <optional>

/// The keys of the review screen and what they mean. Command is Ctrl, Control is Meta, Option is
/// Alt. The map knows keys only; what an action does is the screen state's.
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

/// What a key press asks for.
struct Command {
    Action action;
    int argument = 0;

    /// Undo and redo work without a selected clip; nothing else does.
    bool needsClip() const { return action != Action::undo && action != Action::redo; }

    bool operator==(const Command &) const = default;
};

/// Nothing for a key that isn't in the map. `key` is a `Qt::Key`, which doesn't tell upper from
/// lower case.
std::optional<Command> command(int key, Qt::KeyboardModifiers modifiers);

/// The map as a user reads it, in the order of the guide.
struct GuideRow {
    QString keys;
    QString meaning;
};
QList<GuideRow> guideRows();

} // namespace corvane::KeyMap

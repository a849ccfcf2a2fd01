#include "review/KeyMap.h"

#include <algorithm>
#include <array>

namespace corvane::KeyMap {

namespace {

/// The modifiers of a binding.
enum class With { anyShift, shift, noShift, command, shiftCommand };

struct Binding {
    std::array<int, 6> keys; ///< alternatives; unused entries are 0
    With with;
    Action action;
    int argument;
    const char *guideKeys;
};

using enum Action;

// clang-format off
constexpr Binding kBindings[] = {
    {{Qt::Key_Z},            With::command,      undo,              0, "Ctrl+Z"},
    {{Qt::Key_Z},            With::shiftCommand, redo,              0, "Ctrl+Shift+Z"},
    {{Qt::Key_Space},        With::anyShift,     togglePlayback,    0, "Space"},
    {{Qt::Key_K},            With::anyShift,     stopPlayback,      0, "K"},
    {{Qt::Key_J},            With::anyShift,     shuttleBackward,   0, "J"},
    {{Qt::Key_L},            With::anyShift,     shuttleForward,    0, "L"},
    {{Qt::Key_Comma},        With::anyShift,     stepFrames,       -1, ","},
    {{Qt::Key_Period},       With::anyShift,     stepFrames,        1, "."},
    {{Qt::Key_Left},         With::anyShift,     skip,             -5, "Left"},
    {{Qt::Key_Right},        With::anyShift,     skip,              5, "Right"},
    {{Qt::Key_I},            With::noShift,      markIn,            0, "I"},
    {{Qt::Key_I},            With::shift,        nudgeIn,           0, "Shift+I"},
    {{Qt::Key_O},            With::noShift,      markOut,           0, "O"},
    {{Qt::Key_O},            With::shift,        nudgeOut,          0, "Shift+O"},
    {{Qt::Key_Return, Qt::Key_Enter},
                             With::anyShift,     saveDraft,         0, "Enter"},
    {{Qt::Key_Escape},       With::anyShift,     leaveSubclipMode,  0, "Esc"},
    {{Qt::Key_BracketLeft},  With::anyShift,     jumpToIn,          0, "["},
    {{Qt::Key_BracketRight}, With::anyShift,     jumpToOut,         0, "]"},
    {{Qt::Key_0, Qt::Key_1, Qt::Key_2, Qt::Key_3, Qt::Key_4, Qt::Key_5},
                             With::anyShift,     rate,              0, "0 to 5"},
    {{Qt::Key_F},            With::anyShift,     toggleFavorite,    0, "F"},
    {{Qt::Key_S},            With::anyShift,     toggleSelected,    0, "S"},
    {{Qt::Key_R},            With::anyShift,     toggleReviewed,    0, "R"},
    {{Qt::Key_X},            With::anyShift,     toggleRejected,    0, "X"},
};
// clang-format on

bool matches(With with, Qt::KeyboardModifiers modifiers) {
    const bool hasShift = modifiers.testFlag(Qt::ShiftModifier);
    const bool hasCommand = modifiers.testFlag(Qt::ControlModifier);
    switch (with) {
    case With::anyShift:
        return !hasCommand;
    case With::shift:
        return !hasCommand && hasShift;
    case With::noShift:
        return !hasCommand && !hasShift;
    case With::command:
        return hasCommand && !hasShift;
    case With::shiftCommand:
        return hasCommand && hasShift;
    }
    return false;
}

} // namespace

bool Command::readsPlayhead() const {
    constexpr std::array kActions{togglePlayback, skip, markIn, nudgeIn, markOut, nudgeOut};
    return std::ranges::find(kActions, action) != kActions.end();
}

std::optional<Command> command(int key, Qt::KeyboardModifiers modifiers) {
    if (key == 0 || modifiers & (Qt::MetaModifier | Qt::AltModifier)) {
        return std::nullopt;
    }
    for (const Binding &binding : kBindings) {
        if (std::ranges::find(binding.keys, key) == binding.keys.end() ||
            !matches(binding.with, modifiers)) {
            continue;
        }
        const int argument = binding.action == rate ? key - Qt::Key_0 : binding.argument;
        return Command{binding.action, argument};
    }
    return std::nullopt;
}

QStringList guideKeys() {
    QStringList keys;
    for (const Binding &binding : kBindings) {
        keys.append(QString::fromUtf8(binding.guideKeys));
    }
    return keys;
}

} // namespace corvane::KeyMap

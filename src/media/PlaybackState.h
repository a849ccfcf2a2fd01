#pragma once

// Internal to src/media.

#include "media/PlayheadMotion.h"

#include <optional>
#include <variant>

namespace corvane::media {

/// The states of playback and their transitions, all of which `PlayerThread::enter` makes:
///
///     Paused         -> Starting        the rate becomes other than 0
///     Starting       -> AwaitingAudio   if audio plays at this rate
///     Starting       -> Running         if it doesn't
///     AwaitingAudio  -> Running         when audio is heard, or at the deadline
///     all but Paused -> Starting        after a seek, a step or a change of rate
///     all            -> Paused          if the rate becomes 0, at the end of the range or of the
///                                       item, on an error
namespace playback {

struct Paused {};

/// The rate is set. The next turn of the thread starts from the current time.
struct Starting {};

/// Frames wait for the audio, so that both start together.
struct AwaitingAudio {
    double position; ///< seconds
    MonotonicClock::Duration deadline;
};

struct Running {
    double position; ///< seconds; of the frame shown, not yet of the clock
    PlayheadMotion motion;
    std::optional<MonotonicClock::Duration> nextAudioSync; ///< nullopt if playback is silent
    std::optional<MonotonicClock::Duration> nextReport;    ///< nullopt before the first report
};

using State = std::variant<Paused, Starting, AwaitingAudio, Running>;

} // namespace playback

} // namespace corvane::media

#pragma once

#include <QString>

#include <functional>
#include <memory>
#include <optional>

namespace corvane::media {

/// Plays the audio of one file at a time. Failures aren't reported: `state` is `silent` if mpv
/// can't be created, and becomes `silent` again if the file has no playable audio. Without a device
/// the audio plays unheard.
///
/// The constructor and `setWake` are called on any thread, before the player's thread starts; all
/// other functions and the destructor on the player's thread.
class AudioOutput {
  public:
    enum class State {
        silent,   ///< paused, or the file has no audio
        starting, ///< `play` was called, but nothing can be heard yet
        running,
    };

    virtual ~AudioOutput();

    /// `wake` is called on any thread when `state` may have changed.
    virtual void setWake(std::function<void()> wake) = 0;
    /// Replaces the file; empty for no file. It is opened by the first `play`.
    virtual void setFile(const QString &path) = 0;
    /// Plays from `seconds`. The pitch is the same at every rate.
    virtual void play(double seconds, double rate) = 0;
    virtual void pause() = 0;
    virtual State state() = 0;
    /// The position heard now, in seconds; nullopt unless the state is `running`.
    virtual std::optional<double> position() = 0;
};

/// The system's audio device, played by mpv.
std::unique_ptr<AudioOutput> makeAudioOutput();

} // namespace corvane::media

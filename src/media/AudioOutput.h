#pragma once

#include <QString>

#include <functional>
#include <memory>
#include <optional>

namespace corvane::media {

/// Plays the audio of one file at a time. Failures are silent: without an audio track, a device or
/// a usable mpv, `state` stays `silent`.
///
/// Created on any thread; all other calls come from the player's thread.
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

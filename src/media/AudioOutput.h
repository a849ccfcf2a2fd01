#pragma once

#include <QString>

#include <functional>
#include <memory>
#include <optional>

namespace corvane::media {

/// The sound of one file at a time, played beside the pictures. It fails silently: a file without
/// sound, a missing device and a missing player all just give no sound.
///
/// Made anywhere; everything else happens on the player's thread.
class AudioOutput {
  public:
    enum class State {
        silent,   ///< stopped, or there is nothing to be heard
        starting, ///< told to play, not heard yet
        running,
    };

    virtual ~AudioOutput();

    /// `wake` is called from any thread when `state` may have changed.
    virtual void setWake(std::function<void()> wake) = 0;
    /// Takes another file, empty for none. It is opened when it is first played.
    virtual void setFile(const QString &path) = 0;
    /// Plays from there, in seconds; the pitch is kept whatever the rate.
    virtual void play(double seconds, double rate) = 0;
    virtual void pause() = 0;
    virtual State state() = 0;
    /// What is heard now, in seconds; nothing unless it is running.
    virtual std::optional<double> position() = 0;
};

/// The machine's sound.
std::unique_ptr<AudioOutput> makeAudioOutput();

} // namespace corvane::media

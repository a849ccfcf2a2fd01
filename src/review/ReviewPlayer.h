#pragma once

#include <QObject>
#include <QString>

namespace corvane {

/// The player as the review screen uses it: one clip at a time, exact seeks, and playback within an
/// optional range. Times are seconds in the clip. Main thread only.
class ReviewPlayer : public QObject {
    Q_OBJECT

  public:
    using QObject::QObject;

    virtual double currentSeconds() const = 0;  ///< the playhead
    virtual double durationSeconds() const = 0; ///< 0 if unknown
    virtual double rate() const = 0;            ///< 0 if paused, negative in reverse
    virtual double framesPerSecond() const = 0;
    virtual bool isReady() const = 0; ///< duration and tracks of the file have been read

    /// Loads a file, paused at its start; an empty path unloads. A file that can't be read never
    /// becomes ready.
    virtual void load(const QString &path) = 0;
    /// Clamps to the clip, then to the playback range.
    virtual void seek(double seconds) = 0;
    virtual void stepFrames(int frames) = 0;
    virtual void setRate(double rate) = 0;
    virtual void pause() = 0;
    /// Sets the playback range. Playback that reaches its end pauses and returns to its start.
    virtual void playConstrained(double inSeconds, double outSeconds) = 0;
    virtual void clearPlaybackConstraint() = 0;

  Q_SIGNALS:
    void currentSecondsChanged();
    void durationSecondsChanged();
    void rateChanged();
    void isReadyChanged();
};

} // namespace corvane

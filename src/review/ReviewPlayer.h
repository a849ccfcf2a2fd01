#pragma once

#include <QObject>
#include <QString>

namespace corvane {

/// What the review screen needs of a player: one clip at a time, exact seeks, and playback that is
/// held in a range while one is armed. Times are seconds in the clip. Main thread.
class ReviewPlayer : public QObject {
    Q_OBJECT

  public:
    using QObject::QObject;

    virtual double currentSeconds() const = 0;  ///< the playhead as it was last reported
    virtual double durationSeconds() const = 0; ///< 0 while not known
    virtual double rate() const = 0;            ///< 0 at rest, below 0 in reverse
    virtual double framesPerSecond() const = 0;
    virtual bool isReady() const = 0; ///< the loaded file's facts have been read

    /// Loads the file without starting it. It is ready later, or never.
    virtual void load(const QString &path) = 0;
    /// Clamped to the clip, then to the armed range.
    virtual void seek(double seconds) = 0;
    virtual void stepFrames(int frames) = 0;
    virtual void setRate(double rate) = 0;
    virtual void pause() = 0;
    virtual void playConstrained(double inSeconds, double outSeconds) = 0;
    virtual void clearPlaybackConstraint() = 0;

  Q_SIGNALS:
    void currentSecondsChanged();
    void durationSecondsChanged();
    void rateChanged();
    void isReadyChanged();
};

} // namespace corvane

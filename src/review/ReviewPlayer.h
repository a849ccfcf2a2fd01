#pragma once

#include <QCoroTask>
#include <QObject>

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
    virtual double fps() const = 0;
    virtual bool isReady() const = 0; ///< duration and tracks of the file have been read
    /// False while `currentSeconds` doesn't include the effect of a step or of pausing playback.
    virtual bool isSettled() const = 0;

    /// Loads a file, paused at its first frame; an empty path unloads. Finishes when duration and
    /// tracks have been read, or when a newer load has replaced this one, which then changes
    /// nothing. A file that can't be read never becomes ready.
    virtual QCoro::Task<> load(QString path) = 0;
    /// Seeks to the exact frame. Clamps to the clip, then to the playback range.
    virtual void seek(double seconds) = 0;
    /// Steps forward, or back if negative. Clamps like `seek`. Does not change the rate.
    virtual void stepFrames(int frames) = 0;
    /// Plays in reverse if negative, pauses if 0. Playing forward from the end of the playback
    /// range, or of the clip without a range, starts at its beginning.
    virtual void setRate(double rate) = 0;
    void pause() { setRate(0); }
    /// Replaces the playback range, which includes both points: playback that reaches its end
    /// pauses and returns to its start; in reverse it pauses at its start. Removes the range unless
    /// the in point is less than the out point. Does not start playback and does not seek.
    virtual void playConstrained(double inSeconds, double outSeconds) = 0;
    virtual void clearPlaybackConstraint() = 0;

  Q_SIGNALS:
    void currentTimeChanged();
    void durationChanged();
    void rateChanged();
    void isReadyChanged();
    void settled(); ///< `isSettled` became true
};

} // namespace corvane

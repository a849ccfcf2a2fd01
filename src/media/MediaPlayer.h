#pragma once

#include "media/AudioOutput.h"
#include "media/DisplayFrame.h"
#include "media/MonotonicClock.h"

#include <QList>
#include <QObject>

#include <chrono>
#include <functional>
#include <map>
#include <optional>

namespace corvane::media {

class PlayerThread;

/// Plays one file at a time: frames go to a sink, audio to the system's output.
///
/// Main thread. No function blocks: files are opened and decoded on the player's own thread. A
/// request changes `rate` and `currentTime` at once and the shown frame soon after; a step changes
/// both the time and the frame soon after. Errors aren't reported: an unreadable file shows no
/// frame, and playing it ends at once.
///
/// The shown frame is always the one that the current time names (see `kHalfTick`). At rates above
/// 0 and up to 2 audio plays at its own pitch and the frames follow it; other rates are silent. If
/// decoding can't keep up with the rate, frames are skipped.
class MediaPlayer : public QObject {
    Q_OBJECT

  public:
    struct Options {
        MonotonicClock *clock = &MonotonicClock::system();
        std::unique_ptr<AudioOutput> audioOutput; ///< null for a silent player
        /// Limit of the cached frames around the playhead. The decoder's memory comes on top.
        qsizetype frameBytes = qsizetype(256) << 20;
    };
    /// Identifies an observer.
    using Token = int;

    static constexpr float kFastestRate = 8;

    explicit MediaPlayer(Options options, QObject *parent = nullptr);
    /// Blocks briefly until the player's thread has stopped.
    ~MediaPlayer() override;

    /// Clears the previous sink and shows the current frame in this one; null for no sink.
    void setSink(std::shared_ptr<FrameSink> sink);
    /// Shows the current frame again, in the size that the sink wants now.
    void redraw();

    /// Replaces the file and shows its first frame; an empty path means no file. The sink is
    /// cleared at once and receives no more frames of the previous file. The rate becomes 0.
    void replaceCurrentItem(const QString &path);
    /// Number of the current item; 0 before the first one.
    quint64 currentItem() const { return m_item; }

    /// 0 pauses, 1 plays at normal speed, negative rates play backward; from -8 to 8. At either end
    /// of the item the player sets the rate to 0 and keeps the last or first frame.
    void setRate(float rate);
    float rate() const { return m_rate; }
    void pause() { setRate(0); }

    /// Holds playback in a range, both points included, until the next file; nullopt removes it.
    /// Doesn't move the playhead. Playback that reaches the out point or the end of the item shows
    /// that frame, pauses and returns to the in point; in reverse it pauses at the in point.
    /// Playback that starts or continues outside does the same at once.
    void setRange(std::optional<MediaTimeRange> range);

    /// Moves to the frame that `time` names and keeps the rate. A newer seek cancels an older one.
    void seek(MediaTime time);
    /// Moves by a number of frames, backward if negative, from where the earlier requests lead.
    /// Stops at the ends of the file or, with a range, at the frames that its in and out points
    /// name. The current time becomes the frame's exact time.
    void stepFrames(int frames, std::optional<MediaTimeRange> range = {});
    /// The playhead's position; the target if a seek is pending.
    MediaTime currentTime() const { return m_time; }
    /// False while `currentTime` doesn't include the effect of a step or of pausing playback.
    bool isSettled() const { return m_settledMove == m_move; }

    /// Calls `call` with the current time at this interval during playback, and after each seek,
    /// step and stop.
    Token addPeriodicTimeObserver(std::chrono::nanoseconds interval,
                                  std::function<void(MediaTime)> call);
    /// Stops the calls at once. Ignores unknown tokens.
    void removeTimeObserver(Token token);

  Q_SIGNALS:
    void rateChanged(float rate);
    /// `isSettled` became true; `currentTime` is up to date.
    void settled();

  private:
    struct PeriodicObserver {
        std::chrono::nanoseconds interval;
        std::function<void(MediaTime)> call;
        std::optional<std::chrono::nanoseconds> lastCall;
    };

    void handleReports();
    void updateTime(MediaTime time, bool isJump);
    void updateRate(float rate);
    void updateSettled(quint64 move);
    void sendObservers();

    MonotonicClock &m_clock;
    quint64 m_item = 0;
    quint64 m_serial = 0;      ///< of the latest request that moves the playhead
    quint64 m_rateSerial = 0;  ///< of the latest request that sets the rate
    quint64 m_move = 0;        ///< number of the latest request that `isSettled` waits for
    quint64 m_settledMove = 0; ///< number of the latest one that was carried out
    float m_rate = 0;
    MediaTime m_time;
    Token m_lastToken = 0;
    std::map<Token, PeriodicObserver> m_periodicObservers;
    std::unique_ptr<PlayerThread> m_thread;
};

} // namespace corvane::media

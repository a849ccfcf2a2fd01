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

/// Plays one file at a time: pictures into a sink, sound to the machine.
///
/// Main thread. Decoding and everything else that takes time happens on a thread of the player's
/// own; nothing here blocks. Every request takes effect at once in what `rate` and `currentTime`
/// say, and soon in the picture. Nothing fails loudly: of a file that can't be read there is just
/// no picture, and playing it ends at once.
///
/// Whether it plays or stands, the picture is the frame that the time names (see `kHalfTick`). The
/// sound is heard at rates from above 0 to 2, in its own pitch, and the pictures follow it. Other
/// rates are silent. At rates that the machine can't decode, frames are passed over.
class MediaPlayer : public QObject {
    Q_OBJECT

  public:
    struct Options {
        MonotonicClock *clock = &MonotonicClock::system();
        std::unique_ptr<AudioOutput> audioOutput; ///< null for a silent player
        /// Of decoded frames around the playhead. What the decoder itself holds comes on top.
        qsizetype frameBytes = qsizetype(256) << 20;
    };
    /// An observer that was added.
    using Token = int;

    static constexpr float kFastestRate = 8;

    explicit MediaPlayer(Options options, QObject *parent = nullptr);
    /// Stops everything and waits for the player's thread, which takes a moment.
    ~MediaPlayer() override;

    /// Where the pictures go from now on; nothing for nowhere. The one before is cleared.
    void setSink(std::shared_ptr<FrameSink> sink);
    /// The sink wants another size: the picture that stands is shown again.
    void redraw();

    /// Takes another file, or none for an empty path, and shows its first frame. The picture of the
    /// one before is gone at once, and none of it comes any more. The rate becomes 0.
    void replaceCurrentItem(const QString &path);
    /// Counts the items; 0 before the first.
    quint64 currentItem() const { return m_item; }

    /// 0 stands, 1 plays, below 0 plays backwards; from -8 to 8. At either end of the item the rate
    /// becomes 0 by itself, on the last or the first frame.
    void setRate(float rate);
    float rate() const { return m_rate; }
    void pause() { setRate(0); }

    /// Goes to the frame that `time` names; the rate stays. A newer seek overtakes an older one.
    void seek(MediaTime time);
    /// Goes so many frames on, or back for less than 0, from the frame that the requests before it
    /// lead to. It stays at the ends of the file and, with a range, within the frames that its in
    /// and out name. The time is then the frame's own.
    void stepFrames(int frames, std::optional<MediaTimeRange> range = {});
    /// Where the playhead is, or will be once a seek is done.
    MediaTime currentTime() const { return m_time; }

    /// Calls with the playhead's time while it plays, this often, and after each jump and stop.
    Token addPeriodicTimeObserver(std::chrono::nanoseconds interval,
                                  std::function<void(MediaTime)> call);
    /// Calls when playback in either direction comes to `time`. The playhead waits there until the
    /// call has been made.
    Token addBoundaryTimeObserver(MediaTime time, std::function<void()> call);
    /// No call comes after this. Does nothing for a token that is gone.
    void removeTimeObserver(Token token);

  Q_SIGNALS:
    void rateChanged(float rate);

  private:
    struct PeriodicObserver {
        std::chrono::nanoseconds interval;
        std::function<void(MediaTime)> call;
        std::optional<std::chrono::nanoseconds> called;
    };

    void takeReports();
    void takeTime(MediaTime time, bool isJump);
    void callBoundaries(const QList<Token> &tokens);
    void storeRate(float rate);
    void sendObservers();

    MonotonicClock &m_clock;
    quint64 m_item = 0;
    quint64 m_serial = 0;     ///< of the latest request that moves the playhead
    quint64 m_rateSerial = 0; ///< of the latest rate
    float m_rate = 0;
    MediaTime m_time;
    Token m_lastToken = 0;
    std::map<Token, PeriodicObserver> m_periodicObservers;
    std::map<Token, std::pair<MediaTime, std::function<void()>>> m_boundaryObservers;
    std::unique_ptr<PlayerThread> m_thread;
};

} // namespace corvane::media

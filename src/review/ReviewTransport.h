#pragma once

#include "review/KeyMap.h"
#include "review/ReviewSelection.h"

namespace corvane {

/// Playback as the transport row, the scrubber and the filmstrip show and control it.
///
/// Times are in seconds. In subclip mode the transport covers the active subclip, and its times
/// count from the in point; the filmstrip always covers the whole clip.
///
/// Main thread only. The objects passed to the constructor must outlive it.
class ReviewTransport : public QObject {
    Q_OBJECT
    Q_PROPERTY(double transportTime READ transportTime NOTIFY transportChanged)
    Q_PROPERTY(double clipTime READ clipTime NOTIFY transportChanged)
    Q_PROPERTY(QString transportText READ transportText NOTIFY transportChanged)
    Q_PROPERTY(QString transportTimeText READ transportTimeText NOTIFY transportChanged)
    Q_PROPERTY(QString transportDurationText READ transportDurationText NOTIFY durationsChanged)
    Q_PROPERTY(double transportDuration READ transportDuration NOTIFY durationsChanged)
    Q_PROPERTY(double clipDuration READ clipDuration NOTIFY durationsChanged)
    Q_PROPERTY(bool showsPlayhead READ showsPlayhead NOTIFY durationsChanged)
    Q_PROPERTY(double playedFraction READ playedFraction NOTIFY transportChanged)
    Q_PROPERTY(bool isPlaying READ isPlaying NOTIFY rateChanged)
    Q_PROPERTY(QString playHelp READ playHelp NOTIFY rateChanged)
    Q_PROPERTY(bool overlayButtonIsVisible READ overlayButtonIsVisible NOTIFY rateChanged)
    Q_PROPERTY(bool hoveringPlayer READ hoveringPlayer WRITE setHoveringPlayer NOTIFY rateChanged)

  public:
    ReviewTransport(ReviewPlayer &player, const ReviewSelection &selection);

    double transportTime() const;
    double transportDuration() const;
    double clipTime() const { return m_player.currentSeconds(); }
    double clipDuration() const { return m_player.durationSeconds(); }
    QString transportTimeText() const;
    QString transportDurationText() const; ///< including the separator before it
    QString transportText() const;         ///< both
    double playedFraction() const;         ///< 0 to 1
    bool showsPlayhead() const { return transportDuration() > 0; }

    bool isPlaying() const { return m_player.rate() != 0; }
    QString playHelp() const;
    bool overlayButtonIsVisible() const { return !isPlaying() || m_hoveringPlayer; }
    bool hoveringPlayer() const { return m_hoveringPlayer; }
    void setHoveringPlayer(bool hovering);

    Q_INVOKABLE void togglePlayback();
    Q_INVOKABLE void stepFrames(int frames) { m_player.stepFrames(frames); }
    /// Seeks to the position of the pointer at `x` on a scrubber of that width.
    Q_INVOKABLE void scrub(double x, double width);
    Q_INVOKABLE void scrubFilmstrip(double x, double width);
    /// Runs a command of the transport. Ignores other commands.
    void run(const KeyMap::Command &command);

    /// The active subclip's range, or nullopt outside subclip mode.
    std::optional<ClipRange> activeRange() const;
    /// Emits the signals of what differs from the last call.
    void publish();

  Q_SIGNALS:
    void transportChanged();
    void durationsChanged();
    void rateChanged();

  private:
    ReviewPlayer &m_player;
    const ReviewSelection &m_selection;
    std::pair<double, double> m_publishedTimes;     ///< of the transport, of the clip
    std::pair<double, double> m_publishedDurations; ///< likewise
    bool m_hoveringPlayer = false;
};

} // namespace corvane

#pragma once

#include "media/MediaAsset.h"
#include "media/MediaPlayer.h"
#include "platform/SerialExecutor.h"

#include <QObject>
#include <QSizeF>

#include <optional>
#include <stop_token>

namespace corvane {

/// Owns the one media player of the review screen: loads one clip at a time, tells what the screen
/// shows, seeks exactly, steps by frames, and holds playback inside a range. It knows nothing of
/// the project. Main thread.
///
/// A file that can't be read is no error: `isReady` stays false and there is no picture.
class PlayerEngine : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString url READ url NOTIFY urlChanged)
    Q_PROPERTY(double duration READ durationSeconds NOTIFY durationChanged)
    Q_PROPERTY(double currentTime READ currentSeconds NOTIFY currentTimeChanged)
    Q_PROPERTY(float rate READ rate NOTIFY rateChanged)
    Q_PROPERTY(bool isPlaying READ isPlaying NOTIFY rateChanged)
    Q_PROPERTY(double fps READ fps NOTIFY fpsChanged)
    Q_PROPERTY(QSizeF naturalSize READ naturalSize NOTIFY naturalSizeChanged)
    Q_PROPERTY(bool isReady READ isReady NOTIFY isReadyChanged)

  public:
    /// Seconds, `in` below `out`.
    struct PlaybackConstraint {
        double in = 0;
        double out = 0;

        bool operator==(const PlaybackConstraint &) const = default;
    };

    static constexpr double kDefaultFps = 30;

    /// With the machine's sound.
    static media::MediaPlayer::Options optionsWithAudio();

    explicit PlayerEngine(QObject *parent = nullptr);
    explicit PlayerEngine(media::MediaPlayer::Options options, QObject *parent = nullptr);
    ~PlayerEngine() override;

    QString url() const { return m_url; }                          ///< a path; empty for none
    media::MediaTime duration() const { return m_duration; }       ///< of the asset
    media::MediaTime currentTime() const { return m_currentTime; } ///< last reported playhead
    float rate() const { return m_rate; }                          ///< last observed
    double fps() const { return m_fps; }                 ///< nominal, of the first video track
    QSizeF naturalSize() const { return m_naturalSize; } ///< of the first video track
    bool isReady() const { return m_isReady; } ///< the asset's duration and tracks have been read
    const std::optional<PlaybackConstraint> &playbackConstraint() const {
        return m_playbackConstraint;
    }

    double durationSeconds() const { return m_duration.seconds(); }
    double currentSeconds() const { return m_currentTime.seconds(); }
    bool isPlaying() const { return m_rate != 0; }

    /// Where the screen's picture comes from.
    media::MediaPlayer &player() { return m_player; }

    /// Shows a clip's first frame; it doesn't start playing. Done when its facts are read, or when
    /// a newer load has taken its place: that one's facts are never overwritten.
    QCoro::Task<> load(QString path);

    /// Goes exactly there, kept inside the clip and then inside an armed range.
    Q_INVOKABLE void seek(double seconds);
    /// So many frames on, or back for less than 0; kept like a seek. Playback goes on from there.
    Q_INVOKABLE void stepFrames(int frames);

    /// 0 stands, 1 plays, below 0 plays backwards. Forward from the end of an armed range starts
    /// again at its in.
    Q_INVOKABLE void setRate(float rate);
    Q_INVOKABLE void pause() { setRate(0); }
    /// Plays at 1 from a standstill, and pauses otherwise.
    Q_INVOKABLE void togglePlaying();

    /// Arms a range in place of any other, or none unless `in` is below `out`: playback that comes
    /// to `out` pauses there and the playhead goes back to `in`. It neither starts nor seeks.
    void playConstrained(double in, double out);
    void clearPlaybackConstraint();

  Q_SIGNALS:
    void urlChanged();
    void durationChanged();
    void currentTimeChanged();
    void rateChanged();
    void fpsChanged();
    void naturalSizeChanged();
    void isReadyChanged();
    void playbackConstraintChanged();

  private:
    template <typename Value>
    void store(Value &field, const Value &value, void (PlayerEngine::*changed)());
    void storeFacts(const media::MediaAsset &asset);
    void stopAtOut(double in);
    double kept(double seconds) const;

    QString m_url;
    media::MediaTime m_duration;
    media::MediaTime m_currentTime;
    float m_rate = 0;
    double m_fps = kDefaultFps;
    QSizeF m_naturalSize{0, 0};
    bool m_isReady = false;
    std::optional<PlaybackConstraint> m_playbackConstraint;

    quint64 m_loads = 0; ///< counts the loads; only the latest one writes fields
    std::stop_source m_stopReading;
    media::MediaPlayer m_player;
    media::MediaPlayer::Token m_timeObserverToken = 0;
    QMetaObject::Connection m_rateObservation;
    std::optional<media::MediaPlayer::Token> m_boundaryObserverToken;
    SerialExecutor m_reading{QStringLiteral("playerFacts"),
                             SerialExecutor::Priority::UserInitiated};
};

} // namespace corvane

#pragma once

#include "media/MediaAsset.h"
#include "media/MediaPlayer.h"
#include "platform/SerialExecutor.h"

#include <QObject>
#include <QSizeF>

#include <optional>
#include <stop_token>

namespace corvane {

/// The media player of the review screen: loads one clip at a time, seeks exactly, steps by frames,
/// and can hold playback inside a range. Independent of the project. Main thread only.
///
/// For a file that can't be read `isReady` stays false and no frame is shown.
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
    /// In seconds; `in` is less than `out`.
    struct PlaybackConstraint {
        double in = 0;
        double out = 0;

        bool operator==(const PlaybackConstraint &) const = default;
    };

    static constexpr double kDefaultFps = 30;

    /// Plays audio on the default device.
    static media::MediaPlayer::Options optionsWithAudio();

    explicit PlayerEngine(QObject *parent = nullptr);
    explicit PlayerEngine(media::MediaPlayer::Options options, QObject *parent = nullptr);
    ~PlayerEngine() override;

    QString url() const { return m_url; }                          ///< a path; empty if no clip
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

    /// The source of the frames to display.
    media::MediaPlayer &player() { return m_player; }

    /// Loads a clip, paused at its first frame. Finishes when duration and tracks have been read,
    /// or when a newer load has replaced this one, which then changes nothing.
    QCoro::Task<> load(QString path);

    /// Seeks to the exact frame. Clamps to the clip, then to the playback constraint.
    Q_INVOKABLE void seek(double seconds);
    /// Steps forward, or back if negative. Clamps like `seek`. Does not change the rate.
    Q_INVOKABLE void stepFrames(int frames);

    /// Plays in reverse if negative, pauses if 0. Playing forward from the end of the playback
    /// constraint starts at its beginning.
    Q_INVOKABLE void setRate(float rate);
    Q_INVOKABLE void pause() { setRate(0); }
    /// Plays at rate 1 if paused, pauses otherwise.
    Q_INVOKABLE void togglePlaying();

    /// Replaces the playback constraint: playback that reaches `out` pauses, and the playhead
    /// returns to `in`. Removes it unless `in` is less than `out`. Does not start playback and does
    /// not seek.
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
    double clamped(double seconds) const;

    QString m_url;
    media::MediaTime m_duration;
    media::MediaTime m_currentTime;
    float m_rate = 0;
    double m_fps = kDefaultFps;
    QSizeF m_naturalSize{0, 0};
    bool m_isReady = false;
    std::optional<PlaybackConstraint> m_playbackConstraint;

    quint64 m_loads = 0; ///< number of loads; only the latest may change fields
    std::stop_source m_stopReading;
    media::MediaPlayer m_player;
    media::MediaPlayer::Token m_timeObserverToken = 0;
    QMetaObject::Connection m_rateObservation;
    std::optional<media::MediaPlayer::Token> m_boundaryObserverToken;
    SerialExecutor m_reading{QStringLiteral("playerFacts")};
};

} // namespace corvane

#pragma once

#include "media/MediaAsset.h"
#include "media/MediaPlayer.h"
#include "platform/SerialExecutor.h"
#include "review/ReviewPlayer.h"

#include <QSizeF>

#include <optional>
#include <stop_token>

namespace corvane {

/// The media player of the review screen: loads one clip at a time, seeks exactly, steps by frames,
/// and can hold playback inside a range. Independent of the project. Main thread only.
///
/// For a file that can't be read `isReady` stays false and no frame is shown.
class PlayerEngine : public ReviewPlayer {
    Q_OBJECT

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

    explicit PlayerEngine(media::MediaPlayer::Options options, QObject *parent = nullptr);
    ~PlayerEngine() override;

    QString url() const { return m_url; }                          ///< a path; empty if no clip
    media::MediaTime duration() const { return m_duration; }       ///< of the asset
    media::MediaTime currentTime() const { return m_currentTime; } ///< last reported playhead
    double rate() const override { return m_rate; }                ///< last observed
    double fps() const override { return m_fps; }        ///< nominal, of the first video track
    QSizeF naturalSize() const { return m_naturalSize; } ///< of the first video track
    bool isReady() const override { return m_isReady; }
    bool isSettled() const override { return m_player.isSettled(); }
    const std::optional<PlaybackConstraint> &playbackConstraint() const {
        return m_playbackConstraint;
    }

    double durationSeconds() const override { return m_duration.seconds(); }
    double currentSeconds() const override { return m_currentTime.seconds(); }
    bool isPlaying() const { return m_rate != 0; }

    /// The source of the frames to display.
    media::MediaPlayer &player() { return m_player; }

    QCoro::Task<> load(QString path) override;
    void seek(double seconds) override;
    void stepFrames(int frames) override;
    void setRate(double rate) override;
    void playConstrained(double in, double out) override;
    void clearPlaybackConstraint() override;

  Q_SIGNALS:
    void urlChanged();
    void fpsChanged();
    void naturalSizeChanged();
    void playbackConstraintChanged();

  private:
    template <typename Value>
    void store(Value &field, const Value &value, void (PlayerEngine::*changed)());
    void storeFacts(const media::MediaAsset &asset);
    PlaybackConstraint bounds() const;
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
    SerialExecutor m_reading{QStringLiteral("playerFacts")};
};

} // namespace corvane

#include "review/PlayerEngine.h"

#include <QPointer>

#include <algorithm>
#include <cmath>

namespace corvane {

using media::MediaTime;

namespace {

constexpr std::chrono::nanoseconds kReportingPeriod{1'000'000'000 / 30};

} // namespace

media::MediaPlayer::Options PlayerEngine::optionsWithAudio() {
    media::MediaPlayer::Options options;
    options.audioOutput = media::makeAudioOutput();
    return options;
}

PlayerEngine::PlayerEngine(media::MediaPlayer::Options options, QObject *parent)
    : ReviewPlayer(parent), m_player(std::move(options)) {
    m_timeObserverToken =
        m_player.addPeriodicTimeObserver(kReportingPeriod, [this](MediaTime time) {
            store(m_currentTime, time, &PlayerEngine::currentTimeChanged);
        });
    connect(&m_player, &media::MediaPlayer::rateChanged, this,
            [this] { store(m_rate, m_player.rate(), &PlayerEngine::rateChanged); });
    connect(&m_player, &media::MediaPlayer::settled, this, &PlayerEngine::settled);
}

PlayerEngine::~PlayerEngine() {
    m_stopReading.request_stop();
    m_player.removeTimeObserver(m_timeObserverToken);
    m_player.disconnect(this);
}

template <typename Value>
void PlayerEngine::store(Value &field, const Value &value, void (PlayerEngine::*changed)()) {
    if (field != value) {
        field = value;
        Q_EMIT(this->*changed)();
    }
}

QCoro::Task<> PlayerEngine::load(QString path) {
    clearPlaybackConstraint();
    const auto number = ++m_loads;
    m_stopReading.request_stop();
    m_stopReading = std::stop_source();
    store(m_url, path, &PlayerEngine::urlChanged);
    store(m_isReady, false, &PlayerEngine::isReadyChanged);
    store(m_currentTime, MediaTime(), &PlayerEngine::currentTimeChanged);
    storeFacts({});
    m_player.replaceCurrentItem(path);
    m_player.setRate(0);

    const QPointer alive(this);
    std::optional<media::MediaAsset> asset;
    try {
        asset = co_await m_reading.run([path, stop = m_stopReading.get_token()] {
            return media::MediaAsset::read(path, stop);
        });
    } catch (const std::exception &) {
        // The player shows no frame, which is message enough.
    }
    if (!alive || number != m_loads || !asset) {
        co_return;
    }
    storeFacts(*asset);
    if (alive && number == m_loads) {
        store(m_isReady, true, &PlayerEngine::isReadyChanged);
    }
}

/// An empty asset sets the initial values.
void PlayerEngine::storeFacts(const media::MediaAsset &asset) {
    const auto track = asset.videoTracks.isEmpty() ? media::VideoTrack{.naturalSize = {0, 0}}
                                                   : asset.videoTracks.first();
    const bool hasRate = std::isfinite(track.nominalFrameRate) && track.nominalFrameRate > 0;
    store(m_duration, asset.duration.value_or(MediaTime()), &PlayerEngine::durationChanged);
    store(m_fps, hasRate ? track.nominalFrameRate : kDefaultFps, &PlayerEngine::fpsChanged);
    store(m_naturalSize, track.naturalSize, &PlayerEngine::naturalSizeChanged);
}

/// The playback range, or the entire clip.
PlayerEngine::PlaybackConstraint PlayerEngine::bounds() const {
    return m_playbackConstraint.value_or(PlaybackConstraint{0, durationSeconds()});
}

double PlayerEngine::clamped(double seconds) const {
    const double inClip = std::max(std::min(seconds, durationSeconds()), 0.0);
    return std::max(bounds().in, std::min(inClip, bounds().out));
}

void PlayerEngine::seek(double seconds) {
    m_player.seek(MediaTime::fromSeconds(clamped(std::isnan(seconds) ? 0 : seconds)));
}

void PlayerEngine::stepFrames(int frames) {
    if (m_isReady && m_naturalSize.isEmpty()) {
        seek(currentSeconds() + frames / m_fps); // audio only
        return;
    }
    std::optional<media::MediaTimeRange> range;
    if (m_duration > MediaTime()) {
        range = {MediaTime::fromSeconds(clamped(0)),
                 MediaTime::fromSeconds(clamped(durationSeconds()))};
    }
    m_player.stepFrames(frames, range);
}

void PlayerEngine::setRate(double rate) {
    const auto [in, out] = bounds();
    // In ticks: the time of a stop and that of a seek to the same point differ by their rounding.
    if (rate > 0 && in < out &&
        MediaTime::fromSeconds(currentSeconds()) >= MediaTime::fromSeconds(out)) {
        seek(in);
    }
    m_player.setRate(float(rate));
}

void PlayerEngine::playConstrained(double in, double out) {
    clearPlaybackConstraint();
    if (!(in < out)) {
        return;
    }
    m_playbackConstraint = {in, out};
    m_player.setRange(media::MediaTimeRange::fromSeconds(in, out));
    Q_EMIT playbackConstraintChanged();
}

void PlayerEngine::clearPlaybackConstraint() {
    if (m_playbackConstraint) {
        m_playbackConstraint.reset();
        m_player.setRange({});
        Q_EMIT playbackConstraintChanged();
    }
}

} // namespace corvane

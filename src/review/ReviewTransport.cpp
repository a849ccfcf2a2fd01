#include "review/ReviewTransport.h"

#include "platform/TextFormat.h"
#include "review/ScrubberGeometry.h"

#include <algorithm>

namespace corvane {

namespace {

constexpr double kMaxShuttleRate = 8;

} // namespace

ReviewTransport::ReviewTransport(ReviewPlayer &player, const ReviewSelection &selection)
    : m_player(player), m_selection(selection) {
    connect(&player, &ReviewPlayer::currentTimeChanged, this, &ReviewTransport::publish);
    connect(&player, &ReviewPlayer::durationChanged, this, &ReviewTransport::publish);
    connect(&player, &ReviewPlayer::rateChanged, this, &ReviewTransport::rateChanged);
}

std::optional<ClipRange> ReviewTransport::activeRange() const {
    const Subclip *active = m_selection.activeSubclip();
    return active ? std::optional(active->range()) : std::nullopt;
}

double ReviewTransport::transportDuration() const {
    const auto range = activeRange();
    return range ? range->durationSeconds() : m_player.durationSeconds();
}

double ReviewTransport::transportTime() const {
    const auto range = activeRange();
    return range
               ? std::clamp(m_player.currentSeconds() - range->inSeconds, 0.0, transportDuration())
               : m_player.currentSeconds();
}

QString ReviewTransport::transportTimeText() const {
    return formattedTransportTime(transportTime());
}

QString ReviewTransport::transportDurationText() const {
    return QStringLiteral("  /  ") + formattedTransportTime(transportDuration());
}

QString ReviewTransport::transportText() const {
    return transportTimeText() + transportDurationText();
}

double ReviewTransport::playedFraction() const {
    return ScrubberGeometry::position(transportTime(), transportDuration());
}

QString ReviewTransport::playHelp() const {
    return isPlaying() ? QStringLiteral("Pause (Space)") : QStringLiteral("Play (Space)");
}

void ReviewTransport::setHoveringPlayer(bool hovering) {
    if (std::exchange(m_hoveringPlayer, hovering) != hovering) {
        Q_EMIT rateChanged();
    }
}

void ReviewTransport::togglePlayback() {
    if (m_player.rate() == 0) {
        m_player.setRate(1.0);
    } else {
        m_player.pause();
    }
}

void ReviewTransport::scrub(double x, double width) {
    const auto range = activeRange();
    m_player.seek((range ? range->inSeconds : 0) +
                  ScrubberGeometry::fraction(x, width) * transportDuration());
}

void ReviewTransport::scrubFilmstrip(double x, double width) {
    m_player.seek(ScrubberGeometry::fraction(x, width) * m_player.durationSeconds());
}

void ReviewTransport::run(const KeyMap::Command &command) {
    const double rate = m_player.rate();
    switch (command.action) {
    case KeyMap::Action::togglePlayback:
        togglePlayback();
        break;
    case KeyMap::Action::stopPlayback:
        m_player.setRate(0);
        break;
    case KeyMap::Action::shuttleBackward:
        m_player.setRate(rate < 0 ? std::max(rate * 2, -kMaxShuttleRate) : -1.0);
        break;
    case KeyMap::Action::shuttleForward:
        m_player.setRate(rate > 0 ? std::min(rate * 2, kMaxShuttleRate) : 1.0);
        break;
    case KeyMap::Action::stepFrames:
        m_player.stepFrames(command.argument);
        break;
    case KeyMap::Action::skip:
        m_player.seek(m_player.currentSeconds() + command.argument);
        break;
    default:
        break;
    }
}

void ReviewTransport::publish() {
    const std::pair durations(transportDuration(), clipDuration());
    const bool hasOtherDurations = std::exchange(m_publishedDurations, durations) != durations;
    if (hasOtherDurations) {
        Q_EMIT durationsChanged();
    }
    const std::pair times(transportTime(), clipTime());
    if (std::exchange(m_publishedTimes, times) != times || hasOtherDurations) {
        Q_EMIT transportChanged();
    }
}

} // namespace corvane

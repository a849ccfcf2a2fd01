// What the panes of the review screen show around the list: transport, sheets, drawers.

#include "review/list/ReviewFormats.h"

#include "platform/TextFormat.h"
#include "review/ReviewScreenState.h"

#include <algorithm>

namespace corvane {

namespace {

QVariant valueOrNull(const std::optional<double> &value) {
    return value ? QVariant(*value) : QVariant();
}

} // namespace

std::optional<ClipRange> ReviewScreenState::activeRange() const {
    const Subclip *active = activeSubclip();
    return active ? std::optional(active->range()) : std::nullopt;
}

double ReviewScreenState::transportDuration() const {
    const auto range = activeRange();
    return range ? range->durationSeconds() : m_player.durationSeconds();
}

double ReviewScreenState::transportTime() const {
    const auto range = activeRange();
    return range
               ? std::clamp(m_player.currentSeconds() - range->inSeconds, 0.0, transportDuration())
               : m_player.currentSeconds();
}

QString ReviewScreenState::transportTimeText() const {
    return formattedTransportTime(transportTime());
}

QString ReviewScreenState::transportDurationText() const {
    return QStringLiteral("  /  ") + formattedTransportTime(transportDuration());
}

QString ReviewScreenState::transportText() const {
    return transportTimeText() + transportDurationText();
}

double ReviewScreenState::playedFraction() const {
    return ScrubberGeometry::position(transportTime(), transportDuration());
}

std::optional<double> ReviewScreenState::scrubberFraction(std::optional<double> seconds) const {
    return seconds && showsPlayhead()
               ? std::optional(ScrubberGeometry::position(*seconds, transportDuration()))
               : std::nullopt;
}

std::optional<double> ReviewScreenState::shownDraftIn() const {
    return ScrubberGeometry::shownDraft(m_draftIn, activeRange());
}

std::optional<double> ReviewScreenState::shownDraftOut() const {
    return ScrubberGeometry::shownDraft(m_draftOut, activeRange());
}

QVariant ReviewScreenState::draftInFractionValue() const {
    return valueOrNull(draftInFraction());
}

QVariant ReviewScreenState::draftOutFractionValue() const {
    return valueOrNull(draftOutFraction());
}

QString ReviewScreenState::playHelp() const {
    return isPlaying() ? QStringLiteral("Pause (Space)") : QStringLiteral("Play (Space)");
}

void ReviewScreenState::setHoveringPlayer(bool hovering) {
    if (std::exchange(m_hoveringPlayer, hovering) != hovering) {
        Q_EMIT rateChanged();
    }
}

void ReviewScreenState::scrub(double x, double width) {
    const auto range = activeRange();
    m_player.seek((range ? range->inSeconds : 0) +
                  ScrubberGeometry::fraction(x, width) * transportDuration());
}

void ReviewScreenState::scrubFilmstrip(double x, double width) {
    m_player.seek(ScrubberGeometry::fraction(x, width) * m_player.durationSeconds());
}

bool ReviewScreenState::showsSubclipBars() const {
    const VideoRecord *video = selectedVideo();
    return video && !video->subclips.isEmpty() && !isInSubclipMode();
}

QString ReviewScreenState::subclipCountText() const {
    const VideoRecord *video = selectedVideo();
    return ReviewFormats::countInParentheses(video ? video->subclips.size() : 0);
}

/// With no clips at all the filter row says so, and the list is just empty.
bool ReviewScreenState::showsNoMatches() const {
    return m_list.visibleCount() == 0 && !m_list.reviewIndex().clips().empty();
}

void ReviewScreenState::openSheet(Sheet sheet) {
    if (m_sheet == Sheet::none) {
        m_sheet = sheet;
        Q_EMIT sheetsChanged();
    }
}

void ReviewScreenState::requestImport() {
    openSheet(Sheet::import);
}

void ReviewScreenState::requestExport() {
    if (hasSelects()) {
        openSheet(Sheet::exporting);
    }
}

void ReviewScreenState::requestHandoff() {
    if (hasSelects()) {
        openSheet(Sheet::handoff);
    }
}

void ReviewScreenState::dismissSheet() {
    if (std::exchange(m_sheet, Sheet::none) != Sheet::none) {
        Q_EMIT sheetsChanged();
    }
}

QString ReviewScreenState::inspectorGlyph() const {
    return showsInspector() ? QStringLiteral("chevron.left") : QStringLiteral("info.circle");
}

QString ReviewScreenState::inspectorHelp() const {
    if (!hasSelectedVideo()) {
        return QStringLiteral("Select a clip to view its info");
    }
    return m_inspectorPanelOpen ? QStringLiteral("Back to clip list")
                                : QStringLiteral("Show clip info");
}

void ReviewScreenState::toggleInspector() {
    if (hasSelectedVideo()) {
        m_inspectorPanelOpen = !m_inspectorPanelOpen;
        Q_EMIT panelsChanged();
    }
}

QString ReviewScreenState::subclipDrawerGlyph() const {
    return m_subclipDrawerOpen ? QStringLiteral("chevron.down") : QStringLiteral("chevron.up");
}

void ReviewScreenState::toggleSubclipDrawer() {
    m_subclipDrawerOpen = !m_subclipDrawerOpen;
    Q_EMIT panelsChanged();
}

void ReviewScreenState::setKeyboardFocused(bool focused) {
    if (std::exchange(m_keyboardFocused, focused) != focused) {
        Q_EMIT keyboardFocusedChanged();
    }
}

} // namespace corvane

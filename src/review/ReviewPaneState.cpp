#include "review/ReviewPaneState.h"

namespace corvane {

namespace {

const auto kSidePaneWidthKey = QStringLiteral("review.sidePaneWidth");

} // namespace

ReviewPaneState::ReviewPaneState(const ReviewSelection &selection,
                                 std::unique_ptr<QSettings> settings)
    : m_selection(selection), m_settings(std::move(settings)) {
    if (m_settings) {
        m_sidePaneWidth = std::max(0, m_settings->value(kSidePaneWidthKey).toInt());
    }
}

void ReviewPaneState::setSidePaneWidth(int width) {
    if (std::exchange(m_sidePaneWidth, width) == width) {
        return;
    }
    if (m_settings) {
        m_settings->setValue(kSidePaneWidthKey, width);
    }
    Q_EMIT sidePaneWidthChanged();
}

QString ReviewPaneState::inspectorGlyph() const {
    return showsInspector() ? QStringLiteral("chevron.left") : QStringLiteral("info.circle");
}

QString ReviewPaneState::inspectorHelp() const {
    if (!m_selection.hasSelectedVideo()) {
        return QStringLiteral("Select a clip to view its info");
    }
    return m_inspectorPanelOpen ? QStringLiteral("Back to clip list")
                                : QStringLiteral("Show clip info");
}

void ReviewPaneState::toggleInspector() {
    if (m_selection.hasSelectedVideo()) {
        m_inspectorPanelOpen = !m_inspectorPanelOpen;
        publish();
    }
}

QString ReviewPaneState::subclipDrawerGlyph() const {
    return m_subclipDrawerOpen ? QStringLiteral("chevron.down") : QStringLiteral("chevron.up");
}

void ReviewPaneState::toggleSubclipDrawer() {
    m_subclipDrawerOpen = !m_subclipDrawerOpen;
    publish();
}

bool ReviewPaneState::showsSubclipBars() const {
    const VideoRecord *video = m_selection.selectedVideo();
    return video && !video->subclips.isEmpty() && !m_selection.isInSubclipMode();
}

QString ReviewPaneState::subclipCountText() const {
    const VideoRecord *video = m_selection.selectedVideo();
    return QStringLiteral("(%1)").arg(video ? video->subclips.size() : 0);
}

void ReviewPaneState::setKeyboardFocused(bool focused) {
    if (std::exchange(m_keyboardFocused, focused) != focused) {
        Q_EMIT keyboardFocusedChanged();
    }
}

void ReviewPaneState::close() {
    m_inspectorPanelOpen = false;
    m_subclipDrawerOpen = false;
    publish();
}

void ReviewPaneState::publish() {
    const std::tuple now(m_selection.hasSelectedVideo(), m_inspectorPanelOpen, m_subclipDrawerOpen,
                         showsSubclipBars(), subclipCountText());
    if (std::exchange(m_published, now) != now) {
        Q_EMIT panesChanged();
    }
}

} // namespace corvane

#include "review/ReviewScreenState.h"

#include "mediacache/FilmstripService.h"
#include "platform/TextFormat.h"

namespace corvane {

namespace {

QString nounForRows(const ReviewState &state) {
    if (state.subclipsView) {
        return QStringLiteral("subclip");
    }
    return state.selectedOnly ? QStringLiteral("item") : QStringLiteral("clip");
}

} // namespace

ReviewScreenState::Services ReviewScreenState::mediaServices() {
    return {.filmstrip = FilmstripService::generate,
            .subclipThumbnail = SubclipThumbnails::writeFrame};
}

ReviewScreenState::ReviewScreenState(ProjectStore &store, ReviewPlayer &player, Services services,
                                     QObject *parent)
    : QObject(parent),
      m_store(store),
      m_filmstrip(std::move(services.filmstrip)),
      m_inspector(store),
      m_selection(store, m_list, player, m_filmstrip),
      m_transport(player, m_selection),
      m_marking({.store = store,
                 .player = player,
                 .selection = m_selection,
                 .transport = m_transport,
                 .list = m_list,
                 .subclips = m_subclips},
                std::move(services.subclipThumbnail)),
      m_panes(m_selection, std::move(services.settings)),
      m_edits(store, m_list, m_selection, m_marking),
      m_actions(player) {
    connect(&m_store, &ProjectStore::projectOpened, this, [this] { m_projectFile.reset(); });
    connect(&m_store, &ProjectStore::projectChanged, this, &ReviewScreenState::updateProject);
    connect(&m_filterBar, &FilterBar::stateChanged, this, &ReviewScreenState::updateFilter);
    connect(&m_selection, &ReviewSelection::changed, this, &ReviewScreenState::updateSelection);
    connect(&m_selection, &ReviewSelection::focusRequested, this, [this] {
        m_actions.clear(); // they were meant for the previous choice
        m_panes.setKeyboardFocused(true);
    });
    updateProject();
}

void ReviewScreenState::appear() {
    m_isShown = true;
    m_panes.setKeyboardFocused(true);
    requestPendingImport();
}

void ReviewScreenState::disappear() {
    m_isShown = false;
    m_panes.setKeyboardFocused(false);
    m_transport.setHoveringPlayer(false); // the player view is destroyed without a leave event
}

void ReviewScreenState::requestPendingImport() {
    if (m_isShown && m_store.project() && m_store.pendingImportOnLoad()) {
        m_store.consumePendingImport();
        Q_EMIT importRequested();
    }
}

void ReviewScreenState::updateProject() {
    const auto &project = m_store.project();
    const auto file = project ? std::optional(project->filePath) : std::nullopt;
    const bool isAnother = file != m_projectFile;
    m_projectFile = file;
    if (isAnother) {
        resetForProject();
    }
    m_list.setProject(project ? &*project : nullptr);
    m_selection.dropRemoved();
    updateCounts();
    updateSelection();
    if (isAnother) {
        requestPendingImport();
    }
}

void ReviewScreenState::resetForProject() {
    m_actions.clear();
    m_selection.reset();
    m_marking.clearDrafts();
    m_filterBar.setState({});
    answerConfirmation(false);
    Q_EMIT projectReplaced();
    m_panes.close();
}

void ReviewScreenState::updateFilter() {
    m_list.setState(m_filterBar.state());
    m_selection.forgetClickedIndex();
    updateCounts();
}

void ReviewScreenState::updateCounts() {
    m_filterBar.setCounts(m_list.visibleCount(), m_list.totalCount());
    if (std::exchange(m_hadSelects, hasSelects()) != hasSelects()) {
        Q_EMIT hasSelectsChanged();
    }
    if (std::exchange(m_showedNoMatches, showsNoMatches()) != showsNoMatches()) {
        Q_EMIT showsNoMatchesChanged();
    }
}

void ReviewScreenState::updateSelection() {
    const auto &videoId = m_selection.selectedVideoId();
    const auto &subclipId = m_selection.activeSubclipId();
    const MultiSelection &marks = m_selection.multiSelection();
    const ReviewIndex &index = m_list.reviewIndex();
    const qsizetype clipIndex = videoId ? index.indexOfClip(*videoId) : -1;
    const ReviewIndex::IndexedClip *clip = clipIndex < 0 ? nullptr : &index.clip(clipIndex);
    m_list.setHighlights(
        {videoId, subclipId, marks.multiSelectedClipIds, marks.multiSelectedSubclipIds});
    m_subclips.setClip(clip, m_projectFile ? projectFolder(*m_projectFile) : QString());
    m_subclips.setActiveSubclipId(subclipId);
    m_inspector.setVideo(clip ? std::optional(clip->video) : std::nullopt);
    m_selection.publish();
    m_panes.publish();
    m_transport.publish();
    m_marking.publish();
}

bool ReviewScreenState::showsNoMatches() const {
    return m_list.visibleCount() == 0 && !m_list.reviewIndex().clips().empty();
}

void ReviewScreenState::setVisibleSelected(bool isSelected) {
    const auto [clips, subclips] = m_list.bulkTargets();
    int changed = 0;
    if (!clips.isEmpty()) {
        changed += isSelected ? m_store.selectClips(clips) : m_store.deselectClips(clips);
    }
    if (!subclips.isEmpty()) {
        changed +=
            isSelected ? m_store.selectSubclips(subclips) : m_store.deselectSubclips(subclips);
    }
    const QString noun = nounForRows(m_filterBar.state());
    const QString done = isSelected ? QStringLiteral("Marked %1 for export")
                                    : QStringLiteral("Cleared %1 from selects");
    const QString unchanged = isSelected ? QStringLiteral("All visible %1s were already selected")
                                         : QStringLiteral("No visible %1s were selected");
    m_store.setStatus(changed > 0 ? done.arg(counted(changed, noun)) : unchanged.arg(noun));
}

} // namespace corvane

#include "review/ReviewScreenState.h"

#include "platform/ApplicationFolders.h"
#include "platform/Paths.h"
#include "review/BulkSelects.h"

namespace corvane {

ReviewScreenState::ReviewScreenState(ProjectStore &store, ReviewPlayer &player, Services services,
                                     QObject *parent)
    : QObject(parent),
      m_store(store),
      m_player(player),
      m_services(std::move(services)),
      m_filmstrip(m_services.filmstrip),
      m_inspector(store) {
    connect(&m_store, &ProjectStore::projectChanged, this, &ReviewScreenState::takeProject);
    connect(&m_filterBar, &FilterBar::stateChanged, this, &ReviewScreenState::takeFilter);
    connect(&m_player, &ReviewPlayer::currentSecondsChanged, this,
            &ReviewScreenState::publishTransport);
    connect(&m_player, &ReviewPlayer::durationSecondsChanged, this,
            &ReviewScreenState::publishTransport);
    connect(&m_player, &ReviewPlayer::rateChanged, this, &ReviewScreenState::rateChanged);
    takeProject();
}

void ReviewScreenState::appear() {
    m_isShown = true;
    setKeyboardFocused(true);
    openPendingImport();
}

void ReviewScreenState::disappear() {
    m_isShown = false;
    setKeyboardFocused(false);
    setHoveringPlayer(false); // the pane goes without saying that the pointer left it
}

void ReviewScreenState::openPendingImport() {
    if (m_isShown && m_store.project() && m_store.pendingImportOnLoad()) {
        m_store.consumePendingImport();
        openSheet(Sheet::import);
    }
}

/// The document has changed, or is another one.
void ReviewScreenState::takeProject() {
    const auto &project = m_store.project();
    const auto file = project ? std::optional(project->filePath) : std::nullopt;
    const bool isAnother = file != m_projectFile;
    m_projectFile = file;
    if (isAnother) {
        leaveProject();
    }
    m_list.setProject(project ? &*project : nullptr);
    dropWhatIsGone();
    updateList();
    publishSelection();
    if (isAnother) {
        openPendingImport();
    }
}

void ReviewScreenState::leaveProject() {
    if (m_selectedVideoId) {
        m_player.load({}); // the project's files are let go
    }
    leaveSubclip();
    setDrafts({}, {});
    m_selectedVideoId.reset();
    m_lastRow.reset();
    m_lastPlace.reset();
    m_marks.clear();
    m_filmstrip.clear();
    m_filterBar.setState({});
    answerConfirmation(false);
    dismissSheet();
    m_inspectorPanelOpen = false;
    m_subclipDrawerOpen = false;
    Q_EMIT panelsChanged();
}

/// The player never holds a range of a subclip that isn't there any more, and a clip that isn't
/// there, which an undo may bring back, isn't heard.
void ReviewScreenState::dropWhatIsGone() {
    if (m_selectedVideoId && !hasSelectedVideo() && isPlaying()) {
        m_player.pause();
    }
    if (m_activeSubclipId && !isInSubclipMode() &&
        m_list.subclipKeys({*m_activeSubclipId}).isEmpty()) {
        leaveSubclip();
    }
}

void ReviewScreenState::takeFilter() {
    m_list.setState(m_filterBar.state());
    m_lastPlace.reset();
    updateList();
}

void ReviewScreenState::updateList() {
    m_filterBar.setCounts(m_list.visibleCount(), m_list.totalCount());
    if (std::exchange(m_hadSelects, hasSelects()) != hasSelects()) {
        Q_EMIT hasSelectsChanged();
    }
    if (std::exchange(m_showedNoMatches, showsNoMatches()) != showsNoMatches()) {
        Q_EMIT showsNoMatchesChanged();
    }
}

/// Hands what is selected to all who show it.
void ReviewScreenState::publishSelection() {
    const qsizetype position =
        m_selectedVideoId ? m_list.reviewIndex().indexOfClip(*m_selectedVideoId) : -1;
    const ReviewIndex::IndexedClip *clip =
        position < 0 ? nullptr : &m_list.reviewIndex().clip(position);
    m_list.setHighlights({m_selectedVideoId, m_activeSubclipId, m_marks.multiSelectedClipIds,
                          m_marks.multiSelectedSubclipIds});
    m_subclips.setClip(clip, projectFolderPath());
    m_subclips.setActiveSubclipId(m_activeSubclipId);
    m_inspector.setVideo(clip ? std::optional(clip->video) : std::nullopt);
    publishChanges();
}

void ReviewScreenState::publishChanges() {
    Published now{.selectedVideoId = selectedVideoIdText(),
                  .hasSelectedVideo = hasSelectedVideo(),
                  .activeSubclipName =
                      isInSubclipMode() ? std::optional(activeSubclipName()) : std::nullopt,
                  .showsSubclipBars = showsSubclipBars(),
                  .subclipCountText = subclipCountText()};
    const Published before = std::exchange(m_published, std::move(now));
    if (before != m_published) {
        Q_EMIT selectionChanged();
    }
    if (before.hasSelectedVideo != m_published.hasSelectedVideo) {
        Q_EMIT panelsChanged();
    }
    publishTransport();
}

/// Many times a second while a clip plays, so that it tells no more than what moves.
void ReviewScreenState::publishTransport() {
    const std::pair durations(transportDuration(), clipDuration());
    const bool isOfOtherLength = std::exchange(m_publishedDurations, durations) != durations;
    if (isOfOtherLength) {
        Q_EMIT durationsChanged();
    }
    const std::pair times(transportTime(), clipTime());
    if (std::exchange(m_publishedTimes, times) != times || isOfOtherLength) {
        Q_EMIT transportChanged();
    }
    publishDrafts();
}

void ReviewScreenState::publishDrafts() {
    const std::pair drafts(draftInFraction(), draftOutFraction());
    if (std::exchange(m_publishedDrafts, drafts) != drafts) {
        Q_EMIT draftsChanged();
    }
}

void ReviewScreenState::selectClip(const QString &videoId) {
    const VideoRecord *video = m_list.video(videoId);
    if (!video) {
        return;
    }
    setKeyboardFocused(true);
    if (m_selectedVideoId == videoId) {
        exitSubclipMode();
        return;
    }
    m_selectedVideoId = videoId;
    m_activeSubclipId.reset(); // the load takes the range back
    m_draftIn.reset();
    m_draftOut.reset();
    const QString media = mediaPath(*video);
    m_filmstrip.clear();
    m_player.load(media);
    m_filmstrip.start(videoId, media,
                      m_store.fileURL() ? cacheRoot(*m_store.fileURL())
                                        : paths::joined(applicationFolders::applicationSupport(),
                                                        QStringLiteral(".corvane-cache")));
    publishSelection();
}

QString ReviewScreenState::projectFolderPath() const {
    return m_store.fileURL() ? projectFolder(*m_store.fileURL()) : QString();
}

QString ReviewScreenState::mediaPath(const VideoRecord &video) const {
    return video.sourcePath.startsWith(QLatin1Char('/'))
               ? video.sourcePath
               : paths::joined(projectFolderPath(), video.sourcePath);
}

void ReviewScreenState::clickRow(int row, Qt::KeyboardModifiers modifiers) {
    if (row < 0 || row >= m_list.rowCount()) {
        return;
    }
    const SidebarRowId id = m_list.rowId(row);
    m_lastRow = id;
    m_lastPlace = row;
    if (modifiers.testFlag(Qt::ShiftModifier)) {
        extendSelection(id);
    } else if (modifiers.testFlag(Qt::ControlModifier)) {
        m_marks.toggle(id);
        publishSelection();
    } else {
        clearMultiSelection();
        if (id.isSubclip()) {
            selectSubclip(id.videoId, *id.subclipId);
        } else {
            selectClip(id.videoId);
        }
    }
}

void ReviewScreenState::moveSelection(int rows, Qt::KeyboardModifiers modifiers) {
    const QList<SidebarRowId> listed = m_list.orderedRowIds();
    if (listed.isEmpty() || rows == 0) {
        return;
    }
    const qsizetype from = m_lastRow ? listed.indexOf(*m_lastRow) : -1;
    // One that an edit took away, as a rejected clip: those below it have moved up to its place.
    const qsizetype gone =
        rows > 0 ? m_lastPlace.value_or(0) - 1 : m_lastPlace.value_or(listed.size());
    const qsizetype start = from >= 0 ? from : gone;
    const auto row = int(std::clamp(start + rows, qsizetype(0), listed.size() - 1));
    clickRow(row, modifiers & Qt::ShiftModifier);
    Q_EMIT rowChosen(row);
}

void ReviewScreenState::extendSelection(const SidebarRowId &row) {
    m_marks.extend(row, currentAnchor(), m_list.orderedRowIds());
    publishSelection();
}

std::optional<SidebarRowId> ReviewScreenState::currentAnchor() const {
    const auto rowOfSubclip = [this](const std::optional<QString> &id) {
        const QList<SubclipKey> found = id ? m_list.subclipKeys({*id}) : QList<SubclipKey>();
        return found.isEmpty() ? std::optional<SidebarRowId>()
                               : SidebarRowId{found.first().videoId, found.first().subclipId};
    };
    if (const auto row = rowOfSubclip(m_marks.subclipMultiSelectAnchor)) {
        return row;
    }
    if (m_marks.clipMultiSelectAnchor) {
        return SidebarRowId{*m_marks.clipMultiSelectAnchor, {}};
    }
    if (const auto row = rowOfSubclip(m_activeSubclipId)) {
        return row;
    }
    return m_selectedVideoId ? std::optional(SidebarRowId{*m_selectedVideoId, {}}) : std::nullopt;
}

void ReviewScreenState::clearMultiSelection() {
    if (m_marks != MultiSelection()) {
        m_marks.clear();
        publishSelection();
    }
}

void ReviewScreenState::addToSelects() {
    BulkSelects::addVisible(m_store, m_filterBar.state(), m_list);
}

void ReviewScreenState::removeFromSelects() {
    BulkSelects::removeVisible(m_store, m_filterBar.state(), m_list);
}

} // namespace corvane

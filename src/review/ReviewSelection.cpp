#include "review/ReviewSelection.h"

#include "platform/ApplicationFolders.h"
#include "platform/Paths.h"
#include "platform/Tasks.h"
#include "platform/TextFormat.h"
#include "review/list/ReviewFormats.h"

#include <algorithm>

namespace corvane {

ReviewSelection::ReviewSelection(ProjectStore &store, ReviewListModel &list, ReviewPlayer &player,
                                 FilmstripLoader &filmstrip)
    : m_store(store), m_list(list), m_player(player), m_filmstrip(filmstrip) {}

void ReviewSelection::selectClip(const QString &videoId) {
    const VideoRecord *video = m_list.video(videoId);
    if (!video) {
        return;
    }
    Q_EMIT focusRequested();
    if (m_selectedVideoId == videoId) {
        exitSubclipMode();
        return;
    }
    m_selectedVideoId = videoId;
    m_activation.reset();
    m_activeSubclipId.reset(); // loading clears the player's range
    Q_EMIT clipSelected();
    const auto &projectFile = m_store.fileURL();
    const QString media =
        resolvedAgainstProject(video->sourcePath, projectFile.value_or(QString()));
    m_filmstrip.clear();
    detach(m_player.load(media));
    m_filmstrip.start(videoId, media,
                      projectFile ? cacheRoot(*projectFile)
                                  : paths::joined(applicationFolders::applicationSupport(),
                                                  QStringLiteral(".corvane-cache")));
    Q_EMIT changed();
}

bool ReviewSelection::isAudioOnly() const {
    const VideoRecord *video = selectedVideo();
    return video && video->isAudioOnly();
}

const Subclip *ReviewSelection::activeSubclip() const {
    return m_activeSubclipId && m_selectedVideoId
               ? m_list.subclip({*m_selectedVideoId, *m_activeSubclipId})
               : nullptr;
}

QString ReviewSelection::activeSubclipName() const {
    const Subclip *active = activeSubclip();
    return active ? inOneLine(ReviewFormats::displayName(*active)) : QString();
}

void ReviewSelection::selectSubclip(const QString &videoId, const QString &subclipId) {
    const SubclipKey key{videoId, subclipId};
    const Subclip *selected = m_list.subclip(key);
    const SidebarRowId row{videoId, subclipId};
    if (m_clickedRow != row) {
        m_clickedRow = row;
        m_clickedIndex.reset();
    }
    if (selected && m_selectedVideoId == videoId) {
        Q_EMIT focusRequested();
        m_activation.reset();
        activateSubclip(*selected);
        if (!m_player.isReady()) { // it clamps seeks to the start of the clip
            activateOnceReady(key);
        }
    } else if (selected) {
        selectClip(videoId);
        activateOnceReady(key);
    }
}

void ReviewSelection::activateOnceReady(const SubclipKey &key) {
    m_activation = std::make_unique<PlayerReadiness>(m_player, m_store.clock(), [this, key] {
        if (const Subclip *subclip = m_list.subclip(key)) {
            activateSubclip(*subclip);
        }
    });
}

void ReviewSelection::activateSubclip(const Subclip &subclip) {
    const ClipRange range = subclip.range();
    m_activeSubclipId = subclip.id;
    m_player.clearPlaybackConstraint(); // the previous range would clamp the seek
    m_player.seek(range.inSeconds);
    m_player.playConstrained(range.inSeconds, range.outSeconds);
    Q_EMIT changed();
}

void ReviewSelection::exitSubclipMode() {
    m_activation.reset();
    if (m_activeSubclipId) {
        leaveSubclip();
        Q_EMIT changed();
    }
}

void ReviewSelection::leaveSubclip() {
    if (m_activeSubclipId) {
        m_activeSubclipId.reset();
        m_player.clearPlaybackConstraint();
    }
}

void ReviewSelection::clickRow(int row, Qt::KeyboardModifiers modifiers) {
    if (row < 0 || row >= m_list.rowCount()) {
        return;
    }
    const SidebarRowId id = m_list.rowId(row);
    m_clickedRow = id;
    m_clickedIndex = row;
    if (modifiers.testFlag(Qt::ShiftModifier)) {
        extendSelection(id);
    } else if (modifiers.testFlag(Qt::ControlModifier)) {
        m_marks.toggle(id);
        Q_EMIT changed();
    } else {
        clearMultiSelection();
        if (id.isSubclip()) {
            selectSubclip(id.videoId, *id.subclipId);
        } else {
            selectClip(id.videoId);
        }
    }
}

void ReviewSelection::moveSelection(int rows, Qt::KeyboardModifiers modifiers) {
    const QList<SidebarRowId> listed = m_list.orderedRowIds();
    if (listed.isEmpty() || rows == 0) {
        return;
    }
    const qsizetype found = m_clickedRow ? listed.indexOf(*m_clickedRow) : -1;
    // The rows below a removed row have moved up by one.
    const qsizetype ofRemoved =
        rows > 0 ? m_clickedIndex.value_or(0) - 1 : m_clickedIndex.value_or(listed.size());
    const qsizetype start = found >= 0 ? found : ofRemoved;
    const auto row = int(std::clamp(start + rows, qsizetype(0), listed.size() - 1));
    clickRow(row, modifiers & Qt::ShiftModifier);
    Q_EMIT rowChosen(row);
}

void ReviewSelection::extendSelection(const SidebarRowId &row) {
    m_marks.extend(row, currentAnchor(), m_list.orderedRowIds());
    Q_EMIT changed();
}

std::optional<SidebarRowId> ReviewSelection::currentAnchor() const {
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

void ReviewSelection::clearMultiSelection() {
    if (std::exchange(m_marks, {}) != MultiSelection()) {
        Q_EMIT changed();
    }
}

void ReviewSelection::reset() {
    if (m_selectedVideoId) {
        detach(m_player.load({})); // closes the project's files
    }
    m_activation.reset();
    leaveSubclip();
    m_selectedVideoId.reset();
    m_clickedRow.reset();
    m_clickedIndex.reset();
    m_marks = {};
    m_filmstrip.clear();
}

void ReviewSelection::dropRemoved() {
    if (m_selectedVideoId && !hasSelectedVideo() && m_player.rate() != 0) {
        m_player.pause();
    }
    if (m_activeSubclipId && !isInSubclipMode() &&
        m_list.subclipKeys({*m_activeSubclipId}).isEmpty()) {
        leaveSubclip();
    }
}

void ReviewSelection::publish() {
    const std::tuple now(selectedVideoIdText(), hasSelectedVideo(), isAudioOnly(),
                         isInSubclipMode() ? std::optional(activeSubclipName()) : std::nullopt);
    if (std::exchange(m_published, now) != now) {
        Q_EMIT selectionChanged();
    }
}

} // namespace corvane

#include "review/list/ReviewListing.h"

namespace corvane {

ReviewListing::ReviewListing(const ReviewState &state, const ReviewIndex &index)
    : m_list(state.shownList()),
      m_index(index),
      m_filter(state),
      m_query(state.normalizedQuery()) {}

ReviewListing::Rows ReviewListing::rows(const std::vector<int> &order) const {
    Rows rows;
    rows.keys.reserve(m_index.subclipCount() + qsizetype(order.size()));
    for (const int clipIndex : order) {
        const qsizetype before = rows.keys.size();
        appendRows(rows.keys, clipIndex);
        rows.visibleCount += rows.keys.size() > before;
    }
    if (m_list != ReviewState::ShownList::visibleVideos) {
        rows.visibleCount = rows.keys.size();
    }
    return rows;
}

void ReviewListing::appendRows(QList<Key> &rows, qsizetype clipIndex) const {
    const ReviewIndex::IndexedClip &clip = m_index.clip(clipIndex);
    if (!m_query.isEmpty() && !clip.texts.contains(m_query)) {
        return;
    }
    if (m_list == ReviewState::ShownList::visibleVideos) {
        appendClipWithSubclips(rows, clip);
    } else {
        appendPassing(rows, clip);
    }
}

void ReviewListing::appendClipWithSubclips(QList<Key> &rows,
                                           const ReviewIndex::IndexedClip &clip) const {
    if (m_filter.passes(clip.flags)) {
        rows.append(clip.key);
        for (const ReviewIndex::IndexedSubclip &subclip : clip.subclips) {
            rows.append(subclip.key);
        }
    }
}

void ReviewListing::appendPassing(QList<Key> &rows, const ReviewIndex::IndexedClip &clip) const {
    if (m_list == ReviewState::ShownList::mixedRows && m_filter.passes(clip.flags)) {
        rows.append(clip.key);
    }
    const bool clipMatches = m_query.isEmpty() || clip.texts.clipContains(m_query);
    for (size_t index = 0; index < clip.subclips.size(); ++index) {
        const Subclip &subclip = clip.video->subclips.at(clip.subclips[index].index);
        if (m_filter.passes(subclip, clip.flags) &&
            (clipMatches || clip.texts.subclipContains(index, m_query))) {
            rows.append(clip.subclips[index].key);
        }
    }
}

QList<MixedSidebarRow> ReviewListing::shownRows(const std::vector<int> &order) const {
    const QList<Key> keys = rows(order).keys;
    QList<MixedSidebarRow> shown;
    for (const Key key : keys) {
        const ReviewIndex::Entry entry = m_index.entry(key);
        const VideoItem &video = m_index.clip(entry.clip).video;
        if (!entry.isSubclip()) {
            shown.append({video, {}});
        } else if (m_list != ReviewState::ShownList::visibleVideos) {
            shown.append({video, m_index.subclip(entry)});
        }
    }
    return shown;
}

qsizetype ReviewListing::totalCount() const {
    const auto clips = qsizetype(m_index.clips().size());
    switch (m_list) {
    case ReviewState::ShownList::visibleVideos:
        return clips;
    case ReviewState::ShownList::visibleSubclips:
        return m_index.subclipCount();
    case ReviewState::ShownList::mixedRows:
        return clips + m_index.subclipCount();
    }
    return 0;
}

} // namespace corvane

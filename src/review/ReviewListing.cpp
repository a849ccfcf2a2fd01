#include "review/ReviewListing.h"

namespace corvane {

ReviewListing::ReviewListing(const ReviewState &state, const ReviewIndex &index)
    : m_state(state), m_index(index), m_filter(state), m_query(m_filter.query()) {}

ReviewListing::Rows ReviewListing::rows(const std::vector<int> &order) const {
    const bool hasInlineSubclips = !m_state.subclipsView && !m_state.selectedOnly;
    Rows rows;
    rows.keys.reserve(size_t(m_index.subclipCount()) + order.size());
    for (const int position : order) {
        const size_t before = rows.keys.size();
        appendRows(rows.keys, position);
        rows.visibleCount += rows.keys.size() > before;
    }
    if (!hasInlineSubclips) {
        rows.visibleCount = qsizetype(rows.keys.size());
    }
    return rows;
}

void ReviewListing::appendRows(std::vector<Key> &rows, qsizetype position) const {
    const ReviewIndex::IndexedClip &clip = m_index.clip(position);
    // The texts first: they rule most clips out without a look at the record.
    if (!m_query.isEmpty() && !clip.texts.hold(m_query)) {
        return;
    }
    if (m_state.subclipsView || m_state.selectedOnly) {
        appendPassing(rows, clip);
    } else {
        appendClipWithSubclips(rows, clip);
    }
}

void ReviewListing::appendClipWithSubclips(std::vector<Key> &rows,
                                           const ReviewIndex::IndexedClip &clip) const {
    if (m_filter.passesUnsearched(clip.flags)) {
        rows.push_back(clip.key);
        for (const ReviewIndex::IndexedSubclip &subclip : clip.subclips) {
            rows.push_back(subclip.key);
        }
    }
}

void ReviewListing::appendPassing(std::vector<Key> &rows,
                                  const ReviewIndex::IndexedClip &clip) const {
    if (!m_state.subclipsView && m_filter.passesUnsearched(clip.flags)) {
        rows.push_back(clip.key);
    }
    const bool clipIsFound = m_query.isEmpty() || clip.texts.clipHolds(m_query);
    for (size_t which = 0; which < clip.subclips.size(); ++which) {
        const Subclip &subclip = clip.video->subclips.at(clip.subclips[which].place);
        if (m_filter.passesUnsearched(subclip, *clip.video) &&
            (clipIsFound || clip.texts.subclipHolds(which, m_query))) {
            rows.push_back(clip.subclips[which].key);
        }
    }
}

} // namespace corvane

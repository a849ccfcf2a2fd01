#pragma once

#include "review/list/MixedSidebarRow.h"
#include "review/list/ReviewIndex.h"
#include "review/list/ReviewState.h"

#include <QList>

namespace corvane {

/// The rows of the list that a state shows, as keys of an index. The state and the index must
/// outlive it and must not change meanwhile. Listing reads every clip once.
class ReviewListing {
  public:
    using Key = ReviewIndex::Key;

    ReviewListing(const ReviewState &state, const ReviewIndex &index);

    struct Rows {
        QList<Key> keys;            ///< including inline subclips
        qsizetype visibleCount = 0; ///< not counting inline subclips
    };
    /// All rows; `order` is that of `ClipOrder`.
    Rows rows(const std::vector<int> &order) const;
    /// Appends the rows of one clip, which are adjacent in every list.
    void appendRows(QList<Key> &rows, qsizetype clipIndex) const;
    /// The rows without inline subclips, as values.
    QList<MixedSidebarRow> shownRows(const std::vector<int> &order) const;
    /// Number of rows without any filter, not counting inline subclips.
    qsizetype totalCount() const;

  private:
    void appendClipWithSubclips(QList<Key> &rows, const ReviewIndex::IndexedClip &clip) const;
    void appendPassing(QList<Key> &rows, const ReviewIndex::IndexedClip &clip) const;

    ReviewState::ShownList m_list;
    const ReviewIndex &m_index;
    ReviewFilter m_filter;
    SearchQuery m_query;
};

} // namespace corvane

#pragma once

#include "review/ReviewIndex.h"
#include "review/ReviewState.h"

namespace corvane {

/// The list of the review screen as keys of the index: the same rows as `ReviewLists` gives, for a
/// list that is made anew at every keystroke. Valid as long as the state and the index.
class ReviewListing {
  public:
    using Key = ReviewIndex::Key;

    ReviewListing(const ReviewState &state, const ReviewIndex &index);

    /// All rows, inline subclips included, of the clips in the order given.
    struct Rows {
        std::vector<Key> keys;
        qsizetype visibleCount = 0; ///< inline subclips not counted
    };
    Rows rows(const std::vector<int> &order) const;
    /// Appends the rows that one clip has in the list, which stand together; maybe none.
    void appendRows(std::vector<Key> &rows, qsizetype position) const;

  private:
    void appendClipWithSubclips(std::vector<Key> &rows, const ReviewIndex::IndexedClip &clip) const;
    void appendPassing(std::vector<Key> &rows, const ReviewIndex::IndexedClip &clip) const;

    const ReviewState &m_state;
    const ReviewIndex &m_index;
    ReviewFilter m_filter;
    SearchQuery m_query;
};

} // namespace corvane

#pragma once

#include "review/list/ReviewIndex.h"
#include "review/list/ReviewState.h"

#include <array>

namespace corvane {

/// The order of a project's clips in each list, computed on first use and updated with the index.
/// Only `ReviewState::ShownList::visibleVideos` is sorted; the sorts are stable. References stay
/// valid until the next call.
class ClipOrder {
  public:
    /// To be called after every update of the index.
    void update(const ReviewIndex &index, const ReviewIndex::Change &change);

    /// Indexes of all clips in the order of the list.
    const std::vector<int> &order(const ReviewState &state, ReviewIndex &index);
    /// The inverse: each clip's position in that order.
    const std::vector<int> &ranks(const ReviewState &state, ReviewIndex &index);

  private:
    struct SortedClips {
        std::vector<int> order;   ///< empty if not computed
        std::vector<int> ranks;   ///< likewise
        std::vector<double> keys; ///< by clip, largest first; empty if sorted by name
    };

    SortedClips &sorted(ReviewState::Sort sort, ReviewIndex &index);
    const std::vector<int> &projectOrder(const ReviewIndex &index);
    static void sortByName(SortedClips &sorted, ReviewIndex &index);
    static void sortByKey(ReviewState::Sort sort, SortedClips &sorted, const ReviewIndex &index);
    static void moveClip(SortedClips &sorted, int clip, double key);

    std::array<SortedClips, rawValues<ReviewState::Sort>.size()> m_sorted;
    std::vector<int> m_projectOrder; ///< 0, 1, 2...
};

} // namespace corvane

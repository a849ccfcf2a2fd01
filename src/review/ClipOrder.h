#pragma once

#include "review/ReviewIndex.h"
#include "review/ReviewState.h"

#include <array>

namespace corvane {

/// The clips' orders under each sort, made when they are first asked for and kept in step with the
/// index. Clips that tie stand in project order.
class ClipOrder {
  public:
    /// Takes over what an update of the index told.
    void update(const ReviewIndex &index, const ReviewIndex::Change &change);

    /// All clips' positions, in the order of the sort. Valid until the next call.
    const std::vector<int> &order(ReviewState::Sort sort, ReviewIndex &index);
    /// Where each clip stands in that order, by its position.
    const std::vector<int> &ranks(ReviewState::Sort sort, ReviewIndex &index);

  private:
    struct SortedClips {
        std::vector<int> order;   ///< empty while not known
        std::vector<int> ranks;   ///< likewise
        std::vector<double> keys; ///< by position, largest first; not with names
    };

    void sortByName(SortedClips &sorted, ReviewIndex &index) const;
    void sortByKey(ReviewState::Sort sort, SortedClips &sorted, const ReviewIndex &index) const;
    static void moveClip(SortedClips &sorted, int position, double key);

    std::array<SortedClips, RawValues<ReviewState::Sort>::table.size()> m_sorted;
};

} // namespace corvane

#include "review/ClipOrder.h"

#include "platform/TextFormat.h"

#include <algorithm>
#include <numeric>

namespace corvane {

namespace {

/// More changes at once than this, and sorting anew is as quick as moving each.
constexpr size_t kMostMoves = 16;

double sortKey(ReviewState::Sort sort, const VideoRecord &video) {
    switch (sort) {
    case ReviewState::Sort::filename:
        break;
    case ReviewState::Sort::imported:
        return double(video.createdAt.toMSecsSinceEpoch());
    case ReviewState::Sort::rating:
        return video.rating;
    case ReviewState::Sort::duration:
        return video.durationSeconds;
    }
    return 0;
}

} // namespace

void ClipOrder::update(const ReviewIndex &index, const ReviewIndex::Change &change) {
    for (size_t which = 0; which < m_sorted.size(); ++which) {
        const auto sort = ReviewState::Sort(which);
        SortedClips &sorted = m_sorted[which];
        const bool isByName = sort == ReviewState::Sort::filename;
        const auto isRenamed = [&](const ReviewIndex::ChangedClip &changed) {
            return changed.before->fileName != index.clip(changed.position).video->fileName;
        };
        const bool isStale =
            change.clipsMoved || (isByName ? std::ranges::any_of(change.changed, isRenamed)
                                           : change.changed.size() > kMostMoves);
        if (isStale) {
            sorted = {};
        } else if (isByName) {
            continue;
        } else if (!sorted.order.empty()) {
            for (const ReviewIndex::ChangedClip &changed : change.changed) {
                moveClip(sorted, changed.position,
                         sortKey(sort, *index.clip(changed.position).video));
            }
        }
    }
}

void ClipOrder::moveClip(SortedClips &sorted, int position, double key) {
    if (std::exchange(sorted.keys[size_t(position)], key) == key) {
        return;
    }
    sorted.order.erase(std::ranges::find(sorted.order, position));
    const auto precedes = [&](int left, int right) {
        const double leftKey = sorted.keys[size_t(left)];
        const double rightKey = sorted.keys[size_t(right)];
        return leftKey > rightKey || (leftKey == rightKey && left < right);
    };
    sorted.order.insert(std::ranges::lower_bound(sorted.order, position, precedes), position);
    sorted.ranks.clear();
}

const std::vector<int> &ClipOrder::order(ReviewState::Sort sort, ReviewIndex &index) {
    SortedClips &sorted = m_sorted[size_t(sort)];
    if (sorted.order.size() != index.clips().size()) {
        sorted.order.resize(index.clips().size());
        std::iota(sorted.order.begin(), sorted.order.end(), 0);
        sorted.ranks.clear();
        if (sort == ReviewState::Sort::filename) {
            sortByName(sorted, index);
        } else {
            sortByKey(sort, sorted, index);
        }
    }
    return sorted.order;
}

const std::vector<int> &ClipOrder::ranks(ReviewState::Sort sort, ReviewIndex &index) {
    const std::vector<int> &sortedOrder = order(sort, index);
    std::vector<int> &ranks = m_sorted[size_t(sort)].ranks;
    if (ranks.size() != sortedOrder.size()) {
        ranks.resize(sortedOrder.size());
        for (size_t rank = 0; rank < sortedOrder.size(); ++rank) {
            ranks[size_t(sortedOrder[rank])] = int(rank);
        }
    }
    return ranks;
}

/// Making a name's key costs about as much as one comparison of names, and a sort compares each
/// name many times.
void ClipOrder::sortByName(SortedClips &sorted, ReviewIndex &index) const {
    const QCollator collator = fileNameCollator();
    for (size_t position = 0; position < sorted.order.size(); ++position) {
        index.nameKey(qsizetype(position), collator);
    }
    std::ranges::stable_sort(sorted.order, [&](int left, int right) {
        return index.clip(left).nameKey->compare(*index.clip(right).nameKey) < 0;
    });
}

void ClipOrder::sortByKey(ReviewState::Sort sort, SortedClips &sorted,
                          const ReviewIndex &index) const {
    sorted.keys.resize(sorted.order.size());
    for (size_t position = 0; position < sorted.keys.size(); ++position) {
        sorted.keys[position] = sortKey(sort, *index.clips()[position].video);
    }
    std::ranges::stable_sort(sorted.order, std::ranges::greater(),
                             [&](int position) { return sorted.keys[size_t(position)]; });
}

} // namespace corvane

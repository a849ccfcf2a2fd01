#include "review/list/ClipOrder.h"

#include "platform/TextFormat.h"

#include <algorithm>
#include <numeric>

namespace corvane {

namespace {

/// Above this number of changed clips, sorting all of them is as fast as moving each.
constexpr size_t kMaxMoves = 16;

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
            return changed.before->fileName != index.clip(changed.index).video->fileName;
        };
        const bool isStale =
            change.clipsMoved || (isByName ? std::ranges::any_of(change.changed, isRenamed)
                                           : change.changed.size() > kMaxMoves);
        if (isStale) {
            sorted = {};
        } else if (isByName) {
            continue;
        } else if (!sorted.order.empty()) {
            for (const ReviewIndex::ChangedClip &changed : change.changed) {
                moveClip(sorted, changed.index, sortKey(sort, *index.clip(changed.index).video));
            }
        }
    }
}

void ClipOrder::moveClip(SortedClips &sorted, int clip, double key) {
    if (std::exchange(sorted.keys[size_t(clip)], key) == key) {
        return;
    }
    sorted.order.erase(std::ranges::find(sorted.order, clip));
    const auto precedes = [&](int left, int right) {
        const double leftKey = sorted.keys[size_t(left)];
        const double rightKey = sorted.keys[size_t(right)];
        return leftKey > rightKey || (leftKey == rightKey && left < right);
    };
    sorted.order.insert(std::ranges::lower_bound(sorted.order, clip, precedes), clip);
    sorted.ranks.clear();
}

ClipOrder::SortedClips &ClipOrder::sorted(ReviewState::Sort sort, ReviewIndex &index) {
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
    return sorted;
}

const std::vector<int> &ClipOrder::projectOrder(const ReviewIndex &index) {
    if (m_projectOrder.size() != index.clips().size()) {
        m_projectOrder.resize(index.clips().size());
        std::iota(m_projectOrder.begin(), m_projectOrder.end(), 0);
    }
    return m_projectOrder;
}

const std::vector<int> &ClipOrder::order(const ReviewState &state, ReviewIndex &index) {
    return state.shownList() == ReviewState::ShownList::visibleVideos
               ? sorted(state.sort, index).order
               : projectOrder(index);
}

const std::vector<int> &ClipOrder::ranks(const ReviewState &state, ReviewIndex &index) {
    if (state.shownList() != ReviewState::ShownList::visibleVideos) {
        return projectOrder(index);
    }
    SortedClips &clips = sorted(state.sort, index);
    if (clips.ranks.size() != clips.order.size()) {
        clips.ranks.resize(clips.order.size());
        for (size_t rank = 0; rank < clips.order.size(); ++rank) {
            clips.ranks[size_t(clips.order[rank])] = int(rank);
        }
    }
    return clips.ranks;
}

/// Computes the sort keys first, because a sort compares each name many times.
void ClipOrder::sortByName(SortedClips &sorted, ReviewIndex &index) {
    const QCollator collator = fileNameCollator();
    for (size_t clip = 0; clip < sorted.order.size(); ++clip) {
        index.nameKey(qsizetype(clip), collator);
    }
    std::ranges::stable_sort(sorted.order, [&](int left, int right) {
        return index.clip(left).nameKey->compare(*index.clip(right).nameKey) < 0;
    });
}

void ClipOrder::sortByKey(ReviewState::Sort sort, SortedClips &sorted, const ReviewIndex &index) {
    sorted.keys.resize(sorted.order.size());
    for (size_t clip = 0; clip < sorted.keys.size(); ++clip) {
        sorted.keys[clip] = sortKey(sort, *index.clips()[clip].video);
    }
    std::ranges::stable_sort(sorted.order, std::ranges::greater(),
                             [&](int clip) { return sorted.keys[size_t(clip)]; });
}

} // namespace corvane

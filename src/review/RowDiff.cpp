#include "review/RowDiff.h"

#include <algorithm>
#include <functional>

namespace corvane::rowDiff {

namespace {

/// A set of keys that is asked for each of many.
class KeySet {
  public:
    explicit KeySet(std::span<const Key> keys)
        : m_holds(keys.empty() ? 0 : size_t(std::ranges::max(keys)) + 1) {
        for (const Key key : keys) {
            m_holds[key] = 1;
        }
    }
    bool contains(Key key) const { return key < m_holds.size() && m_holds[key] != 0; }

  private:
    std::vector<quint8> m_holds;
};

/// How many rows two lists have in common from the front, and then from the back.
struct CommonEnds {
    CommonEnds(std::span<const Key> before, std::span<const Key> after) {
        const size_t shorter = std::min(before.size(), after.size());
        while (front < shorter && before[front] == after[front]) {
            ++front;
        }
        while (back < shorter - front &&
               before[before.size() - 1 - back] == after[after.size() - 1 - back]) {
            ++back;
        }
    }
    std::span<const Key> middle(std::span<const Key> rows) const {
        return rows.subspan(front, rows.size() - front - back);
    }

    size_t front = 0;
    size_t back = 0;
};

/// Joins those with the fewest rows between them until there are few enough.
void joinClosest(std::vector<Hunk> &hunks) {
    if (hunks.size() <= kMostHunks) {
        return;
    }
    const auto gapAfter = [&](size_t index) {
        return hunks[index + 1].oldBegin - hunks[index].oldEnd;
    };
    std::vector<qsizetype> gaps;
    for (size_t index = 0; index + 1 < hunks.size(); ++index) {
        gaps.push_back(gapAfter(index));
    }
    const auto widest = gaps.begin() + kMostHunks - 1;
    std::ranges::nth_element(gaps, widest, std::greater<>());
    const qsizetype joined = *widest; // gaps up to this one are closed
    std::vector<Hunk> result{hunks.front()};
    for (size_t index = 1; index < hunks.size(); ++index) {
        if (gapAfter(index - 1) <= joined) {
            result.back().oldEnd = hunks[index].oldEnd;
            result.back().newEnd = hunks[index].newEnd;
        } else {
            result.push_back(hunks[index]);
        }
    }
    hunks = std::move(result);
}

} // namespace

std::vector<Key> common(std::span<const Key> rows, std::span<const Key> others) {
    const KeySet set(others);
    std::vector<Key> kept;
    kept.reserve(std::min(rows.size(), others.size()));
    std::ranges::copy_if(rows, std::back_inserter(kept),
                         [&](Key key) { return set.contains(key); });
    return kept;
}

std::vector<Hunk> hunks(std::span<const Key> before, std::span<const Key> after) {
    const CommonEnds ends(before, after);
    const KeySet staying(ends.middle(after));
    const KeySet known(ends.middle(before));
    const size_t oldEnd = before.size() - ends.back;
    const size_t newEnd = after.size() - ends.back;
    std::vector<Hunk> hunks;
    size_t oldRow = ends.front;
    size_t newRow = ends.front;
    while (oldRow < oldEnd || newRow < newEnd) {
        Hunk hunk{.oldBegin = qsizetype(oldRow), .newBegin = qsizetype(newRow)};
        while (oldRow < oldEnd && !staying.contains(before[oldRow])) {
            ++oldRow;
        }
        while (newRow < newEnd && !known.contains(after[newRow])) {
            ++newRow;
        }
        hunk.oldEnd = qsizetype(oldRow);
        hunk.newEnd = qsizetype(newRow);
        if (hunk.oldEnd > hunk.oldBegin || hunk.newEnd > hunk.newBegin) {
            hunks.push_back(hunk);
        }
        while (oldRow < oldEnd && newRow < newEnd && before[oldRow] == after[newRow]) {
            ++oldRow;
            ++newRow;
        }
    }
    joinClosest(hunks);
    return hunks;
}

Move singleMove(std::span<const Key> before, std::span<const Key> after) {
    const CommonEnds ends(before, after);
    const auto old = ends.middle(before);
    const auto now = ends.middle(after);
    if (old.empty()) {
        return {};
    }
    // The middle of the one must be the middle of the other, turned.
    const auto turned = std::ranges::find(old, now.front());
    const auto head = size_t(turned - old.begin());
    if (!std::ranges::equal(old.subspan(head), now.first(old.size() - head)) ||
        !std::ranges::equal(old.first(head), now.last(head))) {
        return {};
    }
    const auto first = qsizetype(ends.front);
    const auto size = qsizetype(old.size());
    const auto split = qsizetype(head);
    if (split <= size - split) {
        return {.first = first, .count = split, .before = first + size};
    }
    return {.first = first + split, .count = size - split, .before = first};
}

} // namespace corvane::rowDiff

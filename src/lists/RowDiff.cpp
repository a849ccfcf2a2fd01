#include "lists/RowDiff.h"

namespace corvane::rowDiff {

namespace {

/// Merges the hunks with the fewest rows between them until at most `kMaxHunks` are left.
void mergeClosest(std::vector<Hunk> &hunks) {
    if (hunks.size() <= kMaxHunks) {
        return;
    }
    const auto gapBefore = [&](size_t index) {
        return hunks[index].oldBegin - hunks[index - 1].oldEnd;
    };
    std::vector<qsizetype> gaps;
    for (size_t index = 1; index < hunks.size(); ++index) {
        gaps.push_back(gapBefore(index));
    }
    const auto widest = gaps.begin() + kMaxHunks - 1;
    std::ranges::nth_element(gaps, widest, std::greater<>());
    const qsizetype widestMerged = *widest;
    std::vector<Hunk> merged{hunks.front()};
    for (size_t index = 1; index < hunks.size(); ++index) {
        if (gapBefore(index) <= widestMerged) {
            merged.back().oldEnd = hunks[index].oldEnd;
            merged.back().newEnd = hunks[index].newEnd;
        } else {
            merged.push_back(hunks[index]);
        }
    }
    hunks = std::move(merged);
}

} // namespace

bool isInOrder(const Matches &matches) {
    int previous = -1;
    return std::ranges::all_of(
        matches, [&](int match) { return match < 0 || std::exchange(previous, match) < match; });
}

std::vector<Hunk> hunks(qsizetype oldCount, const Matches &matches) {
    std::vector<quint8> isKept(size_t(oldCount), 0);
    for (const int match : matches) {
        if (match >= 0) {
            isKept[size_t(match)] = 1;
        }
    }
    std::vector<Hunk> hunks;
    const auto newCount = qsizetype(matches.size());
    qsizetype oldRow = 0;
    qsizetype newRow = 0;
    while (oldRow < oldCount || newRow < newCount) {
        Hunk hunk{.oldBegin = oldRow, .newBegin = newRow};
        while (oldRow < oldCount && !isKept[size_t(oldRow)]) {
            ++oldRow;
        }
        while (newRow < newCount && matches[size_t(newRow)] < 0) {
            ++newRow;
        }
        hunk.oldEnd = oldRow;
        hunk.newEnd = newRow;
        if (hunk.oldEnd > hunk.oldBegin || hunk.newEnd > hunk.newBegin) {
            hunks.push_back(hunk);
        }
        while (newRow < newCount && matches[size_t(newRow)] == oldRow) {
            ++oldRow;
            ++newRow;
        }
    }
    mergeClosest(hunks);
    return hunks;
}

Move singleMove(std::span<const int> order) {
    size_t begin = 0;
    size_t end = order.size();
    while (begin < end && order[begin] == int(begin)) {
        ++begin;
    }
    while (end > begin && order[end - 1] == int(end - 1)) {
        --end;
    }
    // The rows in between must be rotated: the last of them come first.
    const size_t size = end - begin;
    const size_t head = size > 0 ? size_t(order[begin]) - begin : 0;
    for (size_t row = 0; row < size; ++row) {
        if (order[begin + row] != int(begin + (row + head) % size)) {
            return {};
        }
    }
    const size_t tail = size - head;
    return head <= tail
               ? Move{.first = qsizetype(begin), .count = qsizetype(head), .before = qsizetype(end)}
               : Move{.first = qsizetype(begin + head),
                      .count = qsizetype(tail),
                      .before = qsizetype(begin)};
}

} // namespace corvane::rowDiff

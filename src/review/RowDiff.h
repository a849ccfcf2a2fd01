#pragma once

#include <QtGlobal>

#include <span>
#include <vector>

/// What turns one list of rows into another. Rows are known by a key, none twice in a list. All in
/// time linear in the lists.
namespace corvane::rowDiff {

using Key = quint32;

/// Old rows that go, with new rows that come in their place.
struct Hunk {
    qsizetype oldBegin = 0;
    qsizetype oldEnd = 0;
    qsizetype newBegin = 0;
    qsizetype newEnd = 0;
};

/// So many hunks at most, whatever the lists, because a view's work grows with their number. Up to
/// it no row is told to go that stays; beyond it the closest hunks are told as one, with the rows
/// between them.
constexpr size_t kMostHunks = 128;

/// The rows of `rows` that are also in `others`, in their order.
std::vector<Key> common(std::span<const Key> rows, std::span<const Key> others);

/// The hunks from the front on. The rows that are in both lists must stand in the same order in
/// both.
std::vector<Hunk> hunks(std::span<const Key> before, std::span<const Key> after);

/// The same rows in another order, where one run of them moved and nothing else.
struct Move {
    qsizetype first = 0;
    qsizetype count = 0;  ///< 0 where it took more than one move
    qsizetype before = 0; ///< the row, by its old number, that it comes to stand before
};
Move singleMove(std::span<const Key> before, std::span<const Key> after);

} // namespace corvane::rowDiff

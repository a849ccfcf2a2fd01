#pragma once

#include <QHash>
#include <QList>

#include <algorithm>
#include <concepts>
#include <functional>
#include <span>
#include <vector>

/// Computes the removals, insertions and moves that turn one list of rows into another. Rows are
/// compared by key. All functions are linear in the lengths of the lists and keep no state.
namespace corvane::rowDiff {

/// For each new row, the index of the old row with the same key, or -1 if the row is new. No old
/// row is matched twice.
using Matches = std::vector<int>;

/// Matches rows by `key`, a projection such as `&Row::id`. The key must be hashable; a `quint32`
/// is used as an index instead and should be small. If a list contains a key more than once, only
/// one of the rows is matched.
template <class Row, class Projection>
Matches matchRows(const QList<Row> &before, const QList<Row> &after, Projection key);

/// True if the matched rows are in the same order in both lists.
bool isInOrder(const Matches &matches);

/// Old rows [oldBegin, oldEnd) that are replaced by the new rows [newBegin, newEnd). Either range
/// may be empty.
struct Hunk {
    qsizetype oldBegin = 0;
    qsizetype oldEnd = 0;
    qsizetype newBegin = 0;
    qsizetype newEnd = 0;
};

/// Limit on the number of hunks, because the work of a view grows with it. Beyond the limit the
/// closest hunks are merged, which replaces the matched rows between them.
constexpr size_t kMaxHunks = 128;

/// Returns the hunks in ascending order. `matches` must be in order.
std::vector<Hunk> hunks(qsizetype oldCount, const Matches &matches);

/// Moves `count` rows from `first` to before row `before`, as in QAbstractItemModel::moveRows().
struct Move {
    qsizetype first = 0;
    qsizetype count = 0;
    qsizetype before = 0;
};

/// Returns the shortest move of adjacent rows that produces `order`, where order[i] is the old
/// index of row i. Returns a move of zero rows if `order` takes more than one move, or none.
Move singleMove(std::span<const int> order);

namespace internal {

/// Old rows by key. Each row is returned once.
template <class Key> class RowsByKey {
  public:
    void reserve(qsizetype count) { m_rows.reserve(count); }
    void insert(const Key &key, int row) { m_rows.insert(key, row); }
    int take(const Key &key) {
        const auto found = m_rows.find(key);
        return found == m_rows.end() ? -1 : std::exchange(*found, -1);
    }

  private:
    QHash<Key, int> m_rows;
};

/// A table instead of a hash: a list of 100,000 clips is matched at every keystroke of a search.
template <> class RowsByKey<quint32> {
  public:
    void reserve(qsizetype count) { m_rows.reserve(size_t(count)); }
    void insert(quint32 key, int row) {
        if (key >= m_rows.size()) {
            m_rows.resize(std::max(size_t(key) + 1, m_rows.size() * 2), -1);
        }
        m_rows[key] = row;
    }
    int take(quint32 key) { return key < m_rows.size() ? std::exchange(m_rows[key], -1) : -1; }

  private:
    std::vector<int> m_rows;
};

} // namespace internal

template <class Row, class Projection>
Matches matchRows(const QList<Row> &before, const QList<Row> &after, Projection key) {
    using Key = std::remove_cvref_t<std::invoke_result_t<Projection, const Row &>>;
    Matches matches(size_t(after.size()), -1);
    const auto hasSameKey = [&](qsizetype oldRow, qsizetype newRow) {
        return std::invoke(key, before.at(oldRow)) == std::invoke(key, after.at(newRow));
    };
    qsizetype begin = 0;
    qsizetype oldEnd = before.size();
    qsizetype newEnd = after.size();
    for (; begin < std::min(oldEnd, newEnd) && hasSameKey(begin, begin); ++begin) {
        matches[size_t(begin)] = int(begin);
    }
    while (std::min(oldEnd, newEnd) > begin && hasSameKey(oldEnd - 1, newEnd - 1)) {
        matches[size_t(--newEnd)] = int(--oldEnd);
    }
    internal::RowsByKey<Key> rows;
    rows.reserve(oldEnd - begin);
    for (qsizetype row = begin; row < oldEnd; ++row) {
        rows.insert(std::invoke(key, before.at(row)), int(row));
    }
    for (qsizetype row = begin; row < newEnd; ++row) {
        matches[size_t(row)] = rows.take(std::invoke(key, after.at(row)));
    }
    return matches;
}

} // namespace corvane::rowDiff

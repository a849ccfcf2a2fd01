#include "review/KeyedListModel.h"

#include <algorithm>

namespace corvane {

int KeyedListModel::rowCount(const QModelIndex &parent) const {
    return parent.isValid() ? 0 : int(m_keysEnd + m_next.size() - m_nextBegin);
}

KeyedListModel::Key KeyedListModel::keyAt(qsizetype row) const {
    const auto index = size_t(row);
    return index < m_keysEnd ? m_keys[index] : m_next[index - m_keysEnd + m_nextBegin];
}

qsizetype KeyedListModel::rowOf(Key key) const {
    const auto found = std::ranges::find(m_keys, key);
    return found == m_keys.end() ? -1 : found - m_keys.begin();
}

void KeyedListModel::setKeys(std::vector<Key> keys) {
    if (keys == m_keys) {
        return;
    }
    const std::vector<Key> staying = rowDiff::common(m_keys, keys);
    std::vector<Key> wanted = rowDiff::common(keys, m_keys);
    if (staying != wanted) {
        replaceHunks(staying);
        reorder(std::move(wanted));
    }
    replaceHunks(std::move(keys));
}

void KeyedListModel::replaceHunks(std::vector<Key> keys) {
    const std::vector<rowDiff::Hunk> hunks = rowDiff::hunks(m_keys, keys);
    m_next = std::move(keys);
    m_nextBegin = m_next.size();
    for (auto hunk = hunks.rbegin(); hunk != hunks.rend(); ++hunk) {
        m_keysEnd = size_t(hunk->oldEnd);
        m_nextBegin = size_t(hunk->newEnd);
        if (hunk->oldBegin < hunk->oldEnd) {
            beginRemoveRows({}, int(hunk->oldBegin), int(hunk->oldEnd) - 1);
            m_keysEnd = size_t(hunk->oldBegin);
            endRemoveRows();
        }
        if (hunk->newBegin < hunk->newEnd) {
            const auto added = int(hunk->newEnd - hunk->newBegin);
            beginInsertRows({}, int(m_keysEnd), int(m_keysEnd) + added - 1);
            m_nextBegin = size_t(hunk->newBegin);
            endInsertRows();
        }
    }
    m_keys = std::exchange(m_next, {});
    m_keysEnd = m_keys.size();
    m_nextBegin = 0;
}

/// The same rows in another order.
void KeyedListModel::reorder(std::vector<Key> keys) {
    const rowDiff::Move move = rowDiff::singleMove(m_keys, keys);
    if (move.count > 0) {
        beginMoveRows({}, int(move.first), int(move.first + move.count) - 1, {}, int(move.before));
        m_keys = std::move(keys);
        endMoveRows();
        return;
    }
    Q_EMIT layoutAboutToBeChanged({}, VerticalSortHint);
    const QModelIndexList before = persistentIndexList();
    std::vector<Key> kept;
    for (const QModelIndex &index : before) {
        kept.push_back(keyAt(index.row()));
    }
    m_keys = std::move(keys);
    QModelIndexList after;
    for (qsizetype which = 0; which < before.size(); ++which) {
        after.append(index(int(rowOf(kept[size_t(which)])), before.at(which).column()));
    }
    changePersistentIndexList(before, after);
    Q_EMIT layoutChanged({}, VerticalSortHint);
}

void KeyedListModel::notifyRow(Key key, const QList<int> &roles) {
    const qsizetype row = rowOf(key);
    if (row >= 0) {
        Q_EMIT dataChanged(index(int(row)), index(int(row)), roles);
    }
}

void KeyedListModel::notifyRows(const QList<int> &roles) {
    if (!m_keys.empty()) {
        Q_EMIT dataChanged(index(0), index(rowCount() - 1), roles);
    }
}

} // namespace corvane

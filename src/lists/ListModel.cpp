#include "lists/ListModel.h"

namespace corvane {

ListModelBase::ListModelBase(QHash<int, QByteArray> roleNames, QObject *parent)
    : QAbstractListModel(parent), m_roleNames(std::move(roleNames)) {}

int ListModelBase::rowCount(const QModelIndex &parent) const {
    return parent.isValid() ? 0 : count();
}

void ListModelBase::reportHunks(const std::vector<rowDiff::Hunk> &hunks, qsizetype newCount) {
    m_newCount = m_newBegin = int(newCount);
    for (auto hunk = hunks.rbegin(); hunk != hunks.rend(); ++hunk) {
        m_oldEnd = int(hunk->oldEnd);
        m_newBegin = int(hunk->newEnd);
        if (hunk->oldBegin < hunk->oldEnd) {
            beginRemoveRows({}, int(hunk->oldBegin), int(hunk->oldEnd) - 1);
            m_oldEnd = int(hunk->oldBegin);
            endRemoveRows();
        }
        if (hunk->newBegin < hunk->newEnd) {
            beginInsertRows({}, m_oldEnd, m_oldEnd + int(hunk->newEnd - hunk->newBegin) - 1);
            m_newBegin = int(hunk->newBegin);
            endInsertRows();
        }
    }
}

void ListModelBase::finishReplacing() {
    m_oldEnd = std::exchange(m_newCount, 0);
    m_newBegin = 0;
}

void ListModelBase::reportOrder(const std::vector<int> &order, const std::function<void()> &apply) {
    const rowDiff::Move move = rowDiff::singleMove(order);
    if (move.count > 0) {
        beginMoveRows({}, int(move.first), int(move.first + move.count) - 1, {}, int(move.before));
        apply();
        endMoveRows();
        return;
    }
    Q_EMIT layoutAboutToBeChanged({}, VerticalSortHint);
    std::vector<int> newRows(order.size());
    for (size_t row = 0; row < order.size(); ++row) {
        newRows[size_t(order[row])] = int(row);
    }
    apply();
    const QModelIndexList before = persistentIndexList();
    QModelIndexList after;
    for (const QModelIndex &index : before) {
        after.append(this->index(newRows[size_t(index.row())]));
    }
    changePersistentIndexList(before, after);
    Q_EMIT layoutChanged({}, VerticalSortHint);
}

void ListModelBase::reportData(const std::vector<int> &rows, const QList<int> &roles) {
    for (auto first = rows.begin(); first != rows.end();) {
        auto last = first;
        while (last + 1 != rows.end() && *(last + 1) == *last + 1) {
            ++last;
        }
        Q_EMIT dataChanged(index(*first), index(*last), roles);
        first = last + 1;
    }
}

} // namespace corvane

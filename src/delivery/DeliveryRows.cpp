#include "delivery/DeliveryRows.h"

#include <algorithm>

namespace corvane {

int DeliveryRows::rowCount(const QModelIndex &parent) const {
    return parent.isValid() ? 0 : int(m_rows.size());
}

QVariant DeliveryRows::data(const QModelIndex &index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) {
        return {};
    }
    const DeliveryRow &row = m_rows.at(index.row());
    switch (role) {
    case Symbol:
        return row.symbol;
    case Name:
        return row.name;
    case Note:
        return row.note;
    default:
        return {};
    }
}

QHash<int, QByteArray> DeliveryRows::roleNames() const {
    return {{Symbol, "symbol"}, {Name, "name"}, {Note, "note"}};
}

void DeliveryRows::setRows(QList<DeliveryRow> rows) {
    replaceMiddle(rows);
    qsizetype first = m_rows.size();
    qsizetype last = -1;
    for (qsizetype row = 0; row < rows.size(); ++row) {
        if (m_rows.at(row) != rows.at(row)) {
            first = std::min(first, row);
            last = row;
        }
    }
    m_rows = std::move(rows);
    if (last >= 0) {
        Q_EMIT dataChanged(index(int(first)), index(int(last)), {Symbol, Name, Note});
    }
}

/// Makes the rows those of the new list by their ids; what they show may still be the old.
void DeliveryRows::replaceMiddle(const QList<DeliveryRow> &rows) {
    const auto sameId = [](const DeliveryRow &left, const DeliveryRow &right) {
        return left.id == right.id;
    };
    const auto head = std::ranges::mismatch(m_rows, rows, sameId);
    const qsizetype kept = head.in1 - m_rows.cbegin();
    const auto shorter = std::min(m_rows.size(), rows.size());
    qsizetype tail = 0;
    while (tail < shorter - kept &&
           sameId(m_rows.at(m_rows.size() - 1 - tail), rows.at(rows.size() - 1 - tail))) {
        ++tail;
    }
    if (const qsizetype gone = m_rows.size() - kept - tail; gone > 0) {
        beginRemoveRows({}, int(kept), int(kept + gone) - 1);
        m_rows.remove(kept, gone);
        endRemoveRows();
    }
    if (const qsizetype added = rows.size() - kept - tail; added > 0) {
        beginInsertRows({}, int(kept), int(kept + added) - 1);
        m_rows = m_rows.first(kept) + rows.sliced(kept, added) + m_rows.sliced(kept);
        endInsertRows();
    }
}

} // namespace corvane

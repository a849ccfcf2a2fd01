#pragma once

#include "review/RowDiff.h"

#include <QAbstractListModel>

namespace corvane {

/// A list model whose rows are known by keys, so that a new list is told to views as what it really
/// changed: rows removed, inserted and moved, never a reset. Main thread.
class KeyedListModel : public QAbstractListModel {
    Q_OBJECT

  public:
    using Key = rowDiff::Key;
    using QAbstractListModel::QAbstractListModel;

    int rowCount(const QModelIndex &parent = {}) const override;

  protected:
    /// The row's key. The row must exist.
    Key keyAt(qsizetype row) const;
    /// The row with that key, or -1.
    qsizetype rowOf(Key key) const;
    /// All keys in the rows' order. Not while a change is being told.
    const std::vector<Key> &keys() const { return m_keys; }

    /// Makes these the rows.
    void setKeys(std::vector<Key> keys);
    /// Tells that the row with that key shows something else. Nothing where there is none.
    void notifyRow(Key key, const QList<int> &roles = {});
    /// The same of all rows.
    void notifyRows(const QList<int> &roles);

  private:
    void reorder(std::vector<Key> keys);
    void replaceHunks(std::vector<Key> keys);

    std::vector<Key> m_keys;
    /// While hunks are told, from the last to the first: the rows up to `m_keysEnd` are still the
    /// old ones, and those after it the new ones from `m_nextBegin` on.
    std::vector<Key> m_next;
    size_t m_keysEnd = 0;
    size_t m_nextBegin = 0;
};

} // namespace corvane

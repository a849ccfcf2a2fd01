#pragma once

#include "lists/RowDiff.h"

#include <QAbstractListModel>

namespace corvane {

/// The part of `ListModel` that does not depend on the type of its rows: it reports changes.
class ListModelBase : public QAbstractListModel {
    Q_OBJECT
    Q_PROPERTY(int count READ count NOTIFY countChanged)

  public:
    int count() const { return m_oldEnd + m_newCount - m_newBegin; }
    int rowCount(const QModelIndex &parent = {}) const override;
    QHash<int, QByteArray> roleNames() const override { return m_roleNames; }

  Q_SIGNALS:
    void countChanged();

  protected:
    ListModelBase(QHash<int, QByteArray> roleNames, QObject *parent);

    /// Reports the hunks, last to first. Until `finishReplacing` the model consists of old rows up
    /// to an index and of new rows after it.
    void reportHunks(const std::vector<rowDiff::Hunk> &hunks, qsizetype newCount);
    void finishReplacing();
    bool isOldRow(qsizetype row) const { return row < m_oldEnd; }
    /// Index among the new rows of a row that is not an old one.
    qsizetype newRow(qsizetype row) const { return row - m_oldEnd + m_newBegin; }
    /// Reports that row i is now the former row order[i]. `apply` reorders the rows.
    void reportOrder(const std::vector<int> &order, const std::function<void()> &apply);
    /// Reports new data for the given rows in ascending order, one signal for adjacent rows.
    void reportData(const std::vector<int> &rows, const QList<int> &roles = {});

  private:
    QHash<int, QByteArray> m_roleNames;
    int m_oldEnd = 0;   ///< the old rows before this index are rows of the model
    int m_newBegin = 0; ///< so are the new rows from this index on, after the old ones
    int m_newCount = 0; ///< number of new rows while hunks are reported
};

/// A list model of values that reports what changed.
///
/// A subclass provides a row type, the rows' key and a table of roles:
///
///     struct Fruit {
///         QString id;
///         QString name;
///         bool operator==(const Fruit &) const = default;
///     };
///
///     class FruitList : public ListModel<Fruit> {
///         Q_OBJECT
///       public:
///         enum Role { NameRole = Qt::UserRole };
///         explicit FruitList(QObject *parent = nullptr)
///             : ListModel({{NameRole, "name", &Fruit::name}}, parent) {}
///     };
///
/// `key` projects a row to its key: the member `id`, unless stated otherwise. A row keeps its
/// identity as long as every `setRows` contains its key, so that a view keeps its delegate,
/// selection and scroll position. Keys should be unique. A repeated key is accepted; such rows are
/// removed and inserted more often than necessary.
///
/// `setRows` reports removed, inserted and moved rows, and `dataChanged` for rows that have the
/// same key but compare unequal. It never resets the model. It reports at most
/// `rowDiff::kMaxHunks` removals and insertions each; a new order of the remaining rows is reported
/// as one move of adjacent rows or, if that is not enough, as a layout change. All of it takes time
/// linear in the number of rows. Views may read the model during every signal, but must not call
/// `setRows`.
///
/// A subclass with state besides its rows captures `this` in its roles, and calls `notifyRow` or
/// `notifyRows` if that state changes.
///
/// qmllint 6.4 does not see through a template: a subclass that is registered for QML restates
/// `Q_PROPERTY(int count READ count NOTIFY countChanged)` if a screen reads `count`.
///
/// Main thread only.
template <class Row, auto key = &Row::id> class ListModel : public ListModelBase {
  public:
    using Key = std::remove_cvref_t<std::invoke_result_t<decltype(key), const Row &>>;

    struct Role {
        int role = Qt::UserRole;
        QByteArray name;                            ///< name in QML
        std::function<QVariant(const Row &)> value; ///< must not be empty
    };

    explicit ListModel(QList<Role> roles, QObject *parent = nullptr)
        : ListModelBase(namesOf(roles), parent) {
        for (Role &role : roles) {
            m_values.insert(role.role, std::move(role.value));
        }
    }

    /// All rows. Not to be called while a change is reported.
    const QList<Row> &rows() const { return m_rows; }
    /// The row at that index, which must exist.
    const Row &row(qsizetype index) const {
        return isOldRow(index) ? m_rows.at(index) : m_next.at(newRow(index));
    }
    /// Index of the row with that key, or -1. Linear. Not to be called while a change is reported.
    int rowOf(const Key &rowKey) const {
        const auto found = std::ranges::find(m_rows, rowKey, key);
        return found == m_rows.end() ? -1 : int(found - m_rows.begin());
    }

    void setRows(QList<Row> rows) {
        if (!rows.isEmpty() && rows == m_rows) { // comparing two empty lists reads null
            return;
        }
        const int countBefore = count();
        rowDiff::Matches matches = rowDiff::matchRows(m_rows, rows, key);
        const std::vector<int> changed = changedRows(rows, matches);
        if (!rowDiff::isInOrder(matches)) {
            keepMatched(matches);
        }
        replaceRows(std::move(rows), matches);
        reportData(changed);
        if (count() != countBefore) {
            Q_EMIT countChanged();
        }
    }

    /// Replaces one row by another with the same key. Ignores an index that is out of range.
    void setRow(int index, Row row) {
        if (index >= 0 && index < count() && m_rows.at(index) != row) {
            m_rows[index] = std::move(row);
            reportData({index});
        }
    }

    QVariant data(const QModelIndex &index, int role) const override {
        const auto value = m_values.constFind(role);
        return checkIndex(index, CheckIndexOption::IndexIsValid) && value != m_values.cend()
                   ? (*value)(row(index.row()))
                   : QVariant();
    }

  protected:
    /// Reports that the values of these roles changed in the row with that key; all roles if the
    /// list is empty. A no-op if there is no such row.
    void notifyRow(const Key &rowKey, const QList<int> &roles = {}) {
        if (const int index = rowOf(rowKey); index >= 0) {
            reportData({index}, roles);
        }
    }
    /// The same for every row.
    void notifyRows(const QList<int> &roles = {}) {
        if (count() > 0) {
            Q_EMIT dataChanged(index(0), index(count() - 1), roles);
        }
    }

  private:
    static QHash<int, QByteArray> namesOf(const QList<Role> &roles) {
        QHash<int, QByteArray> names;
        for (const Role &role : roles) {
            names.insert(role.role, role.name);
        }
        return names;
    }

    std::vector<int> changedRows(const QList<Row> &rows, const rowDiff::Matches &matches) const {
        std::vector<int> changed;
        if constexpr (!std::same_as<Row, Key>) { // otherwise equal keys are equal rows
            for (size_t index = 0; index < matches.size(); ++index) {
                if (matches[index] >= 0 && m_rows.at(matches[index]) != rows.at(qsizetype(index))) {
                    changed.push_back(int(index));
                }
            }
        }
        return changed;
    }

    /// Removes the rows that are not matched, brings the others into the order of the new rows and
    /// renumbers `matches`.
    void keepMatched(rowDiff::Matches &matches) {
        constexpr int kRemoved = -1;
        std::vector<int> ranks(size_t(m_rows.size()), kRemoved);
        for (const int match : matches) {
            if (match >= 0) {
                ranks[size_t(match)] = match;
            }
        }
        rowDiff::Matches kept;
        for (int &rank : ranks) {
            if (rank != kRemoved) {
                kept.push_back(std::exchange(rank, int(kept.size())));
            }
        }
        if (std::ssize(kept) < m_rows.size()) {
            replaceRows(rowsAt(kept), kept);
        }
        std::vector<int> order;
        for (int &match : matches) {
            if (match >= 0) {
                order.push_back(ranks[size_t(match)]);
                match = int(order.size()) - 1;
            }
        }
        reportOrder(order, [&] { m_rows = rowsAt(order); });
    }

    QList<Row> rowsAt(const std::vector<int> &indexes) const {
        QList<Row> rows;
        rows.reserve(qsizetype(indexes.size()));
        for (const int index : indexes) {
            rows.append(m_rows.at(index));
        }
        return rows;
    }

    void replaceRows(QList<Row> rows, const rowDiff::Matches &matches) {
        const std::vector<rowDiff::Hunk> hunks = rowDiff::hunks(m_rows.size(), matches);
        m_next = std::move(rows);
        reportHunks(hunks, m_next.size());
        m_rows = std::exchange(m_next, {});
        finishReplacing();
    }

    QHash<int, std::function<QVariant(const Row &)>> m_values; ///< by role
    QList<Row> m_rows;
    QList<Row> m_next; ///< the new rows while hunks are reported
};

/// A list whose rows are keys of data that is stored elsewhere. A subclass looks the data up in its
/// roles and reports changed data with `notifyRow`.
using KeyListModel = ListModel<quint32, std::identity{}>;

} // namespace corvane

#pragma once

#include <QAbstractListModel>

namespace corvane {

/// What the screens of a delivery show of one thing that will be delivered.
struct DeliveryRow {
    QString id; ///< of one row only
    QString symbol;
    QString name;
    QString note; ///< beside the name; may be empty

    bool operator==(const DeliveryRow &) const = default;
};

/// The list of what will be delivered. New rows are told to views as what they change of the old
/// ones, never as a reset, so that a list that is planned anew while somebody types stays where it
/// is. Main thread.
class DeliveryRows : public QAbstractListModel {
    Q_OBJECT

  public:
    enum Role { Symbol = Qt::UserRole + 1, Name, Note };

    using QAbstractListModel::QAbstractListModel;

    const QList<DeliveryRow> &rows() const { return m_rows; }
    void setRows(QList<DeliveryRow> rows);

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

  private:
    void replaceMiddle(const QList<DeliveryRow> &rows);

    QList<DeliveryRow> m_rows;
};

} // namespace corvane

#pragma once

#include <QAbstractListModel>

namespace corvane {

/// What a run did with one of its rows, as its screens tell it.
struct DeliveryResult {
    enum class Outcome { succeeded, failed, cancelled };

    Outcome outcome = Outcome::succeeded;
    QString symbol;
    QString name;
    QString note;    ///< what became of the HD copy; may be empty
    QString reason;  ///< why there is no HD copy; may be empty
    QString error;   ///< why it wasn't delivered
    QString path;    ///< what "Reveal" shows; empty for what wasn't delivered
    QString heading; ///< of the rows from here on; empty but for the first of a kind

    bool operator==(const DeliveryResult &) const = default;
};

/// The rows of a finished run: what was delivered, then what wasn't, both under their headings.
/// Main thread.
class DeliveryResults : public QAbstractListModel {
    Q_OBJECT

  public:
    enum Role {
        Heading = Qt::UserRole + 1,
        Symbol,
        Delivered,
        Cancelled,
        Name,
        Note,
        Reason,
        Error,
        Rich,
        Path
    };

    using QAbstractListModel::QAbstractListModel;

    const QList<DeliveryResult> &rows() const { return m_rows; }
    void setRows(QList<DeliveryResult> rows);

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

  private:
    QList<DeliveryResult> m_rows;
};

} // namespace corvane

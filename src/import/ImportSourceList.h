#pragma once

#include <QAbstractListModel>

namespace corvane {

/// The chosen sources as a screen lists them, folders and files. Only rows that come or go are told
/// to the screen. Main thread.
class ImportSourceList : public QAbstractListModel {
    Q_OBJECT
    Q_PROPERTY(int count READ count NOTIFY countChanged)

  public:
    enum Role {
        PathRole = Qt::UserRole, ///< "path"
        SymbolRole,              ///< "symbol": "folder" or "file"
        RemoveHelpRole,          ///< "removeHelp": what the row's remove button is called
    };

    using QAbstractListModel::QAbstractListModel;

    int count() const { return int(m_rows.size()); }
    /// Looks at each path that is new, once.
    void setPaths(const QStringList &paths);

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

  Q_SIGNALS:
    void countChanged();

  private:
    struct Row {
        QString path;
        bool isFolder = false;
    };

    QList<Row> m_rows;
};

} // namespace corvane

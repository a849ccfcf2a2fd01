#pragma once

#include "session/ProjectStore.h"

#include <QAbstractListModel>

namespace corvane {

/// The recent projects in the store's order, a row each. Opening and forgetting go through here;
/// the rows follow the store. The objects handed in must outlive it. Main thread.
class RecentProjectsModel : public QAbstractListModel {
    Q_OBJECT
    Q_PROPERTY(int count READ count NOTIFY countChanged)
    Q_PROPERTY(QString removeToolTip READ removeToolTip CONSTANT)

  public:
    enum Role {
        NameRole = Qt::UserRole + 1, ///< "name"
        FilePathRole,                ///< "filePath"
        CountTextRole,               ///< "countText", such as "86 videos"
    };

    RecentProjectsModel(ProjectStore &store, ProjectRegistry &registry, QObject *parent = nullptr);

    int count() const { return int(m_rows.size()); }
    static QString removeToolTip() {
        return QStringLiteral("Remove from recents (file on disk is untouched)");
    }

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    /// Opens the row's project. A row that isn't there does nothing.
    Q_INVOKABLE void open(int row);
    /// Forgets the row's project; its file isn't touched.
    Q_INVOKABLE void remove(int row);

  Q_SIGNALS:
    void countChanged();

  private:
    void follow();
    void removeMissing(const QList<ProjectSummary> &wanted);
    void forgetRow(int row);
    void placeRow(qsizetype row, const ProjectSummary &summary);
    QCoro::Task<> forget(QString path);

    ProjectStore &m_store;
    ProjectRegistry &m_registry;
    QList<ProjectSummary> m_rows;
};

} // namespace corvane

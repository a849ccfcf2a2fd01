#pragma once

#include "document/ProjectRegistry.h"
#include "lists/ListModel.h"
#include "session/ProjectStore.h"

namespace corvane {

/// The recent projects in the store's order. The constructor's arguments must outlive this object.
/// Main thread only.
class RecentProjectsModel : public ListModel<ProjectSummary, &ProjectSummary::filePath> {
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

    static QString removeToolTip() {
        return QStringLiteral("Remove from recents (file on disk is untouched)");
    }

    /// Opens the row's project. Ignores an index that is out of range.
    Q_INVOKABLE void open(int row);
    /// Removes the row's project from the list, not its file. Ignores an index that is out of
    /// range.
    Q_INVOKABLE void remove(int row);

  private:
    QCoro::Task<> forget(QString path);

    ProjectStore &m_store;
    ProjectRegistry &m_registry;
};

} // namespace corvane

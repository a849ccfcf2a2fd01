#include "shell/RecentProjectsModel.h"

#include "platform/Tasks.h"

#include <QPointer>

namespace corvane {

RecentProjectsModel::RecentProjectsModel(ProjectStore &store, ProjectRegistry &registry,
                                         QObject *parent)
    : ListModel({{NameRole, "name", &ProjectSummary::name},
                 {FilePathRole, "filePath", &ProjectSummary::filePath},
                 {CountTextRole, "countText",
                  [](const ProjectSummary &summary) {
                      return QStringLiteral("%1 videos").arg(summary.videoCount);
                  }}},
                parent),
      m_store(store),
      m_registry(registry) {
    connect(&m_store, &ProjectStore::recentProjectsChanged, this,
            [this] { setRows(m_store.recentProjects()); });
    setRows(m_store.recentProjects());
}

void RecentProjectsModel::open(int row) {
    if (row >= 0 && row < count()) {
        detach(m_store.openProject(rows().at(row).filePath));
    }
}

void RecentProjectsModel::remove(int row) {
    if (row >= 0 && row < count()) {
        detach(forget(rows().at(row).filePath));
    }
}

QCoro::Task<> RecentProjectsModel::forget(QString path) {
    const QPointer self(this);
    co_await m_registry.remove(path);
    if (self) {
        co_await m_store.refreshRecents();
    }
}

} // namespace corvane

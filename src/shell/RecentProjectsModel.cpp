#include "shell/RecentProjectsModel.h"

#include "platform/Tasks.h"

#include <QPointer>

namespace corvane {

RecentProjectsModel::RecentProjectsModel(ProjectStore &store, ProjectRegistry &registry,
                                         QObject *parent)
    : QAbstractListModel(parent), m_store(store), m_registry(registry) {
    connect(&m_store, &ProjectStore::recentProjectsChanged, this, &RecentProjectsModel::follow);
    follow();
}

int RecentProjectsModel::rowCount(const QModelIndex &parent) const {
    return parent.isValid() ? 0 : count();
}

QVariant RecentProjectsModel::data(const QModelIndex &index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) {
        return {};
    }
    const ProjectSummary &summary = m_rows.at(index.row());
    switch (role) {
    case NameRole:
        return summary.name;
    case FilePathRole:
        return summary.filePath;
    case CountTextRole:
        return QStringLiteral("%1 videos").arg(summary.videoCount);
    default:
        return {};
    }
}

QHash<int, QByteArray> RecentProjectsModel::roleNames() const {
    return {{NameRole, "name"}, {FilePathRole, "filePath"}, {CountTextRole, "countText"}};
}

void RecentProjectsModel::open(int row) {
    if (row >= 0 && row < count()) {
        detach(m_store.openProject(m_rows.at(row).filePath));
    }
}

void RecentProjectsModel::remove(int row) {
    if (row >= 0 && row < count()) {
        detach(forget(m_rows.at(row).filePath));
    }
}

QCoro::Task<> RecentProjectsModel::forget(QString path) {
    const QPointer self(this);
    co_await m_registry.remove(path);
    if (self) {
        co_await m_store.refreshRecents();
    }
}

/// Tells which rows went, came and moved, so that a view keeps its place and its focus.
void RecentProjectsModel::follow() {
    const qsizetype before = m_rows.size();
    const QList<ProjectSummary> &wanted = m_store.recentProjects();
    removeMissing(wanted);
    for (qsizetype row = 0; row < wanted.size(); ++row) {
        placeRow(row, wanted.at(row));
    }
    while (count() > wanted.size()) { // a damaged list can name a file twice
        forgetRow(count() - 1);
    }
    if (m_rows.size() != before) {
        Q_EMIT countChanged();
    }
}

void RecentProjectsModel::removeMissing(const QList<ProjectSummary> &wanted) {
    QSet<QString> paths;
    for (const ProjectSummary &summary : wanted) {
        paths.insert(summary.filePath);
    }
    for (int row = count() - 1; row >= 0; --row) {
        if (!paths.contains(m_rows.at(row).filePath)) {
            forgetRow(row);
        }
    }
}

void RecentProjectsModel::forgetRow(int row) {
    beginRemoveRows({}, row, row);
    m_rows.removeAt(row);
    endRemoveRows();
}

void RecentProjectsModel::placeRow(qsizetype row, const ProjectSummary &summary) {
    const auto isSame = [&](const ProjectSummary &other) {
        return other.filePath == summary.filePath;
    };
    const qsizetype at =
        std::find_if(m_rows.cbegin() + row, m_rows.cend(), isSame) - m_rows.cbegin();
    if (at == m_rows.size()) {
        beginInsertRows({}, int(row), int(row));
        m_rows.insert(row, summary);
        endInsertRows();
        return;
    }
    if (at != row) {
        beginMoveRows({}, int(at), int(at), {}, int(row));
        m_rows.move(at, row);
        endMoveRows();
    }
    if (std::exchange(m_rows[row], summary) != summary) {
        Q_EMIT dataChanged(index(int(row)), index(int(row)));
    }
}

} // namespace corvane

#pragma once

#include "document/Project.h"
#include "platform/Clock.h"
#include "platform/SerialExecutor.h"

namespace corvane {

/// An entry of the recent list.
struct ProjectSummary {
    QString id;
    QString filePath; ///< unique in the list
    QString name;
    QDateTime lastOpenedAt;
    int videoCount = 0;

    bool operator==(const ProjectSummary &) const = default;
};

CORVANE_JSON_FIELDS(ProjectSummary, id, filePath, name, lastOpenedAt, videoCount);

/// The projects that the user has opened, stored in "registry.json" in the application's data
/// folder. Failures to read or write the file are ignored: the list is a convenience. Called and
/// awaited on the main thread.
class ProjectRegistry {
  public:
    /// Starts to create the folder and to read the list, which is empty if it can't be read.
    explicit ProjectRegistry(const QString &dataFolder, Clock &clock = Clock::system());

    /// Adds or updates the entry of a project that was opened. Returns the new list.
    QCoro::Task<QList<ProjectSummary>> touch(Project project, QString file);
    /// Removes an entry. Returns the new list.
    QCoro::Task<QList<ProjectSummary>> remove(QString path);
    /// The list in unspecified order.
    QCoro::Task<QList<ProjectSummary>> summaries();

  private:
    void load(const QString &dataFolder);
    void persist() const;

    QString m_filePath;
    Clock &m_clock;
    QList<ProjectSummary> m_summaries; ///< used on the executor only
    SerialExecutor m_executor;
};

/// Sorts the list by date, newest first.
QList<ProjectSummary> newestFirst(QList<ProjectSummary> summaries);

} // namespace corvane

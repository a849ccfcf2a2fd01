#pragma once

#include "document/Project.h"
#include "platform/Clock.h"
#include "platform/SerialExecutor.h"

namespace corvane {

/// One line of the recent list.
struct ProjectSummary {
    QString id;
    QString filePath; ///< the list's key
    QString name;
    QDateTime lastOpenedAt;
    int videoCount = 0;

    bool operator==(const ProjectSummary &) const = default;
};

template <> struct JSONFields<ProjectSummary> {
    static constexpr auto table = std::tuple(
        jsonField("id", &ProjectSummary::id), jsonField("filePath", &ProjectSummary::filePath),
        jsonField("name", &ProjectSummary::name),
        jsonField("lastOpenedAt", &ProjectSummary::lastOpenedAt),
        jsonField("videoCount", &ProjectSummary::videoCount));
};

/// The projects that this user has opened, in "registry.json" in the application's data folder. A
/// convenience: its failures are silent, and losing it loses nothing but the list. Called and
/// awaited on the main thread.
class ProjectRegistry {
  public:
    /// Creates the folder and reads the list. A list that can't be read is empty.
    explicit ProjectRegistry(const QString &dataFolder, Clock &clock = Clock::system());

    /// Records that a project was opened, at the front, and gives the new list.
    QCoro::Task<QList<ProjectSummary>> touch(Project project, QString file);
    /// Forgets a project and gives the new list.
    QCoro::Task<QList<ProjectSummary>> remove(QString path);
    /// The list as it stands, in no order that may be relied on.
    QCoro::Task<QList<ProjectSummary>> summaries();

  private:
    void load();
    void persist() const;

    QString m_filePath;
    Clock &m_clock;
    QList<ProjectSummary> m_summaries; ///< the executor's once constructed
    SerialExecutor m_executor;
};

/// A list as it is shown: newest first.
QList<ProjectSummary> newestFirst(QList<ProjectSummary> summaries);

} // namespace corvane

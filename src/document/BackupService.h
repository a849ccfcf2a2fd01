#pragma once

#include "document/Project.h"
#include "platform/Clock.h"
#include "platform/SerialExecutor.h"

namespace corvane {

/// Writes timestamped copies of a document next to the project file and keeps the newest three. The
/// program never reads them; a user can open one by hand. Called and awaited on the main thread.
class BackupService {
  public:
    class BackupError : public Failure {
      public:
        static BackupError writeFailed(const QString &file, const QString &error);

      private:
        using Failure::Failure;
    };

    static constexpr qsizetype kKeptBackups = 3;

    explicit BackupService(Clock &clock = Clock::system());

    /// Writes `<stem>.<timestamp>.corvane.bak`, removes older backups and returns the new path.
    /// Throws `BackupError` if the write fails. Failures to remove older backups are ignored.
    QCoro::Task<QString> write(Project project);

  private:
    static QString writeNow(const Project &project, const QDateTime &now);

    Clock &m_clock;
    SerialExecutor m_executor;
};

} // namespace corvane

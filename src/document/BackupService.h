#pragma once

#include "document/Project.h"
#include "platform/Clock.h"
#include "platform/SerialExecutor.h"

namespace corvane {

/// Writes timestamped copies of a document beside the project file and keeps the newest three. The
/// program never reads one: a user restores it by hand. Called and awaited on the main thread.
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

    /// Writes `<stem>.<stamp>.corvane.bak` and gives its path. Throws `BackupError`. What fails
    /// while older backups are removed is passed over.
    QCoro::Task<QString> write(Project project);

  private:
    static QString writeNow(const Project &project, const QDateTime &now);

    Clock &m_clock;
    SerialExecutor m_executor;
};

} // namespace corvane

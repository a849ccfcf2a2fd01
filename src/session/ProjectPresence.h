#pragma once

#include "document/DocumentLock.h"
#include "session/ProjectStore.h"

namespace corvane {

/// Holds the advisory lock of the open project, so that other machines are warned, and reports
/// whether another machine had the project open before. The lock follows the session: it is taken
/// when a project is opened, renewed while it is open and released when it is closed.
///
/// Main thread only; files are accessed on its own executor. The store must outlive it.
class ProjectPresence : public QObject {
    Q_OBJECT

  public:
    explicit ProjectPresence(ProjectStore &store, QObject *parent = nullptr);
    /// Releases the lock.
    ~ProjectPresence() override;

    /// The other session that has the open project open, as of the last check; nullopt without one.
    /// While there is one, this session takes no lock.
    const std::optional<DocumentLock::Holder> &otherHolder() const { return m_otherHolder; }

  Q_SIGNALS:
    void otherHolderChanged();

  private:
    void follow();
    void release();
    QCoro::Task<> renew();
    void setOtherHolder(std::optional<DocumentLock::Holder> holder);

    ProjectStore &m_store;
    QString m_file; ///< of the open project; may be empty
    DocumentLock::Holder m_self;
    std::optional<DocumentLock::Holder> m_otherHolder;
    std::unique_ptr<Clock::Timer> m_renewal;
    SerialExecutor m_executor{QStringLiteral("DocumentLock")};
};

} // namespace corvane

#pragma once

#include "delivery/DeliveryFlow.h"
#include "delivery/handoff/CacheFunctions.h"
#include "delivery/handoff/HandoffPlanning.h"
#include "delivery/handoff/RecentDestinations.h"
#include "media/ExportSession.h"
#include "platform/ApplicationFolders.h"

namespace corvane {

/// The flow of a handoff. Plans the contents of the package and builds it. Does not change the
/// project.
///
/// Main thread. If the view model is destroyed during a run, the package is completed with what was
/// made until then.
class SelectsHandoffViewModel
    : public TypedDeliveryFlow<HandoffChoices, HandoffProgress, HandoffResult,
                               &HandoffChoices::destinationFolder> {
    Q_OBJECT

  public:
    /// The factory must outlive the run.
    SelectsHandoffViewModel(
        ProjectStore *store, media::ExportSessionFactory &sessions, CacheFunctions cache = {},
        std::unique_ptr<QSettings> defaults = applicationFolders::userDefaults(),
        QObject *parent = nullptr);

    /// Newest first.
    const QStringList &recentDestinations() const { return m_recentDestinations; }

    void setProjectName(const QString &name) { choose(&HandoffChoices::projectName, name); }

    /// Moves or adds the folder to the front of the recent ones.
    void noteDestination(const QString &folder);
    bool canStart(const Project &project) const;

  Q_SIGNALS:
    void recentDestinationsChanged();

  protected:
    /// Chooses the newest recent destination.
    void resetChoices(const Project &project) override;
    std::shared_ptr<DeliveryRun> prepareRun(const Project &project) override;

  private:
    class Run;

    media::ExportSessionFactory &m_sessions;
    CacheFunctions m_cache;
    RecentDestinations m_recents;
    QStringList m_recentDestinations;
};

} // namespace corvane

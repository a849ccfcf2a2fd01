#include "delivery/handoff/SelectsHandoffViewModel.h"

#include "delivery/handoff/SelectsHandoffEngine.h"
#include "platform/Paths.h"

namespace corvane {

class SelectsHandoffViewModel::Run : public DeliveryRun {
  public:
    Run(SelectsHandoffViewModel &flow, HandoffPlan plan)
        : m_flow(&flow),
          m_engine(flow.store()->authorization(), flow.m_sessions, flow.m_cache,
                   flow.store()->clock()),
          m_plan(std::move(plan)) {}

    QCoro::Task<QStringList> deliver(PathSafety::SourceGrants grants,
                                     std::shared_ptr<CancelToken> cancelToken) override {
        m_plan.authorizedSourcePaths = grants.authorizedSourcePaths;
        m_plan.sourceMediaRootAuthorized = grants.mediaRootAuthorized;
        const auto onProgress = [this](const HandoffProgress &progress) {
            if (m_flow) {
                m_flow->setProgress(progress, progress.overallFraction());
            }
        };
        HandoffResult result = co_await m_engine.run(m_plan, onProgress, cancelToken);
        const QStringList changed = result.changedSources;
        if (m_flow) {
            m_flow->finish(std::move(result));
        }
        co_return changed;
    }

  private:
    QPointer<SelectsHandoffViewModel> m_flow;
    SelectsHandoffEngine m_engine;
    HandoffPlan m_plan;
};

SelectsHandoffViewModel::SelectsHandoffViewModel(ProjectStore *store,
                                                 media::ExportSessionFactory &sessions,
                                                 CacheFunctions cache,
                                                 std::unique_ptr<QSettings> defaults,
                                                 QObject *parent)
    : TypedDeliveryFlow(store, parent),
      m_sessions(sessions),
      m_cache(std::move(cache)),
      m_recents(std::move(defaults)) {}

void SelectsHandoffViewModel::resetChoices(const Project &project) {
    assign(m_recentDestinations, m_recents.load(),
           &SelectsHandoffViewModel::recentDestinationsChanged);
    HandoffChoices defaults = defaultHandoffChoices(project);
    if (!m_recentDestinations.isEmpty()) {
        defaults.destinationFolder = m_recentDestinations.first();
    }
    setChoices(std::move(defaults));
}

void SelectsHandoffViewModel::noteDestination(const QString &folder) {
    assign(m_recentDestinations, m_recents.note(paths::standardized(folder)),
           &SelectsHandoffViewModel::recentDestinationsChanged);
}

bool SelectsHandoffViewModel::canStart(const Project &project) const {
    return choices().destinationFolder && !choices().projectName.trimmed().isEmpty() &&
           stage() != Stage::running && !planClips(project).isEmpty();
}

std::shared_ptr<DeliveryRun> SelectsHandoffViewModel::prepareRun(const Project &project) {
    if (!choices().destinationFolder) {
        return nullptr;
    }
    HandoffPlan plan = makePlan(project, choices());
    if (plan.clips.isEmpty()) {
        return nullptr;
    }
    noteDestination(plan.destinationFolder);
    return std::make_shared<Run>(*this, std::move(plan));
}

} // namespace corvane

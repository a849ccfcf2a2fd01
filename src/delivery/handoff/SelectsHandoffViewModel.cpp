#include "delivery/handoff/SelectsHandoffViewModel.h"

#include "delivery/handoff/HandoffTexts.h"
#include "platform/Paths.h"

#include <algorithm>
#include <cmath>

namespace corvane {

/// All that a run needs to go on without its view model.
struct SelectsHandoffViewModel::Run {
    QPointer<SelectsHandoffViewModel> viewModel;
    QPointer<ProjectStore> store;
    std::shared_ptr<SelectsHandoffEngine> engine;
    HandoffPlan plan;
};

SelectsHandoffViewModel::SelectsHandoffViewModel(ProjectStore *store,
                                                 media::ExportSessionFactory &sessions,
                                                 CacheMaker &cacheMaker,
                                                 std::unique_ptr<QSettings> defaults,
                                                 QObject *parent)
    : QObject(parent),
      m_store(store),
      m_sessions(sessions),
      m_cacheMaker(cacheMaker),
      m_recents(std::move(defaults)) {}

SelectsHandoffViewModel::~SelectsHandoffViewModel() {
    if (m_engine) {
        m_engine->abort();
    }
}

template <typename Value>
void SelectsHandoffViewModel::assign(Value &field, Value value,
                                     void (SelectsHandoffViewModel::*changed)()) {
    if (field != value) {
        field = std::move(value);
        Q_EMIT(this->*changed)();
    }
}

template <typename Value>
void SelectsHandoffViewModel::choose(Value HandoffChoices::*field, Value value) {
    assign(m_choices.*field, std::move(value), &SelectsHandoffViewModel::choicesChanged);
}

void SelectsHandoffViewModel::setDestinationFolder(const std::optional<QString> &folder) {
    const bool isChosen = folder && !folder->isEmpty();
    choose(&HandoffChoices::destinationFolder,
           isChosen ? std::optional(paths::standardized(*folder)) : std::nullopt);
}

void SelectsHandoffViewModel::setProjectName(const QString &name) {
    choose(&HandoffChoices::projectName, name);
}

void SelectsHandoffViewModel::setMode(ExportBatch::Mode mode) {
    choose(&HandoffChoices::mode, mode);
}

void SelectsHandoffViewModel::setOutputMode(HandoffOutputMode mode) {
    choose(&HandoffChoices::outputMode, mode);
}

void SelectsHandoffViewModel::setSubclipHandleSeconds(double seconds) {
    const bool isLength = std::isfinite(seconds) && seconds > 0;
    choose(&HandoffChoices::subclipHandleSeconds, isLength ? seconds : 0.0);
}

void SelectsHandoffViewModel::setNamingPreset(NamingPreset preset) {
    HandoffChoices chosen = m_choices;
    chosen.namingPreset = preset;
    applyPreset(chosen.naming, preset, m_projectDisplayName);
    assign(m_choices, std::move(chosen), &SelectsHandoffViewModel::choicesChanged);
}

void SelectsHandoffViewModel::setNaming(const ExportNamingOptions &naming) {
    choose(&HandoffChoices::naming, naming);
}

void SelectsHandoffViewModel::reset(const Project &project) {
    if (m_stage == Stage::running) {
        return;
    }
    assign(m_projectDisplayName, std::optional(project.displayName()),
           &SelectsHandoffViewModel::projectDisplayNameChanged);
    assign(m_recentDestinations, m_recents.load(),
           &SelectsHandoffViewModel::recentDestinationsChanged);
    HandoffChoices choices = defaultHandoffChoices(project);
    if (!m_recentDestinations.isEmpty()) {
        choices.destinationFolder = m_recentDestinations.first();
    }
    assign(m_choices, std::move(choices), &SelectsHandoffViewModel::choicesChanged);
    clearRun();
    assign(m_stage, Stage::configure, &SelectsHandoffViewModel::stageChanged);
}

void SelectsHandoffViewModel::noteDestination(const QString &folder) {
    assign(m_recentDestinations, m_recents.note(paths::standardized(folder)),
           &SelectsHandoffViewModel::recentDestinationsChanged);
}

void SelectsHandoffViewModel::clearRun() {
    m_overallFraction = 0;
    assign(m_progress, {}, &SelectsHandoffViewModel::progressChanged);
    assign(m_result, {}, &SelectsHandoffViewModel::resultChanged);
    assign(m_backupError, {}, &SelectsHandoffViewModel::backupErrorChanged);
    assign(m_cancelStage, CancelStage::none, &SelectsHandoffViewModel::cancelStageChanged);
}

bool SelectsHandoffViewModel::canStart(const Project &project) const {
    return m_choices.destinationFolder && !m_choices.projectName.trimmed().isEmpty() &&
           m_stage != Stage::running && !planClips(project).isEmpty();
}

bool SelectsHandoffViewModel::lacksSessions(const Project &project) const {
    return m_choices.destinationFolder && !m_sessions.canCreateSessions() &&
           needsExportSession(makePlan(project, m_choices));
}

QCoro::Task<> SelectsHandoffViewModel::start(Project project) {
    if (auto run = prepareRun(project)) {
        co_await perform(std::move(*run));
    }
}

std::optional<SelectsHandoffViewModel::Run>
SelectsHandoffViewModel::prepareRun(const Project &project) {
    if (!m_store || !m_choices.destinationFolder || m_stage == Stage::running) {
        return std::nullopt;
    }
    HandoffPlan plan = makePlan(project, m_choices);
    if (plan.clips.isEmpty()) {
        return std::nullopt;
    }
    noteDestination(plan.destinationFolder);
    m_engine = std::make_shared<SelectsHandoffEngine>(m_store->authorization(), m_sessions,
                                                      m_cacheMaker, m_store->clock());
    clearRun();
    assign(m_stage, Stage::running, &SelectsHandoffViewModel::stageChanged);
    return Run{this, m_store, m_engine, std::move(plan)};
}

QCoro::Task<> SelectsHandoffViewModel::perform(Run run) {
    co_await backUp(run);
    if (run.store) {
        const auto grants =
            co_await run.store->authorization().sourceGrants(run.plan.sourceProjectFilePath);
        run.plan.authorizedSourcePaths = grants.authorizedSourcePaths;
        run.plan.sourceMediaRootAuthorized = grants.mediaRootAuthorized;
    }
    if (!run.viewModel) {
        co_return;
    }
    HandoffResult result = co_await runEngine(run);
    if (run.viewModel) {
        run.viewModel->adoptResult(std::move(result));
    }
}

/// A backup that fails doesn't stop the handoff; it is told with the result.
QCoro::Task<> SelectsHandoffViewModel::backUp(Run run) {
    const auto failure = co_await run.store->backUp();
    if (run.viewModel && failure) {
        run.viewModel->assign(run.viewModel->m_backupError, std::optional(failure->description()),
                              &SelectsHandoffViewModel::backupErrorChanged);
    }
}

QCoro::Task<HandoffResult> SelectsHandoffViewModel::runEngine(Run run) {
    auto running =
        run.engine->run(run.plan, [viewModel = run.viewModel](const HandoffProgress &progress) {
            if (viewModel) {
                viewModel->adoptProgress(progress);
            }
        });
    if (run.viewModel->m_cancelStage != CancelStage::none) {
        run.engine->requestCancel(); // asked for before the engine had a token to tell it to
    }
    co_return co_await std::move(running);
}

void SelectsHandoffViewModel::adoptProgress(const HandoffProgress &progress) {
    m_overallFraction = std::max(m_overallFraction, HandoffTexts::overallFraction(progress));
    assign(m_progress, std::optional(progress), &SelectsHandoffViewModel::progressChanged);
}

void SelectsHandoffViewModel::adoptResult(HandoffResult result) {
    m_engine.reset();
    assign(m_result, std::optional(std::move(result)), &SelectsHandoffViewModel::resultChanged);
    assign(m_stage, Stage::done, &SelectsHandoffViewModel::stageChanged);
}

void SelectsHandoffViewModel::requestCancel() {
    if (m_stage != Stage::running) {
        return;
    }
    m_engine->requestCancel();
    assign(m_cancelStage,
           m_cancelStage == CancelStage::none ? CancelStage::graceful : CancelStage::hard,
           &SelectsHandoffViewModel::cancelStageChanged);
}

void SelectsHandoffViewModel::abort() {
    if (m_stage == Stage::running) {
        m_engine->abort();
        assign(m_cancelStage, CancelStage::hard, &SelectsHandoffViewModel::cancelStageChanged);
    }
}

} // namespace corvane

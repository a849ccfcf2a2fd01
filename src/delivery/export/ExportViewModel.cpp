#include "delivery/export/ExportViewModel.h"

#include "delivery/export/ExportWriteBack.h"
#include "delivery/ExportTexts.h"
#include "platform/Paths.h"

#include <algorithm>
#include <cmath>

namespace corvane {

namespace {

/// Every file that the project names, wherever it lies.
QStringList filesOf(const Project &project) {
    QStringList files{project.filePath};
    const auto add = [&](const std::optional<QString> &path) {
        if (path && !path->isEmpty()) {
            files.append(resolvedAgainstProject(*path, project.filePath));
        }
    };
    for (const VideoItem &video : project.videos) {
        add(video->sourcePath);
        add(video->originalSourcePath);
        add(video->sidecarPath);
    }
    return files;
}

} // namespace

/// All that a run needs to go on without its view model.
struct ExportViewModel::Run {
    QPointer<ExportViewModel> viewModel;
    QPointer<ProjectStore> store;
    std::shared_ptr<ExportEngine> engine;
    ExportOrigin origin;
    QString projectFile;
    ExportBatchInput input;
    QList<ExportRowJob> rows;
};

ExportViewModel::ExportViewModel(ProjectStore *store, media::ExportSessionFactory &sessions,
                                 QObject *parent)
    : QObject(parent), m_store(store), m_sessions(sessions) {}

ExportViewModel::~ExportViewModel() {
    if (m_engine) {
        m_engine->abort();
    }
}

template <typename Value>
void ExportViewModel::assign(Value &field, Value value, void (ExportViewModel::*changed)()) {
    if (field != value) {
        field = std::move(value);
        Q_EMIT(this->*changed)();
    }
}

template <typename Value> void ExportViewModel::choose(Value ExportChoices::*field, Value value) {
    assign(m_choices.*field, std::move(value), &ExportViewModel::choicesChanged);
}

void ExportViewModel::setOutputFolder(const std::optional<QString> &folder) {
    const bool isChosen = folder && !folder->isEmpty();
    choose(&ExportChoices::outputFolder,
           isChosen ? std::optional(paths::standardized(*folder)) : std::nullopt);
}

void ExportViewModel::setMode(ExportBatch::Mode mode) {
    choose(&ExportChoices::mode, mode);
}

void ExportViewModel::setOutputMode(OutputMode mode) {
    choose(&ExportChoices::outputMode, mode);
}

void ExportViewModel::setIncludeWholeVideoSelects(bool include) {
    choose(&ExportChoices::includeWholeVideoSelects, include);
}

void ExportViewModel::setIncludeSubclipSelects(bool include) {
    choose(&ExportChoices::includeSubclipSelects, include);
}

void ExportViewModel::setSubclipHandleSeconds(double seconds) {
    const bool isLength = std::isfinite(seconds) && seconds > 0;
    choose(&ExportChoices::subclipHandleSeconds, isLength ? seconds : 0.0);
}

void ExportViewModel::setNamingPreset(NamingPreset preset) {
    ExportChoices chosen = m_choices;
    chosen.namingPreset = preset;
    applyPreset(chosen.naming, preset, m_projectDisplayName);
    assign(m_choices, std::move(chosen), &ExportViewModel::choicesChanged);
}

void ExportViewModel::setNaming(const ExportNamingOptions &naming) {
    choose(&ExportChoices::naming, naming);
}

void ExportViewModel::setExportNewOnly(bool newOnly) {
    choose(&ExportChoices::exportNewOnly, newOnly);
}

void ExportViewModel::reset(const Project &project) {
    if (m_stage == Stage::running) {
        return;
    }
    assign(m_projectDisplayName, std::optional(project.displayName()),
           &ExportViewModel::projectDisplayNameChanged);
    assign(m_choices, defaultExportChoices(project), &ExportViewModel::choicesChanged);
    clearRun();
    assign(m_stage, Stage::configure, &ExportViewModel::stageChanged);
}

void ExportViewModel::clearRun() {
    m_overallFraction = 0;
    assign(m_progress, {}, &ExportViewModel::progressChanged);
    assign(m_result, {}, &ExportViewModel::resultChanged);
    assign(m_backupError, {}, &ExportViewModel::backupErrorChanged);
    assign(m_cancelStage, CancelStage::none, &ExportViewModel::cancelStageChanged);
}

QList<ExportRowJob> ExportViewModel::planRows(const Project &project,
                                              bool includeFolderContents) const {
    return corvane::planRows(project, m_choices, includeFolderContents);
}

bool ExportViewModel::canStart(const QList<ExportRowJob> &rows) const {
    return m_choices.outputFolder && m_stage != Stage::running && !rows.isEmpty();
}

QCoro::Task<> ExportViewModel::start(Project project) {
    if (auto run = prepareRun(project)) {
        co_await perform(std::move(*run));
    }
}

std::optional<ExportViewModel::Run> ExportViewModel::prepareRun(const Project &project) {
    const QList<ExportRowJob> rows = planRows(project, true);
    if (!m_store || !canStart(rows)) {
        return std::nullopt;
    }
    const ExportBatchInput input{
        .batchId = newIdentifier(),
        .outputFolder = *m_choices.outputFolder,
        .mode = m_choices.mode,
        .outputMode = m_choices.outputMode,
        .completedAt = m_store->clock().now(),
        .namingOptions = m_choices.naming,
        .subclipHandleSeconds = m_choices.subclipHandleSeconds,
        .includeWholeVideoSelects = m_choices.includeWholeVideoSelects,
        .includeSubclipSelects = m_choices.includeSubclipSelects,
        .projectFolder = projectFolder(project.filePath),
        .protectedFiles = filesOf(project),
    };
    m_engine = std::make_shared<ExportEngine>(m_sessions, m_store->clock());
    m_runInput = input;
    clearRun();
    assign(m_stage, Stage::running, &ExportViewModel::stageChanged);
    return Run{this,  m_store, m_engine, ExportOrigin::of(project, *m_store), project.filePath,
               input, rows};
}

QCoro::Task<> ExportViewModel::perform(Run run) {
    co_await backUp(run);
    if (run.store) {
        const auto grants = co_await run.store->authorization().sourceGrants(run.projectFile);
        run.input.authorizedSourcePaths = grants.authorizedSourcePaths;
        run.input.mediaRootAuthorized = grants.mediaRootAuthorized;
    }
    if (!run.viewModel) {
        co_return;
    }
    run.viewModel->m_runInput = run.input;
    ExportBatchResult result = co_await runEngine(run);
    if (run.store) {
        writeBack(*run.store, run.origin, run.input, result);
    }
    if (run.viewModel) {
        run.viewModel->adoptResult(std::move(result));
    }
}

/// A backup that fails doesn't stop the export; it is told with the result.
QCoro::Task<> ExportViewModel::backUp(Run run) {
    const auto failure = co_await run.store->backUp();
    if (run.viewModel && failure) {
        run.viewModel->assign(run.viewModel->m_backupError, std::optional(failure->description()),
                              &ExportViewModel::backupErrorChanged);
    }
}

QCoro::Task<ExportBatchResult> ExportViewModel::runEngine(Run run) {
    auto running = run.engine->run(run.input, run.rows,
                                   [viewModel = run.viewModel](const ExportProgress &progress) {
                                       if (viewModel) {
                                           viewModel->adoptProgress(progress);
                                       }
                                   });
    // What was asked for before the engine had a token to tell it to.
    if (run.viewModel->m_cancelStage == CancelStage::graceful) {
        run.engine->requestCancel();
    } else if (run.viewModel->m_cancelStage == CancelStage::hard) {
        run.engine->abort();
    }
    co_return co_await std::move(running);
}

void ExportViewModel::adoptProgress(const ExportProgress &progress) {
    m_overallFraction =
        std::max(m_overallFraction, ExportTexts::overallFraction(progress, m_choices.outputMode));
    assign(m_progress, std::optional(progress), &ExportViewModel::progressChanged);
}

void ExportViewModel::adoptResult(ExportBatchResult result) {
    m_engine.reset();
    assign(m_result, std::optional(std::move(result)), &ExportViewModel::resultChanged);
    assign(m_stage, Stage::done, &ExportViewModel::stageChanged);
}

void ExportViewModel::requestCancel() {
    if (m_stage != Stage::running) {
        return;
    }
    m_engine->requestCancel();
    assign(m_cancelStage,
           m_cancelStage == CancelStage::none ? CancelStage::graceful : CancelStage::hard,
           &ExportViewModel::cancelStageChanged);
}

} // namespace corvane

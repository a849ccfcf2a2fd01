#include "delivery/export/ExportViewModel.h"

#include "delivery/export/ExportEngine.h"
#include "delivery/export/ExportWriteBack.h"
#include "platform/SerialExecutor.h"

namespace corvane {

namespace {

/// Returns every file that the project refers to, and the project file.
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
        add(video->hdPath);
    }
    return files;
}

} // namespace

class ExportViewModel::Run : public DeliveryRun {
  public:
    Run(ExportViewModel &flow, const Project &project, ExportBatchInput input)
        : m_flow(&flow),
          m_store(flow.store()),
          m_engine(flow.m_sessions, m_store->clock()),
          m_origin(ExportOrigin::of(project, *m_store)),
          m_project(project),
          m_choices(flow.choices()),
          m_input(std::move(input)) {}

    QCoro::Task<QStringList> deliver(PathSafety::SourceGrants grants,
                                     std::shared_ptr<CancelToken> cancelToken) override {
        m_input.authorizedSourcePaths = grants.authorizedSourcePaths;
        m_input.mediaRootAuthorized = grants.mediaRootAuthorized;
        m_flow->m_runInput = m_input;
        const auto onProgress = [this](const ExportProgress &progress) {
            if (m_flow) {
                m_flow->setProgress(progress, progress.overallFraction(m_input.outputMode));
            }
        };
        // The output folder may be on a drive that responds slowly.
        const QList<ExportRowJob> rows =
            co_await userInitiatedExecutor().run([project = m_project, choices = m_choices] {
                return corvane::planRows(project, choices, true);
            });
        ExportBatchResult result = co_await m_engine.run(m_input, rows, onProgress, cancelToken);
        if (m_store) {
            writeBack(*m_store, m_origin, m_input, result);
        }
        const QStringList changed = result.changedSources;
        if (m_flow) {
            m_flow->finish(std::move(result));
        }
        co_return changed;
    }

  private:
    QPointer<ExportViewModel> m_flow;
    QPointer<ProjectStore> m_store;
    ExportEngine m_engine;
    ExportOrigin m_origin;
    Project m_project;
    ExportChoices m_choices;
    ExportBatchInput m_input;
};

ExportViewModel::ExportViewModel(ProjectStore *store, media::ExportSessionFactory &sessions,
                                 QObject *parent)
    : TypedDeliveryFlow(store, parent), m_sessions(sessions) {}

void ExportViewModel::resetChoices(const Project &project) {
    setChoices(defaultExportChoices(project));
}

QList<ExportRowJob> ExportViewModel::planRows(const Project &project,
                                              bool includeFolderContents) const {
    return corvane::planRows(project, choices(), includeFolderContents);
}

bool ExportViewModel::canStart(const QList<ExportRowJob> &rows) const {
    return choices().outputFolder && stage() != Stage::running && !rows.isEmpty();
}

std::shared_ptr<DeliveryRun> ExportViewModel::prepareRun(const Project &project) {
    if (!canStart(planRows(project, false))) {
        return nullptr;
    }
    m_runInput = ExportBatchInput{
        .batchId = newIdentifier(),
        .outputFolder = *choices().outputFolder,
        .mode = choices().mode,
        .outputMode = choices().outputMode,
        .completedAt = store()->clock().now(),
        .namingOptions = choices().naming,
        .subclipHandleSeconds = choices().subclipHandleSeconds,
        .includeWholeVideoSelects = choices().includeWholeVideoSelects,
        .includeSubclipSelects = choices().includeSubclipSelects,
        .volumeLimits = choices().volumeLimits,
        .projectFolder = projectFolder(project.filePath),
        .protectedFiles = filesOf(project),
    };
    return std::make_shared<Run>(*this, project, *m_runInput);
}

} // namespace corvane

#include "delivery/export/ExportViewModel.h"

#include "delivery/export/ExportEngine.h"
#include "delivery/export/ExportWriteBack.h"

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
    Run(ExportViewModel &flow, const Project &project, ExportBatchInput input,
        QList<ExportRowJob> rows)
        : m_flow(&flow),
          m_store(flow.store()),
          m_engine(flow.m_sessions, m_store->clock()),
          m_origin(ExportOrigin::of(project, *m_store)),
          m_input(std::move(input)),
          m_rows(std::move(rows)) {}

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
        ExportBatchResult result = co_await m_engine.run(m_input, m_rows, onProgress, cancelToken);
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
    ExportBatchInput m_input;
    QList<ExportRowJob> m_rows;
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
    QList<ExportRowJob> rows = planRows(project, true);
    if (!canStart(rows)) {
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
        .projectFolder = projectFolder(project.filePath),
        .protectedFiles = filesOf(project),
    };
    return std::make_shared<Run>(*this, project, *m_runInput, std::move(rows));
}

} // namespace corvane

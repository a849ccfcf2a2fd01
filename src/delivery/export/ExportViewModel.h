#pragma once

#include "delivery/DeliveryFlow.h"
#include "delivery/export/ExportPlanning.h"
#include "media/ExportSession.h"

namespace corvane {

/// The flow of an export. Plans the rows, runs them, and writes the outcome back into the project
/// that the run was started from, as long as that is the open one.
///
/// Main thread. If the view model is destroyed during a run, what was delivered until then is still
/// written back.
class ExportViewModel : public TypedDeliveryFlow<ExportChoices, ExportProgress, ExportBatchResult,
                                                 &ExportChoices::outputFolder> {
    Q_OBJECT

  public:
    /// The factory must outlive the run.
    ExportViewModel(ProjectStore *store, media::ExportSessionFactory &sessions,
                    QObject *parent = nullptr);

    /// Input of the current or last run; nullopt before the first.
    const std::optional<ExportBatchInput> &runInput() const { return m_runInput; }

    // Choices, beside those of every delivery. All emit `choicesChanged`.
    void setIncludeWholeVideoSelects(bool include) {
        choose(&ExportChoices::includeWholeVideoSelects, include);
    }
    void setIncludeSubclipSelects(bool include) {
        choose(&ExportChoices::includeSubclipSelects, include);
    }
    void setExportNewOnly(bool newOnly) { choose(&ExportChoices::exportNewOnly, newOnly); }

    QList<ExportRowJob> planRows(const Project &project, bool includeFolderContents) const;
    bool canStart(const QList<ExportRowJob> &rows) const;

  protected:
    void resetChoices(const Project &project) override;
    std::shared_ptr<DeliveryRun> prepareRun(const Project &project) override;

  private:
    class Run;

    media::ExportSessionFactory &m_sessions;
    std::optional<ExportBatchInput> m_runInput;
};

} // namespace corvane

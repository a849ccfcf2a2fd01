#pragma once

#include "delivery/export/ExportEngine.h"
#include "delivery/ExportPlanning.h"
#include "session/ProjectStore.h"

#include <QPointer>

namespace corvane {

/// The export flow: its stage, its choices and its one run. It plans the rows, starts a run with a
/// snapshot of the project's grants, and writes the outcome back into the project.
///
/// Main thread. A destroyed view model aborts its run; what was delivered until then is still
/// written back. The run writes into the project that it was started from and into no other.
class ExportViewModel : public QObject {
    Q_OBJECT

  public:
    enum class Stage { configure, running, done };

    /// The factory must outlive the run.
    ExportViewModel(ProjectStore *store, media::ExportSessionFactory &sessions,
                    QObject *parent = nullptr);
    ~ExportViewModel() override;

    // Published fields. Each has a signal that is raised when the value differs.
    Stage stage() const { return m_stage; }
    const ExportChoices &choices() const { return m_choices; }
    const std::optional<QString> &projectDisplayName() const { return m_projectDisplayName; }
    const std::optional<ExportProgress> &progress() const { return m_progress; }
    /// How much of the run is done, from 0 to 1; it never goes back. Changes with `progress`.
    double overallFraction() const { return m_overallFraction; }
    const std::optional<ExportBatchResult> &result() const { return m_result; }
    const std::optional<QString> &backupError() const { return m_backupError; }
    /// How far the cancelling of the run has gone; back to `none` with the next one.
    CancelStage cancelStage() const { return m_cancelStage; }
    /// What the run that is or was last in work was given; absent before one.
    const std::optional<ExportBatchInput> &runInput() const { return m_runInput; }

    // The choices. All of them raise `choicesChanged`.
    /// A relative path is taken from the current folder; an empty one is none.
    void setOutputFolder(const std::optional<QString> &folder);
    void setMode(ExportBatch::Mode mode);
    void setOutputMode(OutputMode mode);
    void setIncludeWholeVideoSelects(bool include);
    void setIncludeSubclipSelects(bool include);
    /// What is no positive length is none.
    void setSubclipHandleSeconds(double seconds);
    /// Applies the preset to the naming choices.
    void setNamingPreset(NamingPreset preset);
    void setNaming(const ExportNamingOptions &naming);
    void setExportNewOnly(bool newOnly);

    // The flow.
    /// Back to `configure` with the defaults for the project. Does nothing while a run is in work.
    void reset(const Project &project);
    QList<ExportRowJob> planRows(const Project &project, bool includeFolderContents) const;
    bool canStart(const QList<ExportRowJob> &rows) const;
    /// Runs the export; the task is done when the run is. Does nothing where there is nothing to
    /// do.
    QCoro::Task<> start(Project project);
    /// The first call lets the output in hand finish, the second aborts it.
    void requestCancel();

  Q_SIGNALS:
    void stageChanged();
    void choicesChanged();
    void projectDisplayNameChanged();
    void progressChanged();
    void resultChanged();
    void backupErrorChanged();
    void cancelStageChanged();

  private:
    struct Run;

    std::optional<Run> prepareRun(const Project &project);
    static QCoro::Task<> perform(Run run);
    static QCoro::Task<> backUp(Run run);
    static QCoro::Task<ExportBatchResult> runEngine(Run run);
    void clearRun();
    void adoptProgress(const ExportProgress &progress);
    void adoptResult(ExportBatchResult result);
    template <typename Value>
    void assign(Value &field, Value value, void (ExportViewModel::*changed)());
    template <typename Value> void choose(Value ExportChoices::*field, Value value);

    QPointer<ProjectStore> m_store;
    media::ExportSessionFactory &m_sessions;

    Stage m_stage = Stage::configure;
    ExportChoices m_choices;
    std::optional<QString> m_projectDisplayName;
    std::optional<ExportProgress> m_progress;
    double m_overallFraction = 0;
    std::optional<ExportBatchResult> m_result;
    std::optional<QString> m_backupError;
    CancelStage m_cancelStage = CancelStage::none;
    std::optional<ExportBatchInput> m_runInput;
    std::shared_ptr<ExportEngine> m_engine; ///< while a run is in work
};

} // namespace corvane

#pragma once

#include "delivery/handoff/HandoffPlanning.h"
#include "delivery/handoff/RecentDestinations.h"
#include "delivery/handoff/SelectsHandoffEngine.h"
#include "platform/ApplicationFolders.h"
#include "session/ProjectStore.h"

#include <QPointer>

namespace corvane {

/// The handoff flow: its stage, its choices and its one run. It plans what goes into the package
/// and starts a run with a snapshot of the project's grants. The project isn't changed by it.
///
/// Main thread. A destroyed view model aborts its run; what was made until then is still completed.
class SelectsHandoffViewModel : public QObject {
    Q_OBJECT

  public:
    enum class Stage { configure, running, done };

    /// What is handed in must outlive the run.
    SelectsHandoffViewModel(
        ProjectStore *store, media::ExportSessionFactory &sessions, CacheMaker &cacheMaker,
        std::unique_ptr<QSettings> defaults = applicationFolders::userDefaults(),
        QObject *parent = nullptr);
    ~SelectsHandoffViewModel() override;

    // Published fields. Each has a signal that is raised when the value differs.
    Stage stage() const { return m_stage; }
    const HandoffChoices &choices() const { return m_choices; }
    const std::optional<QString> &projectDisplayName() const { return m_projectDisplayName; }
    /// Newest first.
    const QStringList &recentDestinations() const { return m_recentDestinations; }
    const std::optional<HandoffProgress> &progress() const { return m_progress; }
    /// How much of the run is done, from 0 to 1; it never goes back. Changes with `progress`.
    double overallFraction() const { return m_overallFraction; }
    const std::optional<HandoffResult> &result() const { return m_result; }
    const std::optional<QString> &backupError() const { return m_backupError; }
    /// How far the cancelling of the run has gone; back to `none` with the next one.
    CancelStage cancelStage() const { return m_cancelStage; }

    // The choices. All of them raise `choicesChanged`.
    /// A relative path is taken from the current folder; an empty one is none.
    void setDestinationFolder(const std::optional<QString> &folder);
    void setProjectName(const QString &name);
    void setMode(ExportBatch::Mode mode);
    void setOutputMode(HandoffOutputMode mode);
    /// What is no positive length is none.
    void setSubclipHandleSeconds(double seconds);
    /// Applies the preset to the naming choices.
    void setNamingPreset(NamingPreset preset);
    void setNaming(const ExportNamingOptions &naming);

    // The flow.
    /// Back to `configure` with the defaults for the project, and the newest recent destination.
    /// Does nothing while a run is in work.
    void reset(const Project &project);
    /// Puts a folder at the front of the recent ones.
    void noteDestination(const QString &folder);
    /// True if the screen may offer to start.
    bool canStart(const Project &project) const;
    /// True if a part of the package needs export sessions, and this build has none.
    bool lacksSessions(const Project &project) const;
    /// Runs the handoff; the task is done when the run is. Does nothing where there is nothing to
    /// do.
    QCoro::Task<> start(Project project);
    /// Lets the output in hand finish, and nothing further begin.
    void requestCancel();
    /// Ends the output in hand too. The package is still completed with what was made.
    void abort();

  Q_SIGNALS:
    void stageChanged();
    void choicesChanged();
    void projectDisplayNameChanged();
    void recentDestinationsChanged();
    void progressChanged();
    void resultChanged();
    void backupErrorChanged();
    void cancelStageChanged();

  private:
    struct Run;

    std::optional<Run> prepareRun(const Project &project);
    static QCoro::Task<> perform(Run run);
    static QCoro::Task<> backUp(Run run);
    static QCoro::Task<HandoffResult> runEngine(Run run);
    void clearRun();
    void adoptProgress(const HandoffProgress &progress);
    void adoptResult(HandoffResult result);
    template <typename Value>
    void assign(Value &field, Value value, void (SelectsHandoffViewModel::*changed)());
    template <typename Value> void choose(Value HandoffChoices::*field, Value value);

    QPointer<ProjectStore> m_store;
    media::ExportSessionFactory &m_sessions;
    CacheMaker &m_cacheMaker;
    RecentDestinations m_recents;

    Stage m_stage = Stage::configure;
    HandoffChoices m_choices;
    std::optional<QString> m_projectDisplayName;
    QStringList m_recentDestinations;
    std::optional<HandoffProgress> m_progress;
    double m_overallFraction = 0;
    std::optional<HandoffResult> m_result;
    std::optional<QString> m_backupError;
    CancelStage m_cancelStage = CancelStage::none;
    std::shared_ptr<SelectsHandoffEngine> m_engine; ///< while a run is in work
};

} // namespace corvane

#pragma once

#include "delivery/DeliveryChoices.h"
#include "platform/Tasks.h"
#include "session/ProjectStore.h"
#include "transfer/CancelToken.h"

#include <QCoroTask>
#include <QPointer>

namespace corvane {

/// A prepared run. It goes on without its flow, so it owns what it needs.
class DeliveryRun {
  public:
    virtual ~DeliveryRun();

    /// Runs the engine and passes its progress and result to the flow, if that still exists.
    /// `grants` is a snapshot for the entire run. Returns the sources that were refused because
    /// they are no longer the granted files. Never throws.
    virtual QCoro::Task<QStringList> deliver(PathSafety::SourceGrants grants,
                                             std::shared_ptr<CancelToken> cancelToken) = 0;
};

/// The flow of one kind of delivery: its stage, its choices and its run, one at a time. Each
/// published field has a signal that is emitted if the value differs.
///
/// Main thread. Destroying the flow aborts its run.
class DeliveryFlow : public QObject {
    Q_OBJECT

  public:
    enum class Stage { configure, running, done };
    Q_ENUM(Stage)

    /// The row of a run that is in progress.
    struct CurrentRow {
        int index = 0; ///< from 0
        int total = 0;
        QString fileName; ///< empty before the first output
    };

    ~DeliveryFlow() override;

    Stage stage() const { return m_stage; }
    virtual const DeliveryChoices &choices() const = 0;
    const std::optional<QString> &projectDisplayName() const { return m_projectDisplayName; }
    /// Completed part of the run, from 0 to 1; never decreases. Changes with `progressChanged`.
    double overallFraction() const { return m_overallFraction; }
    /// nullopt before the first row. Changes with `progressChanged`.
    virtual std::optional<CurrentRow> currentRow() const = 0;
    /// Why the backup before the run failed. The run goes on without it.
    const std::optional<QString> &backupError() const { return m_backupError; }
    CancelStage cancelStage() const { return m_cancelToken->stage(); }

    /// The folder to deliver into, or nullopt. Setting a relative path resolves it against the
    /// current folder; an empty path counts as nullopt.
    virtual const std::optional<QString> &folder() const = 0;
    virtual void setFolder(const std::optional<QString> &folder) = 0;
    /// Reads the limits of the folder's volume, to which the names are fitted, and sets the choice.
    /// The flow does that itself after each change of the folder.
    QCoro::Task<> readVolumeLimits();
    void setMode(ExportBatch::Mode mode);
    /// Values that are not finite and positive count as 0.
    void setSubclipHandleSeconds(double seconds);
    /// Also applies the preset to `naming`.
    void setNamingPreset(NamingPreset preset);
    void setNaming(const ExportNamingOptions &naming);

    /// Returns to `configure` with the defaults for the project. A no-op during a run.
    void reset(const Project &project);
    /// Runs the delivery of the project; the task ends with the run. Sources that were refused
    /// because they changed await the user's confirmation from then on. A no-op during a run and if
    /// there is nothing to deliver.
    QCoro::Task<> start(Project project);
    /// Raises the cancel stage by one step. A no-op unless running.
    void requestCancel();
    /// Aborts the current output and ends the run.
    void abort();

  Q_SIGNALS:
    void stageChanged();
    void choicesChanged();
    void projectDisplayNameChanged();
    void progressChanged();
    void resultChanged();
    void backupErrorChanged();
    void cancelStageChanged();

  protected:
    /// The store must outlive the flow's use of it or become null.
    explicit DeliveryFlow(ProjectStore *store, QObject *parent = nullptr);

    virtual void resetChoices(const Project &project) = 0;
    virtual DeliveryChoices &editableChoices() = 0;
    /// Clears the progress and the result of the previous run.
    virtual void clearOutcome() = 0;
    /// Returns nullptr if there is nothing to deliver.
    virtual std::shared_ptr<DeliveryRun> prepareRun(const Project &project) = 0;

    ProjectStore *store() const { return m_store; }
    void setStage(Stage stage) { assign(m_stage, stage, &DeliveryFlow::stageChanged); }
    void raiseOverallFraction(double fraction);
    static std::optional<QString> standardizedFolder(const std::optional<QString> &folder);

    template <typename Value, typename Flow>
    void assign(Value &field, Value value, void (Flow::*changed)()) {
        if (field != value) {
            field = std::move(value);
            Q_EMIT(static_cast<Flow *>(this)->*changed)();
        }
    }

  private:
    static QCoro::Task<> perform(QPointer<DeliveryFlow> flow, QString projectFile,
                                 std::shared_ptr<DeliveryRun> run);
    void clearRun();

    QPointer<ProjectStore> m_store;
    Stage m_stage = Stage::configure;
    std::optional<QString> m_projectDisplayName;
    std::optional<QString> m_folderOfLimits; ///< for which the volume's limits were read
    double m_overallFraction = 0;
    std::optional<QString> m_backupError;
    std::shared_ptr<CancelToken> m_cancelToken = std::make_shared<CancelToken>(); ///< per run
};

/// The part of a flow that depends on the types of its kind of delivery.
template <class Choices, class Progress, class Result, auto folderField>
class TypedDeliveryFlow : public DeliveryFlow {
  public:
    const Choices &choices() const override { return m_choices; }
    /// nullopt before the first row.
    const std::optional<Progress> &progress() const { return m_progress; }
    /// nullopt before the end of the run.
    const std::optional<Result> &result() const { return m_result; }
    std::optional<CurrentRow> currentRow() const override {
        return m_progress.transform([](const Progress &row) {
            return CurrentRow{row.index, row.total, row.currentFilename};
        });
    }
    const std::optional<QString> &folder() const override { return m_choices.*folderField; }
    void setFolder(const std::optional<QString> &folder) override {
        choose(folderField, standardizedFolder(folder));
        detach(readVolumeLimits());
    }
    void setOutputMode(decltype(Choices::outputMode) mode) { choose(&Choices::outputMode, mode); }

  protected:
    using DeliveryFlow::DeliveryFlow;

    DeliveryChoices &editableChoices() override { return m_choices; }
    void setChoices(Choices choices) {
        assign(m_choices, std::move(choices), &DeliveryFlow::choicesChanged);
    }
    template <typename Value> void choose(Value Choices::*field, Value value) {
        assign(m_choices.*field, std::move(value), &DeliveryFlow::choicesChanged);
    }
    void clearOutcome() override {
        assign(m_progress, {}, &DeliveryFlow::progressChanged);
        assign(m_result, {}, &DeliveryFlow::resultChanged);
    }
    void setProgress(const Progress &progress, double overallFraction) {
        raiseOverallFraction(overallFraction);
        assign(m_progress, std::optional(progress), &DeliveryFlow::progressChanged);
    }
    void finish(Result result) {
        assign(m_result, std::optional(std::move(result)), &DeliveryFlow::resultChanged);
        setStage(Stage::done);
    }

  private:
    Choices m_choices;
    std::optional<Progress> m_progress;
    std::optional<Result> m_result;
};

} // namespace corvane

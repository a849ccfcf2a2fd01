#pragma once

#include "delivery/DeliveryFlow.h"
#include "delivery/DeliveryRows.h"
#include "delivery/DeliverySheetTexts.h"
#include "delivery/NamingFields.h"
#include "platform/FilePanels.h"
#include "platform/RemainingTime.h"

namespace corvane {

/// The sheet of a delivery: the choices, the planned rows, the lines of the run and the results, as
/// texts and numbers for QML. A subclass adds what its kind of delivery needs.
///
/// The sheet is up while `isOpen`. It cannot be dismissed during a run. Before a run it follows the
/// project, and closes if that is closed or replaced.
///
/// Main thread. The objects passed in must outlive it.
class DeliverySheet : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool isOpen READ isOpen NOTIFY isOpenChanged)
    /// Name of the `DeliveryFlow::Stage`.
    Q_PROPERTY(QString stage READ stageName NOTIFY stageChanged)

    // Configure.
    Q_PROPERTY(QString folder READ folder NOTIFY choicesChanged)
    /// The folder's path without line breaks.
    Q_PROPERTY(QString folderLine READ folderLine NOTIFY choicesChanged)
    Q_PROPERTY(corvane::DeliveryChoice mode READ mode NOTIFY choicesChanged)
    Q_PROPERTY(corvane::DeliveryChoice output READ output NOTIFY choicesChanged)
    Q_PROPERTY(corvane::DeliveryChoice handles READ handles NOTIFY choicesChanged)
    Q_PROPERTY(corvane::NamingFields *naming READ naming CONSTANT)
    Q_PROPERTY(corvane::DeliveryRows *rows READ rows CONSTANT)
    Q_PROPERTY(bool hasRows READ hasRows NOTIFY planChanged)
    /// Replaces an empty list.
    Q_PROPERTY(QString nothingText READ nothingText CONSTANT)
    Q_PROPERTY(bool canStart READ canStart NOTIFY canStartChanged)
    /// Why the run cannot be started; empty if it can.
    Q_PROPERTY(QString startHelp READ startHelp NOTIFY canStartChanged)

    // Running.
    Q_PROPERTY(corvane::DeliveryRunTexts run READ run NOTIFY runChanged)
    Q_PROPERTY(QString cancelText READ cancelText NOTIFY runChanged)
    Q_PROPERTY(bool canCancel READ canCancel NOTIFY runChanged)

    // Done.
    Q_PROPERTY(corvane::DeliveryResultTexts result READ result NOTIFY resultChanged)
    Q_PROPERTY(corvane::DeliveryResults *results READ results CONSTANT)

  public:
    using Stage = DeliveryFlow::Stage;

    ~DeliverySheet() override;

    bool isOpen() const { return m_isOpen; }
    Stage stage() const { return m_flow.stage(); }

    QString folder() const;
    QString folderLine() const;
    DeliveryChoice mode() const;
    virtual DeliveryChoice output() const = 0;
    DeliveryChoice handles() const;
    NamingFields *naming() { return &m_naming; }
    DeliveryRows *rows() { return &m_rows; }
    bool hasRows() const { return m_rows.count() > 0; }
    const QString &nothingText() const { return m_texts.nothing; }
    bool canStart() const { return isOpen() && m_startHelp.isEmpty(); }
    const QString &startHelp() const { return m_startHelp; }

    const DeliveryRunTexts &run() const { return m_run; }
    QString cancelText() const;
    bool canCancel() const { return m_flow.cancelStage() != CancelStage::hard; }

    const DeliveryResultTexts &result() const { return m_result; }
    DeliveryResults *results() { return &m_results; }

    /// Opens the sheet with the defaults for the open project; during a run, with that run. A no-op
    /// without a project and if the sheet is up.
    Q_INVOKABLE void open();
    /// Closes the sheet. A no-op during a run.
    Q_INVOKABLE void dismiss();
    /// Returns from the results to the choices, with the defaults.
    Q_INVOKABLE void again();
    Q_INVOKABLE void chooseFolder();
    Q_INVOKABLE void chooseMode(int index);
    Q_INVOKABLE virtual void chooseOutput(int index) = 0;
    Q_INVOKABLE void chooseHandle(int index);
    /// Starts the run if `canStart`.
    Q_INVOKABLE void start();
    /// The first call lets the current output finish, the second ends the run.
    Q_INVOKABLE void requestCancel();
    /// Asks to show the file or folder in the desktop's file browser.
    Q_INVOKABLE void reveal(const QString &path);

  Q_SIGNALS:
    void isOpenChanged();
    void stageChanged();
    void choicesChanged();
    void planChanged();
    void canStartChanged();
    void runChanged();
    void resultChanged();
    void revealWanted(const QString &path);
    void dismissed();

  protected:
    /// Texts that depend on the kind of delivery only.
    struct Texts {
        QString nothing; ///< replaces an empty list
        QString folderPanelMessage;
        QString transcodeHelp; ///< about mode `accurateTranscode`
        QString handlesHelp;
    };
    DeliverySheet(Texts texts, DeliveryFlow &flow, ProjectStore &store, FilePanels &panels,
                  Clock &clock, QObject *parent);

    /// True if the planned rows depend on the choices, not only on the project.
    virtual bool planDependsOnChoices() const = 0;
    /// Returns the planned rows and updates the subclass's summary of them.
    virtual QList<DeliveryRow> plan(const Project &project) = 0;
    /// Why the run cannot be started although a project is open; empty if it can.
    virtual QString obstacle() const = 0;
    /// The state of the current row. Called from the first row on.
    virtual QString progressDetails() const = 0;
    virtual DeliveryResultTexts resultTexts() const = 0;

    /// Fills the counts and the rows. `show` converts an outcome or a failure into a row.
    template <class Result, class Show>
    static DeliveryResultTexts countsAndRows(const Result &result, const Show &show) {
        DeliveryResultTexts texts{.succeeded = int(result.succeeded.size()),
                                  .failed = result.failedCount(),
                                  .cancelled = result.cancelledCount};
        for (const auto &outcome : result.succeeded) {
            texts.rows.append(show(outcome));
        }
        for (const auto &failure : result.failed) {
            texts.rows.append(show(failure));
        }
        return texts;
    }

  private:
    QString stageName() const;
    void resetFlow(const Project &project);
    void handleChoices();
    void handleStage();
    void followProject();
    void planSoon();
    void planNow();
    void updateCanStart();
    void updateRun();
    void updateResult();
    void setOpen(bool isOpen);
    QCoro::Task<> showFolderPanelAt(QString folder);
    void showFolderPanel(const QString &startFolder);

    Texts m_texts;
    DeliveryFlow &m_flow;
    ProjectStore &m_store;
    FilePanels &m_panels;
    Clock &m_clock;
    NamingFields m_naming;
    DeliveryRows m_rows;
    DeliveryResults m_results;

    bool m_isOpen = false;
    std::optional<QString> m_projectFile; ///< of the project that the choices are for
    QString m_startHelp;
    DeliveryRunTexts m_run;
    DeliveryResultTexts m_result; ///< its rows are in `m_results`
    std::optional<RemainingTime> m_remaining;
    std::chrono::milliseconds m_planDuration{0}; ///< of the last plan
    std::unique_ptr<Clock::Timer> m_planTimer;
    std::unique_ptr<Clock::Timer> m_panelTimer; ///< while the folder panel is about to open
};

} // namespace corvane

#pragma once

#include "delivery/DeliveryResults.h"
#include "delivery/DeliveryRows.h"
#include "delivery/NamingFields.h"
#include "platform/FilePanels.h"
#include "platform/RemainingTime.h"
#include "session/ProjectStore.h"

namespace corvane {

/// What the sheets of export and of handoff have in common: three stages, the choices and the list
/// of what they come to, the lines of the run, and its results. A floor's own state brings its
/// flow.
///
/// The sheet is up while `isOpen`. It can't be dismissed while a run is in work, whatever becomes
/// of the project. Before a run it follows the project, and goes with it: another project, or none,
/// dismisses it.
///
/// Main thread. The objects handed in must outlive it.
class DeliverySheet : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool isOpen READ isOpen NOTIFY isOpenChanged)
    Q_PROPERTY(corvane::DeliverySheet::Stage stage READ stage NOTIFY stageChanged)
    Q_PROPERTY(bool canDismiss READ canDismiss NOTIFY stageChanged)

    // Configure. A choice is a place in its labels, -1 for none of them.
    Q_PROPERTY(QString folder READ folder NOTIFY choicesChanged)
    /// The folder's path in one line.
    Q_PROPERTY(QString folderLine READ folderLine NOTIFY choicesChanged)
    Q_PROPERTY(QStringList modes READ modes CONSTANT)
    Q_PROPERTY(int mode READ mode NOTIFY choicesChanged)
    Q_PROPERTY(QString modeHelp READ modeHelp NOTIFY choicesChanged)
    Q_PROPERTY(QStringList outputs READ outputs CONSTANT)
    Q_PROPERTY(int output READ output NOTIFY choicesChanged)
    Q_PROPERTY(QString outputHelp READ outputHelp NOTIFY choicesChanged)
    Q_PROPERTY(QStringList handles READ handles CONSTANT)
    Q_PROPERTY(int handle READ handle NOTIFY choicesChanged)
    Q_PROPERTY(QString handlesHelp READ handlesHelp CONSTANT)
    Q_PROPERTY(corvane::NamingFields *naming READ naming CONSTANT)
    Q_PROPERTY(corvane::DeliveryRows *rows READ rows CONSTANT)
    Q_PROPERTY(bool hasRows READ hasRows NOTIFY planChanged)
    /// What stands in the place of an empty list.
    Q_PROPERTY(QString nothingText READ nothingText CONSTANT)
    Q_PROPERTY(bool canStart READ canStart NOTIFY canStartChanged)
    /// Why it can't be started; empty where it can.
    Q_PROPERTY(QString startHelp READ startHelp NOTIFY canStartChanged)

    // Running. Before the run has told of its first row, the line alone says what is done.
    Q_PROPERTY(QString progressLine READ progressLine NOTIFY runChanged)
    Q_PROPERTY(QString percent READ percent NOTIFY runChanged)
    Q_PROPERTY(double fraction READ fraction NOTIFY runChanged)
    Q_PROPERTY(QString details READ details NOTIFY runChanged)
    Q_PROPERTY(QString timeLeft READ timeLeft NOTIFY runChanged)
    Q_PROPERTY(QString cancelText READ cancelText NOTIFY runChanged)
    Q_PROPERTY(bool canCancel READ canCancel NOTIFY runChanged)

    // Done. A text is empty where there is nothing to tell.
    Q_PROPERTY(QString headline READ headline NOTIFY resultChanged)
    Q_PROPERTY(QString place READ place NOTIFY resultChanged)
    Q_PROPERTY(QString placePath READ placePath NOTIFY resultChanged)
    Q_PROPERTY(QString errorLine READ errorLine NOTIFY resultChanged)
    Q_PROPERTY(QString backupLine READ backupLine NOTIFY resultChanged)
    Q_PROPERTY(int succeeded READ succeeded NOTIFY resultChanged)
    Q_PROPERTY(int failed READ failed NOTIFY resultChanged)
    Q_PROPERTY(int cancelled READ cancelled NOTIFY resultChanged)
    /// The folder that was delivered into.
    Q_PROPERTY(QString resultFolder READ resultFolder NOTIFY resultChanged)
    Q_PROPERTY(corvane::DeliveryResults *results READ results CONSTANT)

  public:
    enum class Stage { Configure, Running, Done };
    Q_ENUM(Stage)

    ~DeliverySheet() override;

    bool isOpen() const { return m_isOpen; }
    virtual Stage stage() const = 0;
    bool canDismiss() const { return stage() != Stage::Running; }

    const QString &folder() const { return m_choices.folder; }
    QString folderLine() const;
    static QStringList modes();
    int mode() const { return m_choices.mode; }
    const QString &modeHelp() const { return m_choices.modeHelp; }
    virtual QStringList outputs() const = 0;
    int output() const { return m_choices.output; }
    const QString &outputHelp() const { return m_choices.outputHelp; }
    static QStringList handles();
    int handle() const { return m_choices.handle; }
    virtual QString handlesHelp() const = 0;
    NamingFields *naming() { return &m_naming; }
    DeliveryRows *rows() { return &m_rows; }
    bool hasRows() const { return !m_rows.rows().isEmpty(); }
    virtual QString nothingText() const = 0;
    bool canStart() const { return isOpen() && m_startHelp.isEmpty(); }
    const QString &startHelp() const { return m_startHelp; }

    const QString &progressLine() const { return m_run.line; }
    const QString &percent() const { return m_run.percent; }
    double fraction() const { return m_run.fraction; }
    const QString &details() const { return m_run.details; }
    const QString &timeLeft() const { return m_run.timeLeft; }
    const QString &cancelText() const { return m_run.cancelText; }
    bool canCancel() const { return m_run.canCancel; }

    const QString &headline() const { return m_result.headline; }
    const QString &place() const { return m_result.place; }
    const QString &placePath() const { return m_result.placePath; }
    const QString &errorLine() const { return m_result.errorLine; }
    const QString &backupLine() const { return m_result.backupLine; }
    int succeeded() const { return m_result.succeeded; }
    int failed() const { return m_result.failed; }
    int cancelled() const { return m_result.cancelled; }
    const QString &resultFolder() const { return m_result.folder; }
    DeliveryResults *results() { return &m_results; }

    /// Brings the sheet up with the defaults for the open project; with the run while one is in
    /// work. Does nothing without a project, or while the sheet is up.
    Q_INVOKABLE void open();
    /// Takes the sheet down where that may be done.
    Q_INVOKABLE void dismiss();
    /// From the results back to the choices, as `open` makes them.
    Q_INVOKABLE void again();
    Q_INVOKABLE void chooseFolder();
    Q_INVOKABLE virtual void chooseMode(int place) = 0;
    Q_INVOKABLE virtual void chooseOutput(int place) = 0;
    Q_INVOKABLE virtual void chooseHandle(int place) = 0;
    /// Starts the run where that is offered.
    Q_INVOKABLE void start();
    /// The first call asks the run to end after what is in hand, the second to end.
    Q_INVOKABLE void requestCancel();
    /// Asks whoever listens to show the file or folder in the desktop's file browser.
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
    struct ChoiceTexts {
        QString folder;
        int mode = 0;
        QString modeHelp;
        int output = 0;
        QString outputHelp;
        int handle = 0;
    };
    struct RunTexts {
        QString line;
        QString percent;
        double fraction = 0;
        QString details;
        QString timeLeft;
        QString cancelText;
        bool canCancel = false;
    };
    struct ResultTexts {
        QString headline;
        QString place;
        QString placePath;
        QString errorLine;
        QString backupLine;
        int succeeded = 0;
        int failed = 0;
        int cancelled = 0;
        QString folder;
        QList<DeliveryResult> rows;
    };

    DeliverySheet(ProjectStore &store, FilePanels &panels, Clock &clock,
                  NamingFields::Choices naming, QObject *parent);

    static std::optional<ExportBatch::Mode> modeAt(int place);
    static int placeOf(ExportBatch::Mode mode);
    static std::optional<double> handleAt(int place);
    static int placeOfHandle(double seconds);

    // The floor's own flow. None of these is called while the state is made.
    virtual void resetFlow(const Project &project) = 0;
    virtual void startFlow(const Project &project) = 0;
    virtual void cancelFlow() = 0;
    virtual std::optional<QString> chosenFolder() const = 0;
    virtual void setChosenFolder(const QString &folder) = 0;
    virtual QString folderPanelMessage() const = 0;
    virtual ChoiceTexts choiceTexts() const = 0;
    /// Whether what is planned depends on the choices, and not on the project alone.
    virtual bool planFollowsChoices() const = 0;
    /// Plans what the choices come to, and keeps what else it knows of that.
    virtual QList<DeliveryRow> plan(const Project &project) = 0;
    /// Why it can't be started, though a project is open.
    virtual QString obstacle() const = 0;
    virtual RunTexts runTexts() const = 0;
    virtual ResultTexts resultTexts() const = 0;

    // What the flow tells.
    void noteChoices();
    void noteRun();
    void noteStage();

    /// Puts rows under their heading, where there are any.
    static void appendUnder(const QString &heading, QList<DeliveryResult> rows,
                            QList<DeliveryResult> &all);

    /// How long the run still takes, once that can be told.
    QString remainingTime(double fraction) const;

  private:
    void beginAnew(const Project &project);
    void followProject();
    bool showsOpenProject() const;
    void planSoon();
    void planNow();
    void weighStart();
    void setOpen(bool open);

    ProjectStore &m_store;
    FilePanels &m_panels;
    Clock &m_clock;
    NamingFields m_naming;
    DeliveryRows m_rows;
    DeliveryResults m_results;

    bool m_isOpen = false;
    std::optional<QString> m_projectFile; ///< of the project that the choices are for
    ChoiceTexts m_choices;
    QString m_startHelp;
    RunTexts m_run;
    ResultTexts m_result;
    std::optional<RemainingTime> m_remaining;
    std::chrono::milliseconds m_planCost{0}; ///< of the last plan
    std::unique_ptr<Clock::Timer> m_planTimer;
};

} // namespace corvane

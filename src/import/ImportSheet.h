#pragma once

#include "import/ImportMeter.h"
#include "import/ImportRowList.h"
#include "import/ImportSourceList.h"
#include "import/ImportViewModel.h"
#include "platform/FilePanels.h"
#include "platform/RemainingTime.h"

#include <QUrl>
#include <QVariant>

namespace corvane {

/// All that the import's sheet shows and does: whether it is up, what each stage says, and what its
/// buttons come to. The import itself is the view model's; this needs no screen.
///
/// Main thread. What is handed in must outlive it. The sheet stays up while an import runs.
class ImportSheet : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool isOpen READ isOpen NOTIFY isOpenChanged)
    Q_PROPERTY(Stage stage READ stage NOTIFY stageChanged)
    Q_PROPERTY(QString title READ title NOTIFY stageChanged)
    Q_PROPERTY(QString backText READ backText NOTIFY stageChanged)
    Q_PROPERTY(bool canDismiss READ canDismiss NOTIFY stageChanged)
    Q_PROPERTY(corvane::ImportSourceList *sources READ sourcesObject CONSTANT)
    Q_PROPERTY(QString emptyText READ emptyText CONSTANT)
    Q_PROPERTY(QString sourcesNotice READ sourcesNotice NOTIFY sourcesChanged)
    Q_PROPERTY(bool recursive READ recursive WRITE setRecursive NOTIFY sourcesChanged)
    Q_PROPERTY(QString scanError READ scanError NOTIFY sourcesChanged)
    Q_PROPERTY(bool canScan READ canScan NOTIFY sourcesChanged)
    Q_PROPERTY(corvane::ImportRowList *rows READ rowsObject CONSTANT)
    Q_PROPERTY(QString foundText READ foundText NOTIFY resultsChanged)
    Q_PROPERTY(QString foundNote READ foundNote NOTIFY resultsChanged)
    Q_PROPERTY(QStringList modes READ modes CONSTANT)
    Q_PROPERTY(int mode READ mode NOTIFY resultsChanged)
    Q_PROPERTY(QString destinationName READ destinationName NOTIFY resultsChanged)
    Q_PROPERTY(QString destinationNote READ destinationNote NOTIFY resultsChanged)
    Q_PROPERTY(QString destinationPath READ destinationPath NOTIFY resultsChanged)
    Q_PROPERTY(QString leftOutText READ leftOutNote NOTIFY resultsChanged)
    Q_PROPERTY(QString refusedText READ refusedNote NOTIFY resultsChanged)
    Q_PROPERTY(QString includedText READ includedText NOTIFY includedChanged)
    Q_PROPERTY(bool canBeginImport READ canBeginImport NOTIFY includedChanged)
    Q_PROPERTY(QString fileName READ fileName NOTIFY runningChanged)
    Q_PROPERTY(QString figure READ figure NOTIFY runningChanged)
    Q_PROPERTY(double fraction READ fraction NOTIFY runningChanged)
    Q_PROPERTY(QString details READ details NOTIFY runningChanged)
    Q_PROPERTY(QString timeLeft READ timeLeft NOTIFY runningChanged)
    Q_PROPERTY(QString cancelText READ cancelText NOTIFY runningChanged)
    Q_PROPERTY(bool canCancel READ canCancel NOTIFY runningChanged)
    Q_PROPERTY(QVariantList counters READ counters NOTIFY stageChanged)
    Q_PROPERTY(QString doneNotice READ doneNotice NOTIFY stageChanged)
    Q_PROPERTY(QVariantList failures READ failures NOTIFY stageChanged)

  public:
    enum class Stage { Sources, Scanning, Results, Importing, Done };
    Q_ENUM(Stage)

    ImportSheet(ImportViewModel &import, FilePanels &panels, Clock &clock,
                QObject *parent = nullptr);

    // The sheet.
    bool isOpen() const { return m_isOpen; }
    Stage stage() const;
    QString title() const;
    /// Of the button in the head; empty where there is none.
    QString backText() const;
    bool canDismiss() const { return stage() != Stage::Importing; }
    /// Brings the sheet up, with a fresh import unless one runs.
    Q_INVOKABLE void open();
    /// Brings the sheet up at its sources with these added. While an import runs it shows that, and
    /// they wait for the next one.
    void openWith(const QStringList &paths);
    /// Takes the sheet away, and ends a scan. Nothing while an import runs.
    Q_INVOKABLE void dismiss();
    /// What Esc does at this stage.
    Q_INVOKABLE void escape();
    Q_INVOKABLE void back();

    // Sources.
    ImportSourceList *sourcesObject() { return &m_sources; }
    static QString emptyText();
    /// Why something that was dropped wasn't added; empty if nothing is to be told.
    const QString &sourcesNotice() const { return m_sourcesNotice; }
    bool recursive() const { return m_import.recursive(); }
    void setRecursive(bool recursive) { m_import.setRecursive(recursive); }
    QString scanError() const { return m_import.scanError().value_or(QString()); }
    bool canScan() const { return m_import.canScan(); }
    Q_INVOKABLE void chooseFolder();
    Q_INVOKABLE void chooseFiles();
    /// Each is added once, however often it is named.
    void addSources(const QStringList &paths);
    /// What was dropped on the sheet. Only what lies on this machine can be added.
    Q_INVOKABLE void addDropped(const QList<QUrl> &urls);
    Q_INVOKABLE void removeSource(int row);
    Q_INVOKABLE void scan();

    // Results.
    ImportRowList *rowsObject() { return &m_rows; }
    /// "Found 3 videos", and what follows it: " · 1 already imported."
    QString foundText() const;
    QString foundNote() const;
    static QStringList modes();
    int mode() const { return int(m_import.mode()); }
    /// "media folder", "(created on import)", and the whole path; all empty while files are used in
    /// place.
    const QString &destinationName() const { return m_destinationName; }
    const QString &destinationNote() const { return m_destinationNote; }
    QString destinationPath() const;
    QString leftOutNote() const;
    QString refusedNote() const;
    QString includedText() const { return m_import.includedText(); }
    bool canBeginImport() const { return m_import.canBeginImport(); }
    Q_INVOKABLE void setMode(int mode);
    Q_INVOKABLE void toggleRow(int row);
    Q_INVOKABLE void beginImport();

    // The run. The counts of bytes are of the file at work, the fraction is of the whole run.
    const QString &fileName() const { return m_running.fileName; }
    const QString &figure() const { return m_running.figure; }
    double fraction() const { return m_running.fraction; }
    const QString &details() const { return m_running.details; }
    const QString &timeLeft() const { return m_running.timeLeft; }
    QString cancelText() const;
    bool canCancel() const { return !m_isCancelling; }
    Q_INVOKABLE void cancelImport();

    // What it came to.
    /// Maps with "kind", "symbol" and "text", one for each count above zero.
    QVariantList counters() const;
    /// What a cancelled run left, or that nothing came of it; else empty.
    QString doneNotice() const;
    /// Maps with "fileName" and "message".
    QVariantList failures() const;
    Q_INVOKABLE void importMore();

  Q_SIGNALS:
    void isOpenChanged();
    void stageChanged();
    void sourcesChanged();
    void resultsChanged();
    void includedChanged();
    void runningChanged();
    /// The sheet was taken away.
    void dismissed();

  private:
    struct Running {
        QString fileName;
        QString figure;
        double fraction = 0;
        QString details;
        QString timeLeft;

        bool operator==(const Running &) const = default;
    };

    void followImport();
    void followResults();
    void setOpen(bool isOpen);
    void setSourcesNotice(const QString &notice);
    void startAfresh();
    void showRows();
    void showDestination();
    void startRun();
    void showProgress();
    void showRecording();
    void publish(Running running);
    int notImported() const;

    ImportViewModel &m_import;
    FilePanels &m_panels;
    Clock &m_clock;
    ImportSourceList m_sources;
    ImportRowList m_rows;
    bool m_isOpen = false;
    QString m_sourcesNotice;
    QStringList m_waitingSources; ///< given while an import ran
    QString m_destinationName;
    QString m_destinationNote;

    // Of the run.
    ImportMeter m_meter;
    RemainingTime m_remaining;
    Running m_running;
    int m_includedAtStart = 0;
    bool m_isCancelling = false;
};

} // namespace corvane

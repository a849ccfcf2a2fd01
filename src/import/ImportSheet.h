#pragma once

#include "import/ImportMeter.h"
#include "import/ImportRowList.h"
#include "import/ImportSourceList.h"
#include "import/ImportViewModel.h"
#include "platform/FilePanels.h"
#include "platform/RemainingTime.h"

#include <QVariant>

namespace corvane {

/// Texts of stage `results`.
struct ImportPreviewTexts {
    Q_GADGET
    Q_PROPERTY(QString found MEMBER found)
    Q_PROPERTY(QString alreadyImported MEMBER alreadyImported)
    Q_PROPERTY(QString included MEMBER included)
    Q_PROPERTY(QString leftOut MEMBER leftOut)
    Q_PROPERTY(QString refused MEMBER refused)
    Q_PROPERTY(QString destination MEMBER destination)
    Q_PROPERTY(QString destinationNote MEMBER destinationNote)
    Q_PROPERTY(QString destinationPath MEMBER destinationPath)

  public:
    QString found;           ///< "Found 3 videos"
    QString alreadyImported; ///< follows `found`
    QString included;        ///< "2 included"
    QString leftOut;
    QString refused;
    // Empty in mode `inPlace`.
    QString destination;     ///< "media folder"
    QString destinationNote; ///< "(created on import)" unless the folder exists
    QString destinationPath;
};

/// Texts of stage `importing`.
struct ImportRunTexts {
    Q_GADGET
    Q_PROPERTY(QString fileName MEMBER fileName)
    Q_PROPERTY(QString figure MEMBER figure)
    Q_PROPERTY(double fraction MEMBER fraction)
    Q_PROPERTY(QString details MEMBER details)
    Q_PROPERTY(QString timeLeft MEMBER timeLeft)

  public:
    QString fileName;
    QString figure;      ///< "2 / 5"
    double fraction = 0; ///< of the entire run, 0 to 1
    QString details;     ///< bytes of the current file; empty unless it is copied
    QString timeLeft;

    bool operator==(const ImportRunTexts &) const = default;
};

/// Texts of stage `done`.
struct ImportResultTexts {
    Q_GADGET
    Q_PROPERTY(QVariantList counters MEMBER counters)
    Q_PROPERTY(QString notice MEMBER notice)
    Q_PROPERTY(QVariantList failures MEMBER failures)

  public:
    QVariantList counters; ///< maps with "kind", "symbol" and "text", one per count above zero
    QString notice;        ///< what a cancelled run left undone, and a failed backup; may be empty
    QVariantList failures; ///< maps with "fileName" and "message"
};

/// The import sheet: whether it is open, its texts at each stage and its actions.
///
/// Main thread. The arguments of the constructor must outlive it. Cannot be dismissed during a run.
class ImportSheet : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool isOpen READ isOpen NOTIFY isOpenChanged)
    /// Name of the `ImportViewModel::Stage`.
    Q_PROPERTY(QString stage READ stageName NOTIFY stageChanged)
    Q_PROPERTY(QString title READ title NOTIFY stageChanged)
    Q_PROPERTY(QString backText READ backText NOTIFY stageChanged)
    Q_PROPERTY(corvane::ImportSourceList *sources READ sources CONSTANT)
    Q_PROPERTY(bool recursive READ recursive WRITE setRecursive NOTIFY sourcesChanged)
    Q_PROPERTY(QString scanError READ scanError NOTIFY sourcesChanged)
    Q_PROPERTY(bool canScan READ canScan NOTIFY sourcesChanged)
    Q_PROPERTY(corvane::ImportRowList *rows READ rows CONSTANT)
    Q_PROPERTY(corvane::ImportPreviewTexts preview READ preview NOTIFY previewChanged)
    Q_PROPERTY(QStringList modes READ modes CONSTANT)
    Q_PROPERTY(int mode READ mode NOTIFY previewChanged)
    Q_PROPERTY(bool canBeginImport READ canBeginImport NOTIFY previewChanged)
    Q_PROPERTY(corvane::ImportRunTexts run READ run NOTIFY runChanged)
    Q_PROPERTY(QString cancelText READ cancelText NOTIFY runChanged)
    Q_PROPERTY(bool canCancel READ canCancel NOTIFY runChanged)
    Q_PROPERTY(corvane::ImportResultTexts result READ result NOTIFY stageChanged)

  public:
    ImportSheet(ImportViewModel &import, FilePanels &panels, Clock &clock,
                QObject *parent = nullptr);

    bool isOpen() const { return m_isOpen; }
    ImportViewModel::Stage stage() const { return m_import.stage(); }
    /// Title at every stage but `importing`, which has a sheet of its own.
    QString title() const;
    /// Label of the header's back button; empty if there is no such button.
    QString backText() const;
    /// Opens the sheet, with a new import unless a run is in progress.
    Q_INVOKABLE void open();
    /// Opens the sheet at its sources and adds these. During a run they are kept for the next
    /// import.
    void openWith(const QStringList &paths);
    /// Closes the sheet and cancels a scan. A no-op during a run.
    Q_INVOKABLE void dismiss();
    /// Performs the action of Esc at this stage.
    Q_INVOKABLE void escape();
    Q_INVOKABLE void back();

    ImportSourceList *sources() { return &m_sources; }
    bool recursive() const { return m_import.recursive(); }
    void setRecursive(bool recursive) { m_import.setRecursive(recursive); }
    QString scanError() const { return m_import.scanError().value_or(QString()); }
    bool canScan() const { return m_import.canScan(); }
    Q_INVOKABLE void scan();

    ImportRowList *rows() { return &m_rows; }
    const ImportPreviewTexts &preview() const { return m_preview; }
    /// Labels of the modes in the order of `SourceImportMode`.
    static QStringList modes();
    int mode() const { return int(m_import.mode()); }
    Q_INVOKABLE void setMode(int mode);
    Q_INVOKABLE void toggleRow(int row);
    bool canBeginImport() const { return m_import.canBeginImport(); }
    Q_INVOKABLE void beginImport();

    const ImportRunTexts &run() const { return m_run; }
    QString cancelText() const;
    bool canCancel() const { return !m_isCancelling; }
    Q_INVOKABLE void cancelImport();

    ImportResultTexts result() const;
    Q_INVOKABLE void startAgain();

  Q_SIGNALS:
    void isOpenChanged();
    void stageChanged();
    void sourcesChanged();
    void previewChanged();
    void runChanged();

  private:
    QString stageName() const;
    void setOpen(bool isOpen);
    void updateStage();
    void updatePreview();
    QCoro::Task<> checkDestination(QString folder);
    void updateIncluded();
    void startRun();
    void updateRun();

    ImportViewModel &m_import;
    Clock &m_clock;
    ImportSourceList m_sources;
    ImportRowList m_rows;
    bool m_isOpen = false;
    QStringList m_nextSources; ///< added during a run
    ImportPreviewTexts m_preview;

    // State of the current or last run.
    ImportMeter m_meter;
    RemainingTime m_remaining;
    ImportRunTexts m_run;
    int m_includedAtStart = 0;
    bool m_isCancelling = false;
};

} // namespace corvane

#pragma once

#include "delivery/DeliverySheet.h"
#include "delivery/export/ExportViewModel.h"

namespace corvane {

/// What the sheet of an export shows, and what its controls do. Main thread; the objects handed in
/// must outlive it.
// The tools of QML know a base by its whole name only.
class ExportSheet : public corvane::DeliverySheet {
    Q_OBJECT
    Q_PROPERTY(bool includeWholeClips READ includeWholeClips WRITE setIncludeWholeClips NOTIFY
                   choicesChanged)
    Q_PROPERTY(
        bool includeSubclips READ includeSubclips WRITE setIncludeSubclips NOTIFY choicesChanged)
    Q_PROPERTY(bool newOnly READ newOnly WRITE setNewOnly NOTIFY choicesChanged)
    /// "12 of 15 rows"
    Q_PROPERTY(QString countLine READ countLine NOTIFY planChanged)

  public:
    ExportSheet(ExportViewModel &flow, ProjectStore &store, FilePanels &panels,
                Clock &clock = Clock::system(), QObject *parent = nullptr);

    Stage stage() const override;
    QStringList outputs() const override;
    QString handlesHelp() const override;
    QString nothingText() const override;
    void chooseMode(int place) override;
    void chooseOutput(int place) override;
    void chooseHandle(int place) override;

    bool includeWholeClips() const { return m_flow.choices().includeWholeVideoSelects; }
    void setIncludeWholeClips(bool include) { m_flow.setIncludeWholeVideoSelects(include); }
    bool includeSubclips() const { return m_flow.choices().includeSubclipSelects; }
    void setIncludeSubclips(bool include) { m_flow.setIncludeSubclipSelects(include); }
    bool newOnly() const { return m_flow.choices().exportNewOnly; }
    void setNewOnly(bool newOnly) { m_flow.setExportNewOnly(newOnly); }
    const QString &countLine() const { return m_countLine; }

  protected:
    void resetFlow(const Project &project) override;
    void startFlow(const Project &project) override;
    void cancelFlow() override;
    std::optional<QString> chosenFolder() const override;
    void setChosenFolder(const QString &folder) override;
    QString folderPanelMessage() const override;
    ChoiceTexts choiceTexts() const override;
    bool planFollowsChoices() const override { return true; }
    QList<DeliveryRow> plan(const Project &project) override;
    QString obstacle() const override;
    RunTexts runTexts() const override;
    ResultTexts resultTexts() const override;

  private:
    static NamingFields::Choices namingOf(ExportViewModel &flow);

    ExportViewModel &m_flow;
    QString m_countLine;
};

} // namespace corvane

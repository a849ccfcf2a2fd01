#pragma once

#include "delivery/DeliverySheet.h"
#include "delivery/handoff/SelectsHandoffViewModel.h"

namespace corvane {

/// What the sheet of a handoff shows, and what its controls do. Main thread; the objects handed in
/// must outlive it.
// The tools of QML know a base by its whole name only.
class HandoffSheet : public corvane::DeliverySheet {
    Q_OBJECT
    Q_PROPERTY(QString packageLocation READ packageLocation NOTIFY choicesChanged)
    Q_PROPERTY(QString projectName READ projectName WRITE setProjectName NOTIFY choicesChanged)
    Q_PROPERTY(QString projectNamePlaceholder READ projectNamePlaceholder CONSTANT)
    Q_PROPERTY(QString projectNameHelp READ projectNameHelp CONSTANT)
    /// Folders of earlier handoffs, each in one line.
    Q_PROPERTY(QStringList recents READ recents NOTIFY recentsChanged)
    Q_PROPERTY(bool hasRecents READ hasRecents NOTIFY recentsChanged)
    /// Why there are none; empty where there are some.
    Q_PROPERTY(QString recentsHelp READ recentsHelp NOTIFY recentsChanged)
    /// "2 clips, 1 subclip, 3 outputs, ~1.2 GB"
    Q_PROPERTY(QString summary READ summary NOTIFY planChanged)

  public:
    HandoffSheet(SelectsHandoffViewModel &flow, ProjectStore &store, FilePanels &panels,
                 Clock &clock = Clock::system(), QObject *parent = nullptr);

    Stage stage() const override;
    QStringList outputs() const override;
    QString handlesHelp() const override;
    QString nothingText() const override;
    void chooseMode(int place) override;
    void chooseOutput(int place) override;
    void chooseHandle(int place) override;

    QString packageLocation() const;
    const QString &projectName() const { return m_flow.choices().projectName; }
    void setProjectName(const QString &name) { m_flow.setProjectName(name); }
    static QString projectNamePlaceholder();
    static QString projectNameHelp();
    QStringList recents() const;
    bool hasRecents() const { return !m_flow.recentDestinations().isEmpty(); }
    QString recentsHelp() const;
    Q_INVOKABLE void chooseRecent(int place);
    const QString &summary() const { return m_summary; }

  Q_SIGNALS:
    void recentsChanged();

  protected:
    void resetFlow(const Project &project) override;
    void startFlow(const Project &project) override;
    void cancelFlow() override;
    std::optional<QString> chosenFolder() const override;
    void setChosenFolder(const QString &folder) override;
    QString folderPanelMessage() const override;
    ChoiceTexts choiceTexts() const override;
    bool planFollowsChoices() const override { return false; }
    QList<DeliveryRow> plan(const Project &project) override;
    QString obstacle() const override;
    RunTexts runTexts() const override;
    ResultTexts resultTexts() const override;

  private:
    static NamingFields::Choices namingOf(SelectsHandoffViewModel &flow);

    SelectsHandoffViewModel &m_flow;
    QString m_summary;
};

} // namespace corvane

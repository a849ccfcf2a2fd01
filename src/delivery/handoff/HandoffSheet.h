#pragma once

#include "delivery/DeliverySheet.h"
#include "delivery/handoff/SelectsHandoffViewModel.h"

namespace corvane {

/// The sheet of a handoff.
// QML tools resolve a base class by its qualified name only.
class HandoffSheet : public corvane::DeliverySheet {
    Q_OBJECT
    Q_PROPERTY(QString packageLocation READ packageLocation NOTIFY choicesChanged)
    Q_PROPERTY(QString projectName READ projectName WRITE setProjectName NOTIFY choicesChanged)
    Q_PROPERTY(QString projectNamePlaceholder READ projectNamePlaceholder CONSTANT)
    Q_PROPERTY(QString projectNameHelp READ projectNameHelp CONSTANT)
    /// Folders of earlier handoffs, without line breaks.
    Q_PROPERTY(QStringList recents READ recents NOTIFY recentsChanged)
    Q_PROPERTY(bool hasRecents READ hasRecents NOTIFY recentsChanged)
    /// Why there are no recent folders; empty if there are.
    Q_PROPERTY(QString recentsHelp READ recentsHelp NOTIFY recentsChanged)
    /// "2 clips, 1 subclip, 3 outputs, ~1.2 GB"
    Q_PROPERTY(QString summary READ summary NOTIFY planChanged)

  public:
    HandoffSheet(SelectsHandoffViewModel &flow, ProjectStore &store, FilePanels &panels,
                 Clock &clock = Clock::system(), QObject *parent = nullptr);

    DeliveryChoice output() const override;
    void chooseOutput(int index) override;

    QString packageLocation() const;
    const QString &projectName() const { return m_flow.choices().projectName; }
    void setProjectName(const QString &name) { m_flow.setProjectName(name); }
    static QString projectNamePlaceholder() { return QStringLiteral("MyProject - Selects"); }
    static QString projectNameHelp() {
        return QStringLiteral("Used as both the package folder name and the .corvane filename.");
    }
    QStringList recents() const;
    bool hasRecents() const { return !m_flow.recentDestinations().isEmpty(); }
    QString recentsHelp() const;
    Q_INVOKABLE void chooseRecent(int index);
    const QString &summary() const { return m_summary; }

  Q_SIGNALS:
    void recentsChanged();

  protected:
    bool planDependsOnChoices() const override { return false; }
    QList<DeliveryRow> plan(const Project &project) override;
    QString obstacle() const override;
    QString progressDetails() const override;
    DeliveryResultTexts resultTexts() const override;

  private:
    SelectsHandoffViewModel &m_flow;
    QString m_summary;
};

} // namespace corvane

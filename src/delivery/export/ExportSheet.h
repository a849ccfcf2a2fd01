#pragma once

#include "delivery/DeliverySheet.h"
#include "delivery/export/ExportViewModel.h"

namespace corvane {

/// The sheet of an export.
// QML tools resolve a base class by its qualified name only.
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

    DeliveryChoice output() const override;
    void chooseOutput(int index) override;

    bool includeWholeClips() const { return m_flow.choices().includeWholeVideoSelects; }
    void setIncludeWholeClips(bool include) { m_flow.setIncludeWholeVideoSelects(include); }
    bool includeSubclips() const { return m_flow.choices().includeSubclipSelects; }
    void setIncludeSubclips(bool include) { m_flow.setIncludeSubclipSelects(include); }
    bool newOnly() const { return m_flow.choices().exportNewOnly; }
    void setNewOnly(bool newOnly) { m_flow.setExportNewOnly(newOnly); }
    const QString &countLine() const { return m_countLine; }

  protected:
    bool planDependsOnChoices() const override { return true; }
    QList<DeliveryRow> plan(const Project &project) override;
    QString obstacle() const override;
    QString progressDetails() const override;
    DeliveryResultTexts resultTexts() const override;

  private:
    ExportViewModel &m_flow;
    QString m_countLine;
};

} // namespace corvane

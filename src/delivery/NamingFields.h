#pragma once

#include "delivery/ExportNaming.h"

#include <QObject>
#include <QStringList>

#include <functional>

namespace corvane {

/// The naming choices as the controls of the screens of export and handoff show and set them. The
/// choices themselves belong to a flow. Main thread.
class NamingFields : public QObject {
    Q_OBJECT
    Q_PROPERTY(QStringList presets READ presets CONSTANT)
    Q_PROPERTY(QStringList numberings READ numberings CONSTANT)
    Q_PROPERTY(int preset READ preset WRITE setPreset NOTIFY changed)
    /// Whether the fields below are offered.
    Q_PROPERTY(bool isCustom READ isCustom NOTIFY changed)
    Q_PROPERTY(bool keepOriginalForWholeVideos READ keepOriginalForWholeVideos WRITE
                   setKeepOriginalForWholeVideos NOTIFY changed)
    Q_PROPERTY(QString baseName READ baseName WRITE setBaseName NOTIFY changed)
    Q_PROPERTY(bool includeShootDate READ includeShootDate WRITE setIncludeShootDate NOTIFY changed)
    Q_PROPERTY(bool includeOriginalFilename READ includeOriginalFilename WRITE
                   setIncludeOriginalFilename NOTIFY changed)
    Q_PROPERTY(bool includeOriginalFileNumber READ includeOriginalFileNumber WRITE
                   setIncludeOriginalFileNumber NOTIFY changed)
    Q_PROPERTY(int numbering READ numbering WRITE setNumbering NOTIFY changed)
    Q_PROPERTY(bool includeSubclipLabel READ includeSubclipLabel WRITE setIncludeSubclipLabel NOTIFY
                   changed)
    Q_PROPERTY(
        bool includeSelectType READ includeSelectType WRITE setIncludeSelectType NOTIFY changed)

  public:
    /// How the flow's choices are read and set. Whoever sets them raises `changed`.
    struct Choices {
        std::function<NamingPreset()> preset;
        std::function<void(NamingPreset)> setPreset;
        std::function<const ExportNamingOptions &()> naming;
        std::function<void(const ExportNamingOptions &)> setNaming;
    };

    explicit NamingFields(Choices choices, QObject *parent = nullptr);

    static QStringList presets();
    static QStringList numberings();
    int preset() const;
    bool isCustom() const { return m_choices.preset() == NamingPreset::custom; }
    bool keepOriginalForWholeVideos() const { return naming().keepOriginalForWholeVideos; }
    QString baseName() const { return naming().baseName.value_or(QString()); }
    bool includeShootDate() const { return naming().includeShootDate; }
    bool includeOriginalFilename() const { return naming().includeOriginalFilename; }
    bool includeOriginalFileNumber() const { return naming().includeOriginalFileNumber; }
    int numbering() const;
    bool includeSubclipLabel() const { return naming().includeSubclipLabel; }
    bool includeSelectType() const { return naming().includeSelectType; }

    // A place that no choice has changes nothing.
    void setPreset(int place);
    void setKeepOriginalForWholeVideos(bool keep);
    void setBaseName(const QString &text);
    void setIncludeShootDate(bool include);
    void setIncludeOriginalFilename(bool include);
    void setIncludeOriginalFileNumber(bool include);
    void setNumbering(int place);
    void setIncludeSubclipLabel(bool include);
    void setIncludeSelectType(bool include);

  Q_SIGNALS:
    void changed();

  private:
    const ExportNamingOptions &naming() const { return m_choices.naming(); }
    template <typename Value> void set(Value ExportNamingOptions::*field, const Value &value);

    Choices m_choices;
};

} // namespace corvane

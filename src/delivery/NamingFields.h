#pragma once

#include "delivery/DeliveryFlow.h"

namespace corvane {

/// The naming choices of a flow, for the controls of a delivery sheet. Main thread.
class NamingFields : public QObject {
    Q_OBJECT
    Q_PROPERTY(QStringList presets READ presets CONSTANT)
    Q_PROPERTY(QStringList numberings READ numberings CONSTANT)
    Q_PROPERTY(int preset READ preset WRITE setPreset NOTIFY changed)
    /// True if the fields below are shown.
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
    /// The flow must outlive the fields.
    explicit NamingFields(DeliveryFlow &flow, QObject *parent = nullptr);

    static QStringList presets();
    static QStringList numberings();
    int preset() const;
    bool isCustom() const { return m_flow.choices().namingPreset == NamingPreset::custom; }
    bool keepOriginalForWholeVideos() const { return naming().keepOriginalForWholeVideos; }
    QString baseName() const { return naming().baseName.value_or(QString()); }
    bool includeShootDate() const { return naming().includeShootDate; }
    bool includeOriginalFilename() const { return naming().includeOriginalFilename; }
    bool includeOriginalFileNumber() const { return naming().includeOriginalFileNumber; }
    int numbering() const;
    bool includeSubclipLabel() const { return naming().includeSubclipLabel; }
    bool includeSelectType() const { return naming().includeSelectType; }

    /// Ignores an index that is out of range.
    void setPreset(int index);
    void setKeepOriginalForWholeVideos(bool keep);
    void setBaseName(const QString &text);
    void setIncludeShootDate(bool include);
    void setIncludeOriginalFilename(bool include);
    void setIncludeOriginalFileNumber(bool include);
    /// Ignores an index that is out of range.
    void setNumbering(int index);
    void setIncludeSubclipLabel(bool include);
    void setIncludeSelectType(bool include);

  Q_SIGNALS:
    void changed();

  private:
    const ExportNamingOptions &naming() const { return m_flow.choices().naming; }
    template <typename Value> void set(Value ExportNamingOptions::*field, const Value &value);

    DeliveryFlow &m_flow;
};

} // namespace corvane

#pragma once

#include "cli/Command.h"
#include "delivery/DeliveryFlow.h"

namespace corvane {

/// The options for output names: "--naming" and "--custom".
class NamingArguments {
  public:
    /// Throws `UsageError`.
    explicit NamingArguments(const CommandCall &call);

    static QList<QCommandLineOption> options();

    /// Sets the preset, then the fields.
    void apply(DeliveryFlow &flow) const;

  private:
    struct Field {
        QString key;
        QString value;
    };

    void setFields(ExportNamingOptions &options) const;

    NamingPreset m_preset = NamingPreset::keepOriginal;
    QList<Field> m_fields;
};

} // namespace corvane

#pragma once

#include "cli/Command.h"
#include "delivery/ExportNaming.h"

namespace corvane {

/// What the command line says of output names: "--naming", and "--custom" for its own choices.
class NamingArguments {
  public:
    /// Throws `UsageError`.
    explicit NamingArguments(const CommandCall &call);

    static QList<QCommandLineOption> options();

    /// Sets the preset and then the choices, in a flow that has both.
    template <typename Flow> void apply(Flow &flow) const {
        flow.setNamingPreset(m_preset);
        ExportNamingOptions naming = flow.choices().naming;
        choose(naming);
        flow.setNaming(naming);
    }

  private:
    struct Choice {
        QString key;
        QString value;
    };

    void choose(ExportNamingOptions &options) const;

    NamingPreset m_preset = NamingPreset::keepOriginal;
    QList<Choice> m_choices;
};

} // namespace corvane

#pragma once

#include "cli/ArgumentValues.h"
#include "cli/CliSession.h"
#include "cli/NamingArguments.h"
#include "delivery/DeliveryFlow.h"

namespace corvane {

/// The options that all delivery commands have. `OutputMode` is the type of "--output".
template <RawRepresentable OutputMode> class DeliveryArguments {
  public:
    /// Throws `UsageError`.
    explicit DeliveryArguments(const CommandCall &call)
        : m_naming(call),
          m_mode(argumentValues::option(call, "mode", argumentValues::choice<ExportBatch::Mode>)),
          m_output(argumentValues::option(call, "output", argumentValues::choice<OutputMode>)),
          m_handleSeconds(argumentValues::option(call, "handles", argumentValues::seconds)) {}

    /// Sets the choices. Those without an option keep their values.
    template <typename Flow> void apply(Flow &flow) const {
        flow.setMode(m_mode.value_or(flow.choices().mode));
        flow.setOutputMode(m_output.value_or(flow.choices().outputMode));
        flow.setSubclipHandleSeconds(m_handleSeconds.value_or(flow.choices().subclipHandleSeconds));
        m_naming.apply(flow);
    }

  private:
    NamingArguments m_naming;
    std::optional<ExportBatch::Mode> m_mode;
    std::optional<OutputMode> m_output;
    std::optional<double> m_handleSeconds;
};

/// Runs the delivery of the open project with a progress line, saves the project and prints a
/// failed backup. `initialText` is shown until the first row.
void runDelivery(DeliveryFlow &flow, CliSession &session, const CommandCall &call,
                 const QString &initialText = {});

/// "Succeeded 3, failed 1, cancelled 0"
template <typename Result> QString deliveryCounts(const Result &result) {
    return QStringLiteral("Succeeded %1, failed %2, cancelled %3")
        .arg(result.succeeded.size())
        .arg(result.failedCount())
        .arg(result.cancelledCount);
}

} // namespace corvane

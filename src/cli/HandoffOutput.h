#pragma once

#include "cli/Command.h"
#include "delivery/handoff/HandoffPlan.h"

/// Prints the result of the handoff command.
namespace corvane {

void writeHandoffResult(JSONWriter &writer, const HandoffResult &result);
void printHandoffResult(const CommandCall &call, const HandoffResult &result);
/// Prints failures on standard error. Returns true if there are none: every requested output was
/// written.
bool printHandoffFailures(const CommandCall &call, const HandoffResult &result,
                          HandoffOutputMode outputMode);

} // namespace corvane

#pragma once

#include "cli/Command.h"
#include "delivery/handoff/HandoffPlan.h"

/// How the handoff command tells what it did.
namespace corvane {

void writeHandoffResult(JSONWriter &writer, const HandoffResult &result);
void printHandoffResult(const CommandCall &call, const HandoffResult &result);
/// On the error stream. True if there is nothing to tell: everything that was asked for is there.
bool printHandoffFailures(const CommandCall &call, const HandoffResult &result,
                          HandoffOutputMode outputMode);

} // namespace corvane

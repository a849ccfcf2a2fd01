#pragma once

#include "cli/Command.h"

namespace corvane {

/// All commands, in the order of the help.
const QList<CliCommand> &commands();

/// Runs the command that the arguments name and returns the exit status. `arguments` starts with
/// the program name. Never throws. Main thread only; requires an application object.
int runCli(const QStringList &arguments, Console &console);

} // namespace corvane

#pragma once

#include "cli/Command.h"

namespace corvane {

/// Every command, in the order of the help.
const QList<Command> &commands();

/// The headless front end: runs the command that the arguments name and gives the exit status of
/// the process. `arguments` begins with the program's own name. Never throws. Main thread; an
/// application object must exist.
int runCli(const QStringList &arguments, Console &console);

} // namespace corvane

#pragma once

#include "cli/Command.h"
#include "document/Project.h"

namespace corvane {

/// Writes the members of the document and the numbers of its clips and subclips.
void writeProject(JSONWriter &writer, const Project &project);

/// Prints a summary as text.
void printProject(const CommandCall &call, const Project &project);

} // namespace corvane

#pragma once

#include "cli/Command.h"
#include "document/Project.h"

namespace corvane {

/// The document as its file has it, and how many clips and subclips it holds.
void writeProject(JSONWriter &writer, const Project &project);

/// The same in a few lines for people.
void printProject(const Invocation &call, const Project &project);

} // namespace corvane

#pragma once

namespace corvane {

/// Makes the process's text UTF-8 whatever the user's locale says, so that a path is the same text
/// everywhere. Called by `main` before an application object is made.
void useUtf8Locale();

/// The number of the first argument that isn't valid UTF-8, so that no path can be made of it; 0
/// where there is none.
int firstInvalidArgument(int argc, char **argv);

} // namespace corvane

#pragma once

namespace corvane {

/// Switches to a UTF-8 locale if the user's isn't one, so that Qt and the C library convert paths
/// alike. Must be called before the application object is constructed.
void useUtf8Locale();

/// The index of the first argument that isn't valid UTF-8; 0 if all are.
int firstInvalidArgument(int argc, char **argv);

} // namespace corvane

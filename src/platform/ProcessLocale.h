#pragma once

namespace corvane {

/// Sets $LC_ALL to a UTF-8 locale if the user's locale isn't one, so that Qt and the C library
/// convert paths alike. Must be called before the application object, which reads it, is
/// constructed.
void useUtf8Locale();

/// The index of the first argument that isn't valid UTF-8; 0 if all are.
int firstInvalidArgument(int argc, char **argv);

} // namespace corvane

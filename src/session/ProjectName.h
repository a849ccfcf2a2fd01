#pragma once

#include <QString>

/// The rules for project names and the names of project files.
namespace corvane::projectName {

/// Returns the name without leading and trailing whitespace, as it is stored.
QString trimmed(const QString &text);

/// True if the trimmed name is not empty, contains no "/" and does not start with ".". The file
/// system may still refuse it when the file is created.
bool isValid(const QString &text);

/// Returns "<name>.corvane".
QString fileName(const QString &name);

/// Appends the extension of project files unless the path already has it, in either case.
QString withExtension(const QString &path);

} // namespace corvane::projectName

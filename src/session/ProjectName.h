#pragma once

#include <QString>

/// The rules for project names and the names of project files.
namespace corvane::projectName {

/// True if the name, without the whitespace around it, is not empty, contains no "/" and does not
/// start with ".". The file system may still refuse it when the file is created.
bool isValid(const QString &text);

/// Returns "<name>.corvane".
QString fileName(const QString &name);

/// Appends the extension of project files unless the path already has it, in either case.
QString withExtension(const QString &path);

} // namespace corvane::projectName

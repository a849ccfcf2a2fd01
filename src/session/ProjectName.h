#pragma once

#include <QString>

/// What a user may call a project, and what its file is called then.
namespace corvane::projectName {

/// The name as it is kept: without blanks and line ends around it.
QString trimmed(const QString &text);

/// True for a text whose trimmed form isn't empty, holds no "/" and doesn't begin with ".". Whether
/// the file system takes it is seen when the file is made.
bool isValid(const QString &text);

/// "<name>.corvane".
QString fileName(const QString &name);

/// The path with the extension of project files; one that has it in either case stays as it is.
QString withExtension(const QString &path);

} // namespace corvane::projectName

#pragma once

#include <QByteArray>
#include <QStringList>

namespace corvane::test {

/// The result of a command.
struct CommandResult {
    int exitCode = -1; ///< -1 if it was killed or couldn't be started
    QByteArray output; ///< standard output; not captured for a command with input
};

/// Runs a command and waits for it. `input` is written to its standard input. Doesn't use QProcess,
/// because ThreadSanitizer doesn't support its way of starting a process.
CommandResult runCommand(const QStringList &command, const QByteArray &input = {});

} // namespace corvane::test

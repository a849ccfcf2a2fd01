#pragma once

#include <QByteArray>
#include <QStringList>

namespace corvane::test {

/// What a command of the machine's did.
struct CommandResult {
    int exitCode = -1; ///< -1 where it was killed or can't be run
    QByteArray output; ///< empty where it was given an input
};

/// Runs a command and waits for it. With an `input` that is what it reads, else its standard output
/// is kept. It isn't run by QProcess, whose way of starting a process ThreadSanitizer doesn't know.
CommandResult runCommand(const QStringList &command, const QByteArray &input = {});

} // namespace corvane::test
